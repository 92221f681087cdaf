#include "app/early_cover.h"

#include "engine/night_latch.h"
#include "platform/linux/linux_user_defaults_domains.h"
#include "platform/linux/system_clock.h"
#include "platform/service_manager.h"
#include "store/settings_keys.h"

namespace lunevra {

void coverRunningNight(const LinuxPaths& paths, bool isAgentStart, FloorWindow& floor, Log& log) {
  LinuxUserDefaultsDomains defaults(paths.dataFolder, log);
  const auto now = SystemClock().now();
  const bool isNightRunning =
      !PhysicalOverride(defaults).isInForce(now) && NightLatch(defaults).futureEnd(now);
  if (isNightRunning) {
    floor.setOutlivesProcess(isAgentStart ||
                             defaults.standard().integer(settings_key::enforcementAgentStatus) ==
                                 static_cast<std::int64_t>(ServiceStatus::enabled));
    floor.show();
  }
  floor.removeLeftBehind();
}

}  // namespace lunevra
