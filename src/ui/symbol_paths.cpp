#include "ui/symbol_paths.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "ui/symbol_drawings.h"

namespace lunevra {
namespace {

struct NamedDrawing {
  std::string_view name;
  symbol_drawing::Drawing draw;
};

constexpr NamedDrawing drawings[] = {
    {"arrow.clockwise", symbol_drawing::arrowClockwise},
    {"arrow.counterclockwise", symbol_drawing::arrowCounterclockwise},
    {"calendar.badge.lock", symbol_drawing::calendarLock},
    {"checkmark.circle.fill", symbol_drawing::checkmarkCircle},
    {"checkmark.seal.fill", symbol_drawing::checkmarkSeal},
    {"checkmark.shield.fill", symbol_drawing::checkmarkShield},
    {"chevron.up.chevron.down", symbol_drawing::chevrons},
    {"circle", symbol_drawing::circle},
    {"display.2", symbol_drawing::twoDisplays},
    {"exclamationmark.shield.fill", symbol_drawing::exclamationShield},
    {"exclamationmark.triangle.fill", symbol_drawing::exclamationTriangle},
    {"externaldrive.badge.xmark", symbol_drawing::externalDriveXmark},
    {"externaldrive.fill", symbol_drawing::externalDrive},
    {"externaldrive.fill.badge.checkmark", symbol_drawing::externalDriveCheckmark},
    {"gearshape", symbol_drawing::gear},
    {"info.circle.fill", symbol_drawing::infoCircle},
    {"key.fill", symbol_drawing::key},
    {"keyboard.badge.ellipsis", symbol_drawing::keyboardEllipsis},
    {"lock.fill", symbol_drawing::lock},
    {"lock.shield.fill", symbol_drawing::lockShield},
    {"moon.fill", symbol_drawing::moon},
    {"moon.stars.fill", symbol_drawing::moonStars},
    {"moon.zzz", symbol_drawing::moonZzz},
    {"moon.zzz.fill", symbol_drawing::moonZzz},
    {"power", symbol_drawing::power},
    {"shield.checkerboard", symbol_drawing::checkerboardShield},
    {"shield.lefthalf.filled", symbol_drawing::halfShield},
    {"sunrise", symbol_drawing::sunrise},
    {"xmark.circle.fill", symbol_drawing::xmarkCircle},
};

}  // namespace

std::vector<std::string_view> symbolNames() {
  std::vector<std::string_view> names;
  for (const auto& drawing : drawings) names.push_back(drawing.name);
  return names;
}

double symbolSide(double textSize) {
  return std::ceil(textSize * SymbolPen::gridOfTextSize);
}

QPainterPath symbolPath(std::string_view name, double textSize, double pixelRatio) {
  const auto* const found =
      std::find_if(std::begin(drawings), std::end(drawings),
                   [&](const NamedDrawing& drawing) { return drawing.name == name; });
  if (found == std::end(drawings)) return {};
  return found->draw(SymbolPen(textSize, pixelRatio));
}

}  // namespace lunevra
