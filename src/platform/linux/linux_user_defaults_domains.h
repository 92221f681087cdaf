#pragma once

#include <filesystem>
#include <map>
#include <mutex>
#include <string>
#include <string_view>

#include "platform/linux/sqlite_user_defaults.h"
#include "platform/user_defaults.h"

namespace lunevra {

/// One file a domain in the data folder. Any thread.
class LinuxUserDefaultsDomains : public UserDefaultsDomains {
 public:
  /// The log outlives the domains.
  LinuxUserDefaultsDomains(std::filesystem::path dataFolder, Log& log);

  [[nodiscard]] UserDefaults& standard() override;
  /// Null for a name that cannot be a file's.
  [[nodiscard]] UserDefaults* suite(std::string_view name) override;

 private:
  SqliteUserDefaults& domain(std::string_view name);

  std::filesystem::path dataFolder_;
  Log& log_;
  std::mutex mutex_;
  std::map<std::string, SqliteUserDefaults, std::less<>> domains_;
};

}  // namespace lunevra
