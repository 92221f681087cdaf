#pragma once

#include <string_view>

namespace lunevra {

/// The system log: single unstructured lines, without level or category. Any thread.
class Log {
 public:
  virtual ~Log() = default;
  virtual void line(std::string_view text) = 0;
};

}  // namespace lunevra
