#include <array>
#include <fcntl.h>

#include "platform/linux/instance_calls.h"
#include "platform/linux/linux_paths.h"
#include "platform/linux/linux_test_support.h"
#include "platform/linux/single_instance.h"
#include "platform/linux/system_calendar.h"
#include "platform/linux/system_random.h"

namespace lunevra {
namespace {

namespace fs = std::filesystem;

TEST(SystemCalendarTest, TakesTheFirstSourceThatNamesAZone) {
  struct Case {
    std::string environment;
    std::string link;
    std::string file;
    int hour;  // at 12:00 UTC in July
    std::size_t logLines;
  };
  const std::vector<Case> cases{
      {"Asia/Tokyo", "/usr/share/zoneinfo/Europe/Berlin", "", 21, 0},
      {":America/New_York", "", "", 8, 0},
      {"/usr/share/zoneinfo/Asia/Tokyo", "", "", 21, 0},
      {":/etc/localtime", "/usr/share/zoneinfo/Europe/Berlin", "", 14, 0},
      {"Mars/Olympus", "../usr/share/zoneinfo/Europe/Berlin", "", 14, 0},
      {"", "/usr/share/zoneinfo/posix/Europe/Berlin", "Asia/Tokyo\n", 14, 0},
      {"", "/nowhere", "Asia/Tokyo\n", 21, 0},
      {"<+03>-3", "", "# nothing", 12, 1},
      {"", "", "", 12, 1}};
  for (const auto& one : cases) {
    TemporaryFolder folder;
    RecordingLog log;
    if (!one.link.empty()) fs::create_symlink(one.link, folder / "localtime");
    writeFile(folder / "timezone", one.file);
    const SystemCalendar calendar({one.environment, folder / "localtime", folder / "timezone"},
                                  log);
    for (int i = 0; i < 3; ++i) {
      const auto components = calendar.components(Instant{1'783'080'000});
      ASSERT_TRUE(components);
      EXPECT_EQ(components->hour, one.hour) << one.environment << " " << one.link;
    }
    EXPECT_EQ(log.lines().size(), one.logLines) << one.environment << " " << one.link;
  }
}

TEST(SystemCalendarTest, FollowsATravellerAndDistrustsNonsense) {
  TemporaryFolder folder;
  RecordingLog log;
  const SystemCalendar calendar({"", folder / "localtime", folder / "timezone"}, log);
  const auto hourWith = [&](const std::string& target) {
    fs::create_symlink(target, folder / "new");
    fs::rename(folder / "new", folder / "localtime");
    return calendar.components(Instant{1'783'080'000})->hour;
  };
  EXPECT_EQ(hourWith("/usr/share/zoneinfo/Europe/Berlin"), 14);
  EXPECT_EQ(hourWith("/usr/share/zoneinfo/Asia/Tokyo"), 21);
  EXPECT_TRUE(log.lines().empty());
  EXPECT_EQ(hourWith("/usr/share/zoneinfo/Mars/Olympus"), 21);
  EXPECT_EQ(log.lines().size(), 1U);
  EXPECT_EQ(hourWith("/usr/share/zoneinfo/Europe/Berlin"), 14);
}

TEST(SingleInstanceTest, OnlyOneProcessHoldsItAndItsChildrenDoNot) {
  TemporaryFolder folder;
  RecordingLog log;
  const std::array<fs::path, 2> folders{"/proc/nowhere", folder.path()};
  const auto tryAcquire = [&] { return SingleInstance::tryAcquire(folders, log); };
  pid_t heir = 0;
  {
    const auto held = tryAcquire();
    ASSERT_TRUE(held);
    InstanceCalls calls(*held);
    EXPECT_FALSE(calls.take());
    expectChildSucceeds([&] { EXPECT_FALSE(tryAcquire()); });
    EXPECT_TRUE(calls.take()) << "a further start is heard";
    held->leaveWordOfQuit();
    EXPECT_FALSE(calls.take());
    heir = ::fork();
    if (heir == 0) {
      ::execlp("sleep", "sleep", "60", nullptr);
      ::_exit(1);
    }
    const auto program = "/proc/" + std::to_string(heir) + "/comm";
    EXPECT_TRUE(eventually([&] {
      std::string name;
      std::ifstream(program) >> name;
      return name == "sleep";
    }));
  }
  EXPECT_TRUE(tryAcquire()) << "a child program inherited the lock";
  ::kill(heir, SIGKILL);
  ::waitpid(heir, nullptr, 0);
  expectChildSucceeds([&] {
    const auto held = tryAcquire();
    EXPECT_TRUE(held);
    ::_exit(::testing::Test::HasFailure() ? 1 : 0);  // without releasing it
  });
  EXPECT_TRUE(tryAcquire());
  EXPECT_TRUE(log.lines().empty());
  EXPECT_TRUE(SingleInstance::tryAcquire({}, log)) << "no lock at all must not mean no engine";
  EXPECT_EQ(log.lines().size(), 1U);
}

TEST(LinuxPathsTest, FollowTheEnvironment) {
  expectChildSucceeds([] {
    ::setenv("HOME", "/home/person", 1);
    for (const char* name : {"XDG_DATA_HOME", "XDG_RUNTIME_DIR", "LUNEVRA_CLOUD_FOLDER"})
      ::unsetenv(name);
    EXPECT_EQ(LinuxPaths::fromEnvironment().dataFolder, "/home/person/.local/share/lunevra");
    EXPECT_EQ(LinuxPaths::fromEnvironment().cloudFolder, "/home/person/.local/share/lunevra/cloud");
    ::setenv("XDG_DATA_HOME", "/data", 1);
    ::setenv("XDG_RUNTIME_DIR", "relative", 1);
    ::setenv("LUNEVRA_CLOUD_FOLDER", "/sync", 1);
    const auto paths = LinuxPaths::fromEnvironment();
    EXPECT_EQ(paths.dataFolder, "/data/lunevra");
    EXPECT_EQ(paths.cloudFolder, "/sync");
    EXPECT_EQ(paths.lockFolders, std::vector<fs::path>{"/data/lunevra"});
  });
}

TEST(SystemRandomTest, FillsEverythingAndNeverRepeats) {
  SystemRandom random;
  std::vector<std::uint8_t> first(100'000);
  std::vector<std::uint8_t> second(first.size());
  ASSERT_TRUE(random.fill(first) && random.fill(second));
  EXPECT_NE(first, second);
  EXPECT_LT(std::count(first.end() - 1000, first.end(), 0), 100);
}

}  // namespace
}  // namespace lunevra
