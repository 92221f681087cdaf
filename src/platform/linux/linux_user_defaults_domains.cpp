#include "platform/linux/linux_user_defaults_domains.h"

namespace lunevra {
namespace {

constexpr std::string_view standardName = "standard";
constexpr std::size_t longestName = 200;

}  // namespace

LinuxUserDefaultsDomains::LinuxUserDefaultsDomains(std::filesystem::path dataFolder, Log& log)
    : dataFolder_(std::move(dataFolder)), log_(log) {}

UserDefaults& LinuxUserDefaultsDomains::standard() {
  return domain(standardName);
}

UserDefaults* LinuxUserDefaultsDomains::suite(std::string_view name) {
  using namespace std::string_view_literals;
  if (name.empty() || name.front() == '.' || name.size() > longestName ||
      name.find_first_of("/\0"sv) != std::string_view::npos || name == standardName)
    return nullptr;
  return &domain(name);
}

SqliteUserDefaults& LinuxUserDefaultsDomains::domain(std::string_view name) {
  const std::lock_guard lock(mutex_);
  const auto found = domains_.find(name);
  if (found != domains_.end()) return found->second;
  return domains_
      .try_emplace(std::string(name), dataFolder_ / (std::string(name) + ".sqlite"), log_)
      .first->second;
}

}  // namespace lunevra
