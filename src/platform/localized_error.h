#pragma once

#include <stdexcept>
#include <string>

namespace lunevra {

/// A failure whose text may be shown to the person as it stands.
class LocalizedError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
  [[nodiscard]] std::string localizedDescription() const { return what(); }
};

}  // namespace lunevra
