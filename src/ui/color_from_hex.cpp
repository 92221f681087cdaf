#include "ui/color_from_hex.h"

#include <charconv>
#include <cstdint>

namespace lunevra {
namespace {

bool isLetterOrDigit(char c) {
  return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && !isLetterOrDigit(text.front())) text.remove_prefix(1);
  while (!text.empty() && !isLetterOrDigit(text.back())) text.remove_suffix(1);
  return text;
}

double component(std::uint64_t value) {
  return static_cast<double>(value & 0xff) / 255.0;
}

}  // namespace

Color colorFromHex(std::string_view hex) {
  const auto digits = trimmed(hex);
  std::uint64_t value = 0;  // stays 0 where no number can be read
  std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
  switch (digits.size()) {
    case 3:
      return {component((value >> 8 & 0xf) * 17), component((value >> 4 & 0xf) * 17),
              component((value & 0xf) * 17), 1.0};
    case 6:
      return {component(value >> 16), component(value >> 8), component(value), 1.0};
    case 8:
      return {component(value >> 16), component(value >> 8), component(value),
              component(value >> 24)};
    default:
      return {1.0, 1.0, 0.0, 1.0};
  }
}

}  // namespace lunevra
