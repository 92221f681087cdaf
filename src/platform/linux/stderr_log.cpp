#include "platform/linux/stderr_log.h"

#include <algorithm>
#include <array>
#include <unistd.h>

namespace lunevra {
namespace {

/// A write of up to PIPE_BUF bytes reaches a pipe in one piece.
constexpr std::size_t longestLine = 4096;

bool isControl(char character) {
  const auto byte = static_cast<unsigned char>(character);
  return byte < 0x20 || byte == 0x7F;
}

}  // namespace

void StderrLog::line(std::string_view text) {
  std::array<char, longestLine> buffer;
  auto end = std::transform(text.begin(), text.begin() + std::min(text.size(), longestLine - 1),
                            buffer.begin(),
                            [](char character) { return isControl(character) ? ' ' : character; });
  *end++ = '\n';
  const auto size = static_cast<std::size_t>(end - buffer.begin());
  [[maybe_unused]] const auto written = ::write(STDERR_FILENO, buffer.data(), size);
}

}  // namespace lunevra
