#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <sqlite3.h>
#include <stdexcept>
#include <string>
#include <string_view>

#include "platform/stored_value.h"

namespace lunevra {

enum class DatabaseFault {
  busy,         // another process holds it; the same call may succeed later
  corrupt,      // not a database, or a damaged one
  foreign,      // a sound database that is not laid out as ours
  unavailable,  // missing rights, a full or failing disk
};

class DatabaseError : public std::runtime_error {
 public:
  DatabaseError(DatabaseFault fault, const std::string& text)
      : std::runtime_error(text), fault_(fault) {}
  [[nodiscard]] DatabaseFault fault() const { return fault_; }

 private:
  DatabaseFault fault_;
};

/// One open file of user defaults. Every operation throws DatabaseError. One thread at a time.
class DefaultsFile {
 public:
  /// Opens the file, or makes it in an existing folder; one on a read-only disk can still be read.
  explicit DefaultsFile(const std::filesystem::path& path);
  ~DefaultsFile() = default;
  DefaultsFile(const DefaultsFile&) = delete;
  DefaultsFile& operator=(const DefaultsFile&) = delete;

  /// The longest that an operation waits for another process.
  void setPatience(std::chrono::milliseconds patience) { patience_ = patience; }
  /// Whether another connection has written since the last call; true the first time.
  [[nodiscard]] bool hasChangedElsewhere();
  /// Makes the next read go to the file itself.
  void forgetPages();
  [[nodiscard]] std::optional<StoredValue> read(std::string_view key);
  /// On the disk when it returns; nothing removes the key.
  void write(std::string_view key, const std::optional<StoredValue>& value);
  [[nodiscard]] bool isReadOnly() const;

 private:
  struct Close {
    void operator()(sqlite3* database) const { sqlite3_close(database); }
  };
  struct Finalize {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
  };
  using Statement = std::unique_ptr<sqlite3_stmt, Finalize>;

  void open(const std::string& name, int flags);
  bool opensImmutable(const std::filesystem::path& path);
  void prepareStatements();
  void execute(const char* sql);
  [[nodiscard]] Statement prepare(const char* sql);
  bool step(sqlite3_stmt* statement);
  [[noreturn]] void fail() const;
  static int waitForOther(void* file, int earlierWaits);

  std::chrono::milliseconds patience_{250};
  std::chrono::steady_clock::time_point waitingSince_{};
  std::unique_ptr<sqlite3, Close> database_;
  Statement dataVersion_;
  Statement select_;
  Statement upsert_;
  Statement delete_;
  std::optional<std::int64_t> seenVersion_;
};

}  // namespace lunevra
