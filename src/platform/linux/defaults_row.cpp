#include "platform/linux/defaults_row.h"

#include <cmath>
#include <string>
#include <string_view>

#include "platform/foundation/stored_value_json.h"

namespace lunevra {
namespace {

/// Binds one value of each type, under the name the type has in the file.
struct Binder {
  sqlite3_stmt* statement;
  int parameter;

  void operator()(std::int64_t value) const {
    bindText("integer", parameter);
    sqlite3_bind_int64(statement, parameter + 1, value);
  }
  void operator()(bool value) const {
    bindText("flag", parameter);
    sqlite3_bind_int(statement, parameter + 1, value ? 1 : 0);
  }
  void operator()(double value) const {
    bindText("double", parameter);
    sqlite3_bind_double(statement, parameter + 1, value);
  }
  void operator()(Instant value) const {
    bindText("date", parameter);
    sqlite3_bind_double(statement, parameter + 1, value.secondsSince1970);
  }
  void operator()(const std::string& value) const {
    bindText("text", parameter);
    bindText(value, parameter + 1);
  }
  void operator()(const std::vector<std::string>& value) const {
    bindText("texts", parameter);
    bindText(encodeTexts(value), parameter + 1);
  }

  void bindText(std::string_view text, int index) const {
    sqlite3_bind_text64(statement, index, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
  }
};

std::optional<std::string> textColumn(sqlite3_stmt* statement, int column) {
  if (sqlite3_column_type(statement, column) != SQLITE_TEXT) return std::nullopt;
  const auto* bytes = static_cast<const char*>(sqlite3_column_blob(statement, column));
  const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement, column));
  return bytes == nullptr ? std::string() : std::string(bytes, size);
}

std::optional<double> numberColumn(sqlite3_stmt* statement, int column) {
  const int storage = sqlite3_column_type(statement, column);
  if (storage != SQLITE_FLOAT && storage != SQLITE_INTEGER) return std::nullopt;
  const double number = sqlite3_column_double(statement, column);
  return std::isfinite(number) ? std::optional(number) : std::nullopt;
}

}  // namespace

void bindStoredValue(sqlite3_stmt* statement, int firstParameter, const StoredValue& value) {
  std::visit(Binder{statement, firstParameter}, value);
}

std::optional<StoredValue> storedValueOfRow(sqlite3_stmt* statement, int firstColumn) {
  const auto type = textColumn(statement, firstColumn);
  const int column = firstColumn + 1;
  const bool isInteger = sqlite3_column_type(statement, column) == SQLITE_INTEGER;
  if (type == "integer" && isInteger) return sqlite3_column_int64(statement, column);
  if (type == "flag" && isInteger) {
    const auto flag = sqlite3_column_int64(statement, column);
    if (flag == 0 || flag == 1) return flag == 1;
  }
  if (type == "double")
    if (const auto number = numberColumn(statement, column)) return *number;
  if (type == "date")
    if (const auto seconds = numberColumn(statement, column)) return Instant{*seconds};
  if (type == "text")
    if (auto text = textColumn(statement, column)) return std::move(*text);
  if (type == "texts")
    if (const auto json = textColumn(statement, column))
      if (auto texts = decodeTexts(*json)) return std::move(*texts);
  return std::nullopt;
}

}  // namespace lunevra
