#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

#include "host/usb_image.h"
#include "physical_key/physical_key_manager.h"
#include "platform/linux/linux_host.h"
#include "platform/linux/linux_test_support.h"

namespace lunevra {
namespace {

using host_test::UsbImage;
using std::chrono_literals::operator""ms;

constexpr auto imageVariable = "LUNEVRA_TEST_DRIVE";
constexpr auto deviceVariable = "LUNEVRA_TEST_DEVICE";

/// Cases that need a drive on USB run once more, in a process for which the image is one; this is
/// the process that gets it ready.
class KeyDriveTest : public testing::Test {
 protected:
  void runOnUsb(const std::string& name) {
    UsbImage image;
    if (!image.isAvailable() || !image.mount())
      GTEST_SKIP() << "this computer mounts no images: " << std::strerror(errno);
    image.unmount();
    host_test::ChildProcess body(
        {"umockdev-run", "-d", image.description(), "--",
         std::filesystem::read_symlink("/proc/self/exe"), "--gtest_also_run_disabled_tests",
         "--gtest_filter=OnUsb.DISABLED_" + name},
        {std::string(imageVariable) + "=" + image.path().string(),
         std::string(deviceVariable) + "=" + image.device()});
    EXPECT_EQ(body.exitStatus(std::chrono::seconds(60)), 0) << "see above";
  }
};

class OnUsb : public testing::Test {
 protected:
  OnUsb() : drive_(std::getenv(imageVariable)), device_(std::getenv(deviceVariable)) {}
  ~OnUsb() override { unmount(); }

  void mount(unsigned long flags = 0) {
    ASSERT_EQ(::mount(device_.c_str(), drive_.c_str(), "ext4", flags, nullptr), 0) << errno;
  }
  void unmount() { ::umount2(drive_.c_str(), MNT_DETACH); }
  [[nodiscard]] std::string createKey(const std::filesystem::path& folder) {
    try {
      return keys_.createKey(folder);
    } catch (const LocalizedError& error) {
      return error.localizedDescription();
    }
  }

  TemporaryFolder home_;
  ManualRunLoop runLoop_;
  NoPanels panels_;
  LinuxHost computer_{{.dataFolder = home_ / "data",
                       .cloudFolder = home_ / "cloud",
                       .lockFolders = {},
                       .zone = {},
                       .userBus = {}},
                      runLoop_,
                      panels_};
  PhysicalKeyManager keys_{computer_.host()};
  std::filesystem::path drive_;
  std::string device_;
};

TEST_F(KeyDriveTest, AKeyIsMadeFoundAndGoneWithItsDrive) {
  runOnUsb("AKeyIsMadeFoundAndGoneWithItsDrive");
}
TEST_F(OnUsb, DISABLED_AKeyIsMadeFoundAndGoneWithItsDrive) {
  mount();
  std::filesystem::create_directories(drive_ / "some/folder");
  EXPECT_EQ(createKey(drive_ / "some/folder"), "KEY DRIVE");
  EXPECT_TRUE(std::filesystem::exists(drive_ / PhysicalKeyManager::keyFileName));
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(drive_), {}), 3)
      << "nothing of the writing is left but lost+found, the folder and the key";
  EXPECT_EQ(keys_.findMountedMatchingKey(), "KEY DRIVE");
  EXPECT_NE(createKey(drive_), "KEY DRIVE") << "while the current key is mounted";

  unmount();
  EXPECT_EQ(keys_.findMountedMatchingKey(), std::nullopt);
  EXPECT_NE(createKey(drive_), "KEY DRIVE") << "the folder it was mounted on";
  mount();
  EXPECT_EQ(keys_.findMountedMatchingKey(), "KEY DRIVE");

  // The key moved into a folder, and a look through a link, are no keys.
  std::filesystem::rename(drive_ / PhysicalKeyManager::keyFileName, drive_ / "some/key");
  EXPECT_EQ(keys_.findMountedMatchingKey(), std::nullopt);
  std::filesystem::create_symlink("some/key", drive_ / PhysicalKeyManager::keyFileName);
  EXPECT_EQ(keys_.findMountedMatchingKey(), std::nullopt);

  unmount();
  mount(MS_RDONLY);
  EXPECT_EQ(createKey(drive_), "That USB drive is read-only. Unlock it or choose another drive.");
}

TEST_F(KeyDriveTest, WhatIsNoFileIsNeverWaitedFor) {
  runOnUsb("WhatIsNoFileIsNeverWaitedFor");
}
TEST_F(OnUsb, DISABLED_WhatIsNoFileIsNeverWaitedFor) {
  mount();
  auto& volumes = computer_.host().volumes;
  const auto file = drive_ / PhysicalKeyManager::keyFileName;
  const std::pair<const char*, std::function<void()>> oddities[] = {
      {"nothing", [] {}},
      {"a folder", [&] { std::filesystem::create_directory(file); }},
      {"a pipe", [&] { ::mkfifo(file.c_str(), 0600); }},
      {"a device", [&] { ::mknod(file.c_str(), S_IFCHR | 0600, makedev(1, 5)); }},
      {"far too much",
       [&] {
         writeFile(file, "");
         std::filesystem::resize_file(file, 1'000'000'000);
       }},
      {"a link out of the drive", [&] { std::filesystem::create_symlink("/etc/hostname", file); }}};
  for (const auto& [what, put] : oddities) {
    put();
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(volumes.readFile(file), std::nullopt) << what;
    EXPECT_LT(std::chrono::steady_clock::now() - start, 1000ms) << what;
    std::filesystem::remove(file);
  }
  std::filesystem::create_directory(file);
  writeFile(file / "in the way", "");
  EXPECT_THROW(volumes.writeFileAtomically(file, "key"), LocalizedError);
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(drive_), {}), 2)
      << "what was begun is taken away";
}

TEST_F(KeyDriveTest, ADriveOrShareThatDoesNotAnswerHoldsNobodyUp) {
  runOnUsb("ADriveOrShareThatDoesNotAnswerHoldsNobodyUp");
}
TEST_F(OnUsb, DISABLED_ADriveOrShareThatDoesNotAnswerHoldsNobodyUp) {
  mount();
  ASSERT_EQ(createKey(drive_), "KEY DRIVE");
  unmount();
  // File systems served by nobody: every look into them waits until this descriptor is closed.
  for (const bool isShare : {true, false}) {
    const UniqueDescriptor server(::open("/dev/fuse", O_RDWR | O_CLOEXEC));
    const auto options = "fd=" + std::to_string(server.get()) +
                         ",rootmode=40000,user_id=0,group_id=0" + (isShare ? "" : ",blksize=512");
    ASSERT_EQ(::mount(isShare ? "nas:/share" : device_.c_str(), drive_.c_str(),
                      isShare ? "fuse.sshfs" : "fuseblk", 0, options.c_str()),
              0)
        << errno;
    auto& volumes = computer_.host().volumes;
    const auto listed = volumes.mountedVolumes();
    EXPECT_NE(std::find(listed.begin(), listed.end(), drive_), listed.end());
    EXPECT_EQ(volumes.traits(drive_)->isLocal, !isShare);
    auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(keys_.findMountedMatchingKey(), std::nullopt);
    EXPECT_LT(std::chrono::steady_clock::now() - start, 1000ms);
    start = std::chrono::steady_clock::now();
    for (int poll = 0; poll < 10; ++poll) EXPECT_EQ(keys_.findMountedMatchingKey(), std::nullopt);
    EXPECT_LT(std::chrono::steady_clock::now() - start, 500ms) << "it is known by now";
    unmount();
  }
  // The last look ends some time after its server.
  EXPECT_TRUE(eventually(
      [&] { return ::mount(device_.c_str(), drive_.c_str(), "ext4", 0, nullptr) == 0; }));
  EXPECT_TRUE(eventually([&] { return keys_.findMountedMatchingKey() == "KEY DRIVE"; }));
}

}  // namespace
}  // namespace lunevra
