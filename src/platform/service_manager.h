#pragma once

#include <cstdint>
#include <string_view>

#include "platform/localized_error.h"

namespace lunevra {

/// A registration's state as the computer reports it; other values may occur.
enum class ServiceStatus : std::int64_t {
  notRegistered = 0,
  enabled = 1,
  requiresApproval = 2,
  notFound = 3,
};

/// A program that the computer starts by itself once it is registered. Nothing is cached: each call
/// asks the computer anew and returns in bounded time. Main thread only.
class Service {
 public:
  virtual ~Service() = default;

  [[nodiscard]] virtual ServiceStatus status() const = 0;
  /// Both throw LocalizedError with the computer's own description.
  virtual void registerService() = 0;
  virtual void unregisterService() = 0;
};

class ServiceManager {
 public:
  virtual ~ServiceManager() = default;

  [[nodiscard]] virtual Service& agent(std::string_view propertyListName) = 0;
  [[nodiscard]] virtual Service& daemon(std::string_view propertyListName) = 0;
  /// The program itself, started at login.
  [[nodiscard]] virtual Service& mainApp() = 0;

  /// Opens the system's settings where they list what starts at login, without waiting for them;
  /// false if there is no such page.
  [[nodiscard]] virtual bool openLoginItems() = 0;
};

}  // namespace lunevra
