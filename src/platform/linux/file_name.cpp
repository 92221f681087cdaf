#include "platform/linux/file_name.h"

namespace lunevra {
namespace {

bool isSafe(char character) {
  return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
         (character >= '0' && character <= '9') || character == '-' || character == '_' ||
         character == '.';
}

int hexDigit(char character) {
  if (character >= '0' && character <= '9') return character - '0';
  if (character >= 'A' && character <= 'F') return character - 'A' + 10;
  return -1;
}

}  // namespace

std::string escapedFileName(std::string_view text) {
  std::string name;
  for (const char character : text) {
    if (isSafe(character) && !(character == '.' && name.empty())) {
      name += character;
    } else {
      constexpr std::string_view digits = "0123456789ABCDEF";
      const auto byte = static_cast<unsigned char>(character);
      name += {'%', digits[byte >> 4U], digits[byte & 0xFU]};
    }
  }
  return name;
}

std::optional<std::string> unescapedFileName(std::string_view name) {
  std::string text;
  for (std::size_t at = 0; at < name.size(); ++at) {
    if (name[at] != '%') {
      text += name[at];
      continue;
    }
    if (at + 2 >= name.size()) return std::nullopt;
    const int high = hexDigit(name[at + 1]);
    const int low = hexDigit(name[at + 2]);
    if (high < 0 || low < 0) return std::nullopt;
    text += static_cast<char>(high * 16 + low);
    at += 2;
  }
  return escapedFileName(text) == name ? std::optional(text) : std::nullopt;
}

}  // namespace lunevra
