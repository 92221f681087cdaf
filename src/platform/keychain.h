#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lunevra {

using Bytes = std::vector<std::uint8_t>;

/// Generic-password items, one for each pair of service and account. Never prompts and never waits
/// for a service that does not answer: a keychain out of reach holds no items. Main thread only.
class Keychain {
 public:
  virtual ~Keychain() = default;

  [[nodiscard]] virtual std::optional<Bytes> find(std::string_view service,
                                                  std::string_view account) const = 0;
  /// Both answer a status; 0 is success.
  virtual std::int32_t remove(std::string_view service, std::string_view account) = 0;
  virtual std::int32_t add(std::string_view service, std::string_view account,
                           const Bytes& value) = 0;
};

}  // namespace lunevra
