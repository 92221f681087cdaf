#pragma once

#include <optional>
#include <sqlite3.h>

#include "platform/stored_value.h"

namespace lunevra {

/// Binds the type's name and the value to two parameters that follow one another. A date or double
/// is finite.
void bindStoredValue(sqlite3_stmt* statement, int firstParameter, const StoredValue& value);

/// The value in the columns `type` and `value` from `firstColumn` on. Anyone may write rows, so one
/// whose value does not fit its type, or whose type is unknown, is nothing. A whole number fits
/// where a fraction may stand.
[[nodiscard]] std::optional<StoredValue> storedValueOfRow(sqlite3_stmt* statement, int firstColumn);

}  // namespace lunevra
