#include "shell/torvane_app.h"

#include <utility>

namespace lunevra {

TorvaneApp::TorvaneApp(const Host& host, const Desktop& desktop, LockContentFactory lockContent,
                       DaytimeContents daytime, EngineFactory makeEngine)
    : makeEngine_(std::move(makeEngine)),
      appDelegate_(host, desktop, std::move(lockContent)),
      scenes_(desktop, std::move(daytime)) {}

void TorvaneApp::launch() {
  shutdownManager();
  appDelegate_.applicationDidFinishLaunching();
}

void TorvaneApp::windowGroupContentAppeared() {
  appDelegate_.attachShutdownManager(shutdownManager());
}

ShutdownManager& TorvaneApp::shutdownManager() {
  if (!shutdownManager_) shutdownManager_ = makeEngine_();
  return *shutdownManager_;
}

}  // namespace lunevra
