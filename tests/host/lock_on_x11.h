#pragma once

#include <chrono>
#include <cstdlib>
#include <gtest/gtest.h>

#include "host/child_process.h"
#include "host/eventually.h"
#include "host/x_probe.h"
#include "host/x_server.h"
#include "platform/linux/linux_user_defaults_domains.h"
#include "platform/linux/stderr_log.h"
#include "store/settings_keys.h"

namespace lunevra::host_test {

inline bool isSoak() {
  return std::getenv("LUNEVRA_SOAK_SECONDS") != nullptr;
}

/// One person's computer: an X server, a home, and the real program.
class LockOnX11 : public testing::Test {
 protected:
  LockOnX11() { group().set(settings_key::scheduleEnabled, false); }

  UserDefaults& group() { return *defaults_.suite(settings_key::appGroup); }

  /// A night that has started and ends that far from now.
  void latchNight(std::chrono::seconds length) {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    defaults_.standard().set(settings_key::activeNightLockUntil,
                             Instant{std::chrono::duration<double>(now + length).count()});
  }

  void forgetNight() {
    defaults_.standard().remove(settings_key::activeNightLockUntil);
    group().remove(settings_key::activeMacNightLockUntil);
  }

  [[nodiscard]] std::vector<std::string> environment(const std::string& display) const {
    const auto home = home_.path().string();
    return {"DISPLAY=" + display, "HOME=" + home, "XDG_DATA_HOME=" + home,
            "XDG_RUNTIME_DIR=" + home, "TZ=UTC"};
  }
  [[nodiscard]] std::unique_ptr<ChildProcess> start(const std::string& display) const {
    return std::make_unique<ChildProcess>(std::vector<std::string>{LUNEVRA_PROGRAM},
                                          environment(display));
  }
  [[nodiscard]] std::unique_ptr<ChildProcess> start() const { return start(server_.display()); }

  [[nodiscard]] bool isLocked() const { return screen_.isCovered() && screen_.isInputHeld(); }
  [[nodiscard]] bool getsLocked() const {
    return eventually([this] { return isLocked(); });
  }

  TemporaryFolder home_;
  StderrLog log_;
  LinuxUserDefaultsDomains defaults_{home_.path() / "lunevra", log_};
  XServer server_;
  XProbe screen_{server_.display()};
};

}  // namespace lunevra::host_test
