#pragma once

#include <optional>

#include "platform/user_defaults.h"

namespace lunevra {

/// The end of the night that has started, kept twice so that losing one copy does not end the
/// night: as a date in the standard defaults and as seconds in the app group's. Main thread only.
class NightLatch {
 public:
  explicit NightLatch(UserDefaultsDomains& domains) : domains_(domains) {}

  /// The later of the copies that are present and readable, whether past or future.
  [[nodiscard]] std::optional<Instant> until() const;
  [[nodiscard]] std::optional<Instant> futureEnd(Instant now) const;

  /// Starts a night that ends at `end`.
  void set(Instant end);
  /// Keeps a running night and restores its shared copy.
  void renew(Instant end);
  void remove();
  /// Removes the latch of a night that is over. Answers whether one is left, which then runs.
  bool expire(Instant now);

 private:
  [[nodiscard]] UserDefaults& protectionState() const;

  UserDefaultsDomains& domains_;
  mutable UserDefaults* protectionState_ = nullptr;  // opened on first use, then kept
};

/// The end of the release that a physical key granted; kept on this machine only.
class PhysicalOverride {
 public:
  explicit PhysicalOverride(UserDefaultsDomains& domains) : domains_(domains) {}

  [[nodiscard]] std::optional<Instant> until() const;
  [[nodiscard]] bool isInForce(Instant now) const;
  void set(Instant until);
  /// Removes a release that is over. Answers whether one is left, which then is in force.
  bool expire(Instant now);

 private:
  UserDefaultsDomains& domains_;
};

}  // namespace lunevra
