#include "platform/linux/sqlite_user_defaults.h"

#include <cmath>

namespace lunevra {
namespace {

constexpr std::chrono::seconds untilNextTry{5};

bool isFinite(const StoredValue& value) {
  if (const auto* number = std::get_if<double>(&value)) return std::isfinite(*number);
  if (const auto* date = std::get_if<Instant>(&value)) return std::isfinite(date->secondsSince1970);
  return true;
}

}  // namespace

SqliteUserDefaults::SqliteUserDefaults(std::filesystem::path file, Log& log)
    : disk_(std::move(file), log) {}

std::optional<StoredValue> SqliteUserDefaults::object(std::string_view key) const {
  const std::lock_guard lock(mutex_);
  // Nobody may ever write again tonight, so a disk that has come back is noticed here as well.
  if (!held_.empty() && std::chrono::steady_clock::now() >= retryAt_) writeHeld();
  const auto found = held_.find(key);
  return found != held_.end() ? found->second : disk_.read(key);
}

void SqliteUserDefaults::set(std::string_view key, const StoredValue& value) {
  // What is not finite counts as absent; the file has no way to say it.
  change(key, isFinite(value) ? std::optional(value) : std::nullopt);
}

void SqliteUserDefaults::remove(std::string_view key) {
  change(key, std::nullopt);
}

void SqliteUserDefaults::change(std::string_view key, const std::optional<StoredValue>& value) {
  const std::lock_guard lock(mutex_);
  if (held_.empty() && disk_.holds(key, value)) return;
  held_.insert_or_assign(std::string(key), value);
  writeHeld();
}

void SqliteUserDefaults::writeHeld() const {
  std::erase_if(held_,
                [this](const auto& entry) { return disk_.write(entry.first, entry.second); });
  retryAt_ = std::chrono::steady_clock::now() + untilNextTry;
}

}  // namespace lunevra
