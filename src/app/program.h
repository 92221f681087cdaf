#pragma once

#include <optional>

#include "shell/torvane_app.h"

namespace lunevra {

/// The composition root: the program's long-lived objects over one host and one desktop. Each of
/// the process-wide shared objects is made on first use and handed on by reference.
class Program {
 public:
  /// Host and desktop outlive the program.
  Program(const Host& host, const Desktop& desktop, LockContentFactory lockContent,
          DaytimeContents daytime = {});

  [[nodiscard]] SyncedStore& syncedStore();
  [[nodiscard]] PhysicalKeyManager& physicalKeyManager();
  [[nodiscard]] FirewallHelperClient& firewallHelperClient();
  [[nodiscard]] TorvaneApp& app() { return app_; }

 private:
  Host host_;
  std::optional<SyncedStore> syncedStore_;
  std::optional<PhysicalKeyManager> physicalKeyManager_;
  std::optional<FirewallHelperClient> firewallHelperClient_;
  TorvaneApp app_;  // last: everything in it refers to the shared objects
};

}  // namespace lunevra
