#include <iostream>
#include <random>

#include "host/lock_on_x11.h"
#include "host/stand_in_system_bus.h"
#include "host/usb_image.h"

namespace lunevra::host_test {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using std::chrono::steady_clock;

/// Folders for temporary files are on a small disk of this process's own from here on.
class SmallDisk {
 protected:
  SmallDisk() {
    isAvailable_ = ::unshare(CLONE_NEWNS) == 0 &&
                   ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
                   ::mount("tmpfs", folder_.path().c_str(), "tmpfs", 0, "size=12M") == 0;
    setenv("TMPDIR", folder_.path().c_str(), 1);
  }
  ~SmallDisk() {
    unsetenv("TMPDIR");
    ::umount2(folder_.path().c_str(), MNT_DETACH);
  }
  void fill() const {
    std::ofstream filler(folder_.path() / "filler");
    while (filler << std::string(4096, 'f') << std::flush) continue;
  }
  void makeRoom() const { fs::remove(folder_.path() / "filler"); }

  bool isAvailable_ = false;

 private:
  TemporaryFolder folder_;
};

/// Short nights, and whatever may befall a computer in them. Equal seeds bring equal blows.
class BadNights : public SmallDisk, public LockOnX11 {
 protected:
  BadNights() {
    const char* seed = std::getenv("LUNEVRA_SOAK_SEED");
    const auto number = seed != nullptr ? std::stoul(seed) : 1;
    std::cout << "seed " << number << std::endl;
    random_.seed(number);
    usb_.mount();
    usb_.makeKey(home_.path() / "lunevra");
    usb_.unmount();
    launch();
  }

  void launch() {
    auto surroundings = environment(server_.display());
    surroundings.push_back("DBUS_SESSION_BUS_ADDRESS=" + sessionBus_.address());
    surroundings.emplace_back("LUNEVRA_STARTED_BY_AGENT=1");  // what it covers outlives it
    program_.emplace(std::vector<std::string>{LUNEVRA_PROGRAM}, surroundings);
  }

  void playNight() {
    const auto length = std::chrono::seconds(8 + random_() % 4);  // noticed within six
    const auto end = steady_clock::now() + length;
    latchNight(length);
    const auto latch = defaults_.standard().object(settings_key::activeNightLockUntil);
    changeElsewhere();
    ASSERT_TRUE(getsLocked());
    const bool hasFriend = random_() % 4 == 0;
    while (steady_clock::now() < end - 1s) {
      strike();
      ASSERT_TRUE(eventually([&] { return screen_.isCovered(); }, 1s)) << "open in the night";
      ASSERT_TRUE(program_->isRunning()) << *program_->exitStatus();
      EXPECT_EQ(defaults_.standard().object(settings_key::activeNightLockUntil), latch);
    }
    makeRoom();
    if (hasFriend) usb_.mount();
    ASSERT_TRUE(eventually([&] { return !screen_.isCovered() && screen_.takesInput(); }))
        << "shut after the night; a friend came: " << hasFriend;
    screen_.release();
    if (hasFriend) usb_.unmount();
    beTidy();
    defaults_.standard().remove(settings_key::physicalOverrideUntil);
  }

  void strike() {
    SCOPED_TRACE(blow_ = random_() % 9);
    switch (blow_) {
      case 0:
        return die();
      case 1:
        program_->signal(SIGSTOP);
        wait(std::chrono::milliseconds(random_() % 300));
        return program_->signal(SIGCONT);
      case 2:
        return server_.plugIn("DUMMY1", "800x600", random_() % 2 == 0 ? "1024x0" : "0x768");
      case 3:
        return server_.unplug("DUMMY1");
      case 4:
        return changeElsewhere();
      case 5:
        return random_() % 2 == 0 ? fill() : makeRoom();
      case 6:
        sessionBus_.kill();
        systemBus_.restart();
        return sessionBus_.start();
      case 7:
        for (const int signal : {SIGTERM, SIGINT, SIGHUP}) program_->signal(signal);
        return screen_.typeAndClick();
      default:
        screen_.destroy(screen_.openWindow(true));
    }
  }

  void die() {
    if (random_() % 4 != 0) return;  // some live long enough to grow
    program_->signal(SIGKILL);
    EXPECT_TRUE(program_->exitStatus());
    launch();
    EXPECT_TRUE(getsLocked());  // a request that comes before it can refuse is a death like this
  }

  void changeElsewhere() {
    const auto setting = home_.path() / "lunevra/cloud/wakeHour.json";
    const auto hour = std::to_string(random_() % 30);
    const auto next = setting.string() + ".new";
    std::ofstream(next) << (random_() % 5 == 0 ? "{"
                                               : R"({"type": "integer", "value": )" + hour + "}");
    std::error_code full;
    fs::rename(next, setting, full);
  }

  /// What a day must find as the day before did.
  void beTidy() {
    EXPECT_TRUE(eventually([&] { return screen_.visibleWindowCount() == 0; }));
    const auto descriptors = [&] {
      return std::distance(fs::directory_iterator(process() / "fd"), fs::directory_iterator());
    };
    std::size_t pages = 0;
    std::ifstream(process() / "statm") >> pages >> pages;
    if (known_ != program_->pid()) {
      known_ = program_->pid();
      descriptors_ = descriptors();
      nightsKnown_ = 0;
      pages_ = 0;
    }
    // Not every night shows everything that there is to be loaded.
    if (nightsKnown_++ < 3) pages_ = std::max(pages_, pages);
    EXPECT_TRUE(eventually([&] { return descriptors() <= descriptors_ + 2; })) << descriptors();
    EXPECT_LT(pages, pages_ + mebibytes(16)) << "resident";
  }

  [[nodiscard]] fs::path process() const { return "/proc/" + std::to_string(program_->pid()); }
  static std::size_t mebibytes(std::size_t count) { return count * 256; }  // in pages
  static void wait(std::chrono::milliseconds duration) {
    static_cast<void>(eventually([] { return false; }, duration));
  }

  std::mt19937 random_;
  unsigned long blow_ = 0;
  UsbDrive usb_;
  StandInSystemBus systemBus_;
  PrivateBus sessionBus_;
  std::optional<ChildProcess> program_;
  pid_t known_ = 0;
  int nightsKnown_ = 0;
  std::ptrdiff_t descriptors_ = 0;
  std::size_t pages_ = 0;
};

TEST(BadNightsOnUsb, AllHold) {
  runOnUsb("BadNights.DISABLED_AllHold", "ext4", soakTime() + 60s);
}
TEST_F(BadNights, DISABLED_AllHold) {
  if (!isAvailable_ || !systemBus_.isAvailable()) GTEST_SKIP() << "nothing can be mounted here";
  const auto end = steady_clock::now() + soakTime();
  int nights = 0;
  do {
    playNight();
    ++nights;
  } while (!HasFailure() && (nights < 2 || steady_clock::now() < end));
  std::cout << nights << " nights\n";
}

}  // namespace
}  // namespace lunevra::host_test
