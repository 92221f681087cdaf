#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/linux/defaults_file.h"
#include "platform/linux/file_identity.h"
#include "platform/log.h"

namespace lunevra {

/// The place where a domain's file belongs, whatever happens to the file: opened when it is first
/// needed, made anew when it is deleted, set aside when it is damaged, and left alone for a while
/// when the disk is in trouble. Never throws; each trouble is one log line. One thread at a time.
class DefaultsDisk {
 public:
  DefaultsDisk(std::filesystem::path file, Log& log);

  /// The value on the disk; while the disk is in trouble, what was last known of it.
  [[nodiscard]] std::optional<StoredValue> read(std::string_view key);
  /// Whether the disk certainly says so.
  [[nodiscard]] bool holds(std::string_view key, const std::optional<StoredValue>& value);
  /// Answers whether the value is on the disk now; nothing removes the key.
  bool write(std::string_view key, const std::optional<StoredValue>& value);

 private:
  using Known = std::map<std::string, std::optional<StoredValue>, std::less<>>;
  using TimePoint = std::chrono::steady_clock::time_point;

  struct Trouble {
    bool isReported = false;
    TimePoint retryAt{};
  };

  bool attempt(Trouble& trouble, const std::function<void(DefaultsFile&)>& work);
  void openIfNeeded();
  /// Of a file that may have been written past the database.
  void forgetContents();
  [[nodiscard]] bool canStartAfresh(const DatabaseError& error);
  [[nodiscard]] bool setAside(const std::string& reason);
  void enter(Trouble& trouble, const DatabaseError& error);
  void leave(Trouble& trouble);

  std::filesystem::path path_;
  Log& log_;
  std::unique_ptr<DefaultsFile> file_;
  FileIdentity identity_;
  Known known_;
  Trouble reading_;
  Trouble writing_;
};

}  // namespace lunevra
