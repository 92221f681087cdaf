#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/foundation/keyed_archive.h"
#include "platform/instant.h"

namespace lunevra {

/// What the firewall helper reports of itself.
class FirewallHelperStatus {
 public:
  /// The name under which both processes archive it.
  static constexpr std::string_view className = "LunevraFirewallHelperStatus";
  static constexpr bool supportsSecureCoding = true;

  FirewallHelperStatus(bool isActive, std::optional<Instant> blockedUntil, std::int64_t domainCount,
                       std::int64_t lastHonoredGeneration, bool anchorLoaded);
  /// Throws LocalizedError if the archive is another class's; missing values read as no, 0, absent.
  explicit FirewallHelperStatus(const KeyedArchive& archive);

  [[nodiscard]] KeyedArchive archived() const;

  /// A block is in force now.
  [[nodiscard]] bool isActive() const { return isActive_; }
  [[nodiscard]] std::optional<Instant> blockedUntil() const { return blockedUntil_; }
  /// How many domains the active block covers.
  [[nodiscard]] std::int64_t domainCount() const { return domainCount_; }
  /// The highest release generation the helper has acted on.
  [[nodiscard]] std::int64_t lastHonoredGeneration() const { return lastHonoredGeneration_; }
  /// The helper's packet filter rules are loaded.
  [[nodiscard]] bool anchorLoaded() const { return anchorLoaded_; }

  friend bool operator==(const FirewallHelperStatus&, const FirewallHelperStatus&) = default;

 private:
  bool isActive_;
  std::optional<Instant> blockedUntil_;
  std::int64_t domainCount_;
  std::int64_t lastHonoredGeneration_;
  bool anchorLoaded_;
};

}  // namespace lunevra
