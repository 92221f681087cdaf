#include "ui/settings/time_picker.h"

#include <algorithm>

namespace lunevra {

std::string hourLabel(std::int64_t hour) {
  const auto shown = hour == 0 ? 12 : hour <= 12 ? hour : hour - 12;
  return std::to_string(shown) + (hour < 12 ? " AM" : " PM");
}

std::string minuteLabel(std::int64_t minute) {
  return (minute < 10 ? "0" : "") + std::to_string(minute);
}

std::optional<int> minuteIndex(std::int64_t minute) {
  const auto* const found = std::find(minutesOnThePicker.begin(), minutesOnThePicker.end(), minute);
  if (found == minutesOnThePicker.end()) return std::nullopt;
  return static_cast<int>(found - minutesOnThePicker.begin());
}

}  // namespace lunevra
