#pragma once

#include "ui/symbol_pen.h"

/// The drawings of the symbols, each on the grid of 24 units.
namespace lunevra::symbol_drawing {

using Drawing = QPainterPath (*)(const SymbolPen& pen);

// The night and the day.
[[nodiscard]] QPainterPath moon(const SymbolPen& pen);
[[nodiscard]] QPainterPath moonStars(const SymbolPen& pen);
[[nodiscard]] QPainterPath moonZzz(const SymbolPen& pen);
[[nodiscard]] QPainterPath sunrise(const SymbolPen& pen);

// Things.
[[nodiscard]] QPainterPath lock(const SymbolPen& pen);
[[nodiscard]] QPainterPath key(const SymbolPen& pen);
[[nodiscard]] QPainterPath externalDrive(const SymbolPen& pen);
[[nodiscard]] QPainterPath externalDriveCheckmark(const SymbolPen& pen);
[[nodiscard]] QPainterPath externalDriveXmark(const SymbolPen& pen);
[[nodiscard]] QPainterPath calendarLock(const SymbolPen& pen);
[[nodiscard]] QPainterPath twoDisplays(const SymbolPen& pen);
[[nodiscard]] QPainterPath keyboardEllipsis(const SymbolPen& pen);
[[nodiscard]] QPainterPath gear(const SymbolPen& pen);

// Signs.
[[nodiscard]] QPainterPath circle(const SymbolPen& pen);
[[nodiscard]] QPainterPath checkmarkCircle(const SymbolPen& pen);
[[nodiscard]] QPainterPath xmarkCircle(const SymbolPen& pen);
[[nodiscard]] QPainterPath infoCircle(const SymbolPen& pen);
[[nodiscard]] QPainterPath checkmarkSeal(const SymbolPen& pen);
[[nodiscard]] QPainterPath exclamationTriangle(const SymbolPen& pen);
[[nodiscard]] QPainterPath power(const SymbolPen& pen);
[[nodiscard]] QPainterPath arrowClockwise(const SymbolPen& pen);
[[nodiscard]] QPainterPath arrowCounterclockwise(const SymbolPen& pen);
[[nodiscard]] QPainterPath chevrons(const SymbolPen& pen);

// Shields.
[[nodiscard]] QPainterPath lockShield(const SymbolPen& pen);
[[nodiscard]] QPainterPath checkmarkShield(const SymbolPen& pen);
[[nodiscard]] QPainterPath exclamationShield(const SymbolPen& pen);
[[nodiscard]] QPainterPath halfShield(const SymbolPen& pen);
[[nodiscard]] QPainterPath checkerboardShield(const SymbolPen& pen);

// Parts that several of them have.
[[nodiscard]] QPainterPath checkmark(const SymbolPen& pen, double x, double y, double reach);
[[nodiscard]] QPainterPath xmark(const SymbolPen& pen, double x, double y, double reach);
[[nodiscard]] QPainterPath exclamation(const SymbolPen& pen, double x, double top, double bottom);

}  // namespace lunevra::symbol_drawing
