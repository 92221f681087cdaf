#include "platform/linux/defaults_file.h"

#include <thread>
#include <utility>

#include "platform/linux/defaults_row.h"

namespace lunevra {
namespace {

constexpr auto createTable =
    "CREATE TABLE IF NOT EXISTS "
    "defaults(key TEXT PRIMARY KEY NOT NULL, type TEXT NOT NULL, value) WITHOUT ROWID";

DatabaseFault faultOf(int code) {
  switch (code & 0xFF) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return DatabaseFault::busy;
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
      return DatabaseFault::corrupt;
    case SQLITE_ERROR:  // our own statements are sound, so the tables are not as they expect
    case SQLITE_CONSTRAINT:
      return DatabaseFault::foreign;
    default:
      return DatabaseFault::unavailable;
  }
}

/// Leaves a statement ready for its next use, and its locks released, on every way out.
class ResetAtEnd {
 public:
  explicit ResetAtEnd(sqlite3_stmt* statement) : statement_(statement) {}
  ResetAtEnd(const ResetAtEnd&) = delete;
  ResetAtEnd& operator=(const ResetAtEnd&) = delete;
  ~ResetAtEnd() {
    sqlite3_reset(statement_);
    sqlite3_clear_bindings(statement_);
  }

 private:
  sqlite3_stmt* statement_;
};

void bindKey(sqlite3_stmt* statement, std::string_view key) {
  sqlite3_bind_text64(statement, 1, key.data(), key.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
}

/// Another program that closed the file last leaves no journal, and a read-only disk has no room
/// for the one that reading normally needs; the file alone is then complete.
bool isCompleteWithoutJournal(const std::filesystem::path& path) {
  std::error_code error;
  return std::filesystem::exists(path, error) &&
         !std::filesystem::exists(path.string() + "-wal", error);
}

std::string immutableName(const std::filesystem::path& path) {
  std::string name = "file:";
  for (const char character : path.string()) {
    if (character == '%' || character == '?' || character == '#') {
      constexpr std::string_view digits = "0123456789ABCDEF";
      name += '%';
      name += digits[static_cast<unsigned char>(character) >> 4U];
      name += digits[static_cast<unsigned char>(character) & 0xFU];
    } else {
      name += character;
    }
  }
  return name + "?immutable=1";
}

}  // namespace

DefaultsFile::DefaultsFile(const std::filesystem::path& path) {
  try {
    open(path.string(), SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    // Several processes may hold the file and it may be deleted under them: whoever closes it must
    // not remove a journal by its name, which may belong to a new file by then.
    int keepJournal = 1;
    sqlite3_file_control(database_.get(), nullptr, SQLITE_FCNTL_PERSIST_WAL, &keepJournal);
    execute("PRAGMA journal_mode=WAL");
    execute("PRAGMA synchronous=FULL");
    // A journal of the usual thousand pages would fill a small disk that a few rows never do.
    execute("PRAGMA wal_autocheckpoint=16");
    execute("PRAGMA journal_size_limit=0");
    if (!isReadOnly()) execute(createTable);
    prepareStatements();
  } catch (const DatabaseError& error) {
    if (error.fault() != DatabaseFault::unavailable || !isCompleteWithoutJournal(path) ||
        !opensImmutable(path))
      throw;
  }
}

bool DefaultsFile::opensImmutable(const std::filesystem::path& path) {
  try {
    open(immutableName(path), SQLITE_OPEN_READONLY | SQLITE_OPEN_URI);
    prepareStatements();
    return true;
  } catch (const DatabaseError&) {
    return false;  // a full disk may have left a file without its table; why comes first
  }
}

void DefaultsFile::open(const std::string& name, int flags) {
  sqlite3* database = nullptr;
  const int code = sqlite3_open_v2(name.c_str(), &database, flags | SQLITE_OPEN_NOMUTEX, nullptr);
  dataVersion_.reset();
  select_.reset();
  upsert_.reset();
  delete_.reset();
  database_.reset(database);
  if (code != SQLITE_OK) fail();
  sqlite3_busy_handler(database_.get(), &DefaultsFile::waitForOther, this);
}

void DefaultsFile::prepareStatements() {
  dataVersion_ = prepare("PRAGMA data_version");
  select_ = prepare("SELECT type, value FROM defaults WHERE key = ?1");
  upsert_ = prepare(
      "INSERT INTO defaults(key, type, value) VALUES(?1, ?2, ?3) "
      "ON CONFLICT(key) DO UPDATE SET type = excluded.type, value = excluded.value");
  delete_ = prepare("DELETE FROM defaults WHERE key = ?1");
}

/// Counts the time that really passes; SQLite's own handler counts its naps, which take far longer
/// on a busy computer.
int DefaultsFile::waitForOther(void* file, int earlierWaits) {
  auto& self = *static_cast<DefaultsFile*>(file);
  const auto now = std::chrono::steady_clock::now();
  if (earlierWaits == 0) self.waitingSince_ = now;
  if (now - self.waitingSince_ >= self.patience_) return 0;
  std::this_thread::sleep_for(std::chrono::milliseconds{5});
  return 1;
}

bool DefaultsFile::hasChangedElsewhere() {
  const ResetAtEnd reset{dataVersion_.get()};
  step(dataVersion_.get());
  const auto version = sqlite3_column_int64(dataVersion_.get(), 0);
  return std::exchange(seenVersion_, version) != version;
}

void DefaultsFile::forgetPages() {
  sqlite3_db_release_memory(database_.get());
}

std::optional<StoredValue> DefaultsFile::read(std::string_view key) {
  const ResetAtEnd reset{select_.get()};
  bindKey(select_.get(), key);
  return step(select_.get()) ? storedValueOfRow(select_.get(), 0) : std::nullopt;
}

void DefaultsFile::write(std::string_view key, const std::optional<StoredValue>& value) {
  sqlite3_stmt* const statement = value ? upsert_.get() : delete_.get();
  const ResetAtEnd reset{statement};
  bindKey(statement, key);
  if (value) bindStoredValue(statement, 2, *value);
  step(statement);
}

bool DefaultsFile::isReadOnly() const {
  return sqlite3_db_readonly(database_.get(), "main") == 1;
}

void DefaultsFile::execute(const char* sql) {
  if (sqlite3_exec(database_.get(), sql, nullptr, nullptr, nullptr) != SQLITE_OK) fail();
}

DefaultsFile::Statement DefaultsFile::prepare(const char* sql) {
  sqlite3_stmt* statement = nullptr;
  const int code =
      sqlite3_prepare_v3(database_.get(), sql, -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
  Statement prepared(statement);
  if (code != SQLITE_OK) fail();
  return prepared;
}

bool DefaultsFile::step(sqlite3_stmt* statement) {
  const int code = sqlite3_step(statement);
  if (code != SQLITE_ROW && code != SQLITE_DONE) fail();
  return code == SQLITE_ROW;
}

void DefaultsFile::fail() const {
  if (database_ == nullptr) throw DatabaseError(DatabaseFault::unavailable, "out of memory");
  throw DatabaseError(faultOf(sqlite3_extended_errcode(database_.get())),
                      sqlite3_errmsg(database_.get()));
}

}  // namespace lunevra
