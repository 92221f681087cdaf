#pragma once

#include <functional>
#include <string_view>

#include "platform/registration.h"

namespace lunevra {

/// Named notifications within the process, delivered synchronously to the observers present when
/// `post` is called, in the order of their registration. Main thread only.
class NotificationCenter {
 public:
  virtual ~NotificationCenter() = default;

  virtual void post(std::string_view name) = 0;
  [[nodiscard]] virtual Registration addObserver(std::string_view name,
                                                 std::function<void()> block) = 0;
};

}  // namespace lunevra
