#pragma once

#include <string_view>

#include <QtGui/qcolor.h>

#include "ui/color_from_hex.h"

namespace lunevra {

[[nodiscard]] inline QColor qtColor(std::string_view hex, double opacity = 1.0) {
  const auto color = colorFromHex(hex);
  return QColor::fromRgbF(static_cast<float>(color.red), static_cast<float>(color.green),
                          static_cast<float>(color.blue),
                          static_cast<float>(color.alpha * opacity));
}

}  // namespace lunevra
