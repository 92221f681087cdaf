#pragma once

#include <string_view>

#include "platform/host.h"

namespace lunevra {

/// The per-user agent that starts the program after login and brings it back when it ends. Needs no
/// lock engine, so that it can be registered before there is one.
class EnforcementAgent {
 public:
  static constexpr std::string_view propertyListName = "com.lunevra.enforcer.plist";

  explicit EnforcementAgent(const Host& host);

  /// Registers the agent unless it is enabled or waits for approval; once it is enabled, the
  /// program's plain login item goes. Throws LocalizedError if the registration fails.
  void install();

  /// What every launch does: installs, keeps the outcome in the standard defaults, logs. Never
  /// throws.
  void registerAtLaunch();

 private:
  [[nodiscard]] Service& agent() const;

  ServiceManager& services_;
  UserDefaultsDomains& defaults_;
  Log& log_;
};

}  // namespace lunevra
