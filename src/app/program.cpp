#include "app/program.h"

#include <utility>

namespace lunevra {

Program::Program(const Host& host, const Desktop& desktop, LockContentFactory lockContent,
                 DaytimeContents daytime)
    : host_(host), app_(host, desktop, std::move(lockContent), std::move(daytime), [this] {
        return std::make_unique<ShutdownManager>(host_, syncedStore(), physicalKeyManager(),
                                                 firewallHelperClient());
      }) {}

SyncedStore& Program::syncedStore() {
  return syncedStore_ ? *syncedStore_ : syncedStore_.emplace(host_);
}

PhysicalKeyManager& Program::physicalKeyManager() {
  return physicalKeyManager_ ? *physicalKeyManager_ : physicalKeyManager_.emplace(host_);
}

FirewallHelperClient& Program::firewallHelperClient() {
  return firewallHelperClient_ ? *firewallHelperClient_ : firewallHelperClient_.emplace(host_);
}

}  // namespace lunevra
