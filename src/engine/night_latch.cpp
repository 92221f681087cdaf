#include "engine/night_latch.h"

#include <algorithm>

#include "store/settings_keys.h"

namespace lunevra {

std::optional<Instant> NightLatch::until() const {
  const auto primary = domains_.standard().date(settings_key::activeNightLockUntil);
  const auto seconds =
      protectionState().number(settings_key::activeMacNightLockUntil).value_or(0.0);
  const auto shared = seconds > 0.0 ? std::optional(Instant{seconds}) : std::nullopt;
  return std::max(primary, shared);  // an absent copy compares lower than any present one
}

std::optional<Instant> NightLatch::futureEnd(Instant now) const {
  const auto end = until();
  return end && *end > now ? end : std::nullopt;
}

void NightLatch::set(Instant end) {
  domains_.standard().set(settings_key::activeNightLockUntil, end);
  renew(end);
}

void NightLatch::renew(Instant end) {
  protectionState().set(settings_key::activeMacNightLockUntil, end.secondsSince1970);
}

void NightLatch::remove() {
  domains_.standard().remove(settings_key::activeNightLockUntil);
  protectionState().remove(settings_key::activeMacNightLockUntil);
}

bool NightLatch::expire(Instant now) {
  const auto end = until();
  if (end && now >= *end) remove();
  return end && now < *end;
}

UserDefaults& NightLatch::protectionState() const {
  if (protectionState_ == nullptr) {
    protectionState_ = domains_.suite(settings_key::appGroup);
    if (protectionState_ == nullptr) protectionState_ = &domains_.standard();
  }
  return *protectionState_;
}

std::optional<Instant> PhysicalOverride::until() const {
  return domains_.standard().date(settings_key::physicalOverrideUntil);
}

bool PhysicalOverride::isInForce(Instant now) const {
  const auto end = until();
  return end && *end > now;
}

void PhysicalOverride::set(Instant until) {
  domains_.standard().set(settings_key::physicalOverrideUntil, until);
}

bool PhysicalOverride::expire(Instant now) {
  const auto end = until();
  if (end && now >= *end) domains_.standard().remove(settings_key::physicalOverrideUntil);
  return end && now < *end;
}

}  // namespace lunevra
