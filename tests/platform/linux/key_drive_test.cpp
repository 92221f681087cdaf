#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

#include "host/usb_image.h"
#include "physical_key/physical_key_manager.h"
#include "platform/linux/linux_host.h"
#include "platform/linux/linux_test_support.h"

namespace lunevra {
namespace {

using host_test::runOnUsb;
using std::chrono_literals::operator""ms;

class OnUsb : public testing::Test {
 protected:
  ~OnUsb() override { unmount(); }

  void mount(unsigned long flags = 0) const { usb_.mount(flags); }
  void unmount() const { usb_.unmount(); }
  /// Whether a command did, to which the computer's disks are what they are.
  static bool runs(const std::string& command) {
    return std::system(("unset LD_PRELOAD; " + command).c_str()) == 0;
  }
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
  host_test::UsbDrive usb_;
  std::filesystem::path drive_ = usb_.path;
};

class KeyDriveOfEachKind : public testing::TestWithParam<const char*> {};
INSTANTIATE_TEST_SUITE_P(FileSystems, KeyDriveOfEachKind, testing::Values("ext4", "vfat", "exfat"),
                         [](const auto& kind) { return std::string(kind.param); });

TEST_P(KeyDriveOfEachKind, MakesAKeyThatIsFoundAndGoneWithIt) {
  runOnUsb("OnUsb.DISABLED_AKeyIsMadeFoundAndGoneWithItsDrive", GetParam());
}
TEST_F(OnUsb, DISABLED_AKeyIsMadeFoundAndGoneWithItsDrive) {
  mount();
  const auto entries = [&] {
    return std::distance(std::filesystem::directory_iterator(drive_), {});
  };
  const auto entriesAtFirst = entries();
  std::filesystem::create_directories(drive_ / "some/folder");
  EXPECT_EQ(createKey(drive_ / "some/folder"), "KEY DRIVE");
  EXPECT_TRUE(std::filesystem::exists(drive_ / PhysicalKeyManager::keyFileName));
  EXPECT_EQ(entries(), entriesAtFirst + 2) << "nothing is left of the writing but the key";
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
  std::error_code noLinksHere;
  std::filesystem::create_symlink("some/key", drive_ / PhysicalKeyManager::keyFileName,
                                  noLinksHere);
  EXPECT_EQ(keys_.findMountedMatchingKey(), std::nullopt);

  unmount();
  mount(MS_RDONLY);
  EXPECT_EQ(createKey(drive_), "That USB drive is read-only. Unlock it or choose another drive.");
}

TEST(KeyDriveTest, WhatIsNoFileIsNeverWaitedFor) {
  runOnUsb("OnUsb.DISABLED_WhatIsNoFileIsNeverWaitedFor");
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

TEST(KeyDriveTest, ADrivePulledOutMeanwhileIsNoKeyAndTakesNone) {
  runOnUsb("OnUsb.DISABLED_ADrivePulledOutMeanwhileIsNoKeyAndTakesNone");
}
TEST_F(OnUsb, DISABLED_ADrivePulledOutMeanwhileIsNoKeyAndTakesNone) {
  const auto file = drive_ / PhysicalKeyManager::keyFileName;
  const auto comesBack = [&] {
    usb_.limit(0);
    unmount();
    mount();
  };
  mount();
  ASSERT_EQ(createKey(drive_), "KEY DRIVE");
  const auto fingerprint = keys_.loadFingerprint();
  usb_.shutDown();
  EXPECT_EQ(keys_.findMountedMatchingKey(), std::nullopt);
  comesBack();
  EXPECT_EQ(keys_.findMountedMatchingKey(), "KEY DRIVE");

  // The disk refuses what the file system has taken already.
  usb_.limit(4096);
  EXPECT_THROW(computer_.host().volumes.writeFileAtomically(file, "half a key"), LocalizedError);
  comesBack();
  EXPECT_EQ(keys_.findMountedMatchingKey(), "KEY DRIVE") << "what was there stays whole";
  std::filesystem::remove(file);
  ::sync();
  usb_.limit(4096);
  EXPECT_TRUE(createKey(drive_).starts_with("Lunevra could not write the key to drive: "));
  EXPECT_EQ(keys_.loadFingerprint(), fingerprint);
  comesBack();
  EXPECT_FALSE(std::filesystem::exists(file));
}

TEST(KeyDriveTest, ADriveThatFlapsIsFoundInTheEnd) {
  runOnUsb("OnUsb.DISABLED_ADriveThatFlapsIsFoundInTheEnd");
}
TEST_F(OnUsb, DISABLED_ADriveThatFlapsIsFoundInTheEnd) {
  mount();
  ASSERT_EQ(createKey(drive_), "KEY DRIVE");
  std::atomic isFlapping = true;
  std::thread hand([&] {
    for (int time = 0; time < 10; ++time) {
      unmount();
      mount();
    }
    isFlapping = false;
  });
  while (isFlapping) {
    const auto start = std::chrono::steady_clock::now();
    static_cast<void>(keys_.findMountedMatchingKey());
    EXPECT_LT(std::chrono::steady_clock::now() - start, 1000ms);
  }
  hand.join();
  EXPECT_EQ(keys_.findMountedMatchingKey(), "KEY DRIVE");
}

TEST(KeyDriveTest, ADriveOrShareThatDoesNotAnswerHoldsNobodyUp) {
  runOnUsb("OnUsb.DISABLED_ADriveOrShareThatDoesNotAnswerHoldsNobodyUp");
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
    ASSERT_EQ(::mount(isShare ? "nas:/share" : usb_.device.c_str(), drive_.c_str(),
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
    if (isShare) continue;
    // Another drive in its place is another matter.
    writeFile(home_ / "image", "");
    std::filesystem::resize_file(home_ / "image", 1 << 20);
    ASSERT_TRUE(runs("mkfs.ext4 -qF " + (home_ / "image").string()));
    ASSERT_TRUE(runs("mount -o loop " + (home_ / "image").string() + ' ' + drive_.string()));
    writeFile(drive_ / "file", "text");
    EXPECT_EQ(volumes.readFile(drive_ / "file"), "text");
    unmount();
  }
  // The last look ends some time after its server.
  EXPECT_TRUE(eventually(
      [&] { return ::mount(usb_.device.c_str(), drive_.c_str(), "ext4", 0, nullptr) == 0; }));
  EXPECT_TRUE(eventually([&] { return keys_.findMountedMatchingKey() == "KEY DRIVE"; }));
}

}  // namespace
}  // namespace lunevra
