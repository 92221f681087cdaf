#include "app/early_cover.h"

#include "engine/night_latch.h"
#include "platform/linux/linux_user_defaults_domains.h"
#include "platform/linux/system_clock.h"

namespace lunevra {

void coverRunningNight(const LinuxPaths& paths, FloorWindow& floor, Log& log) {
  LinuxUserDefaultsDomains defaults(paths.dataFolder, log);
  const auto now = SystemClock().now();
  if (PhysicalOverride(defaults).isInForce(now) || !NightLatch(defaults).futureEnd(now)) return;
  floor.show();
  static_cast<void>(floor.holdInput());  // what another program holds is asked for again later
}

}  // namespace lunevra
