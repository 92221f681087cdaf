#include "platform/foundation/uuid.h"

#include <uuid/uuid.h>

namespace lunevra {

std::string randomUuidText(std::array<std::uint8_t, 16> bytes) {
  bytes[6] = static_cast<std::uint8_t>((bytes[6] & 0x0F) | 0x40);
  bytes[8] = static_cast<std::uint8_t>((bytes[8] & 0x3F) | 0x80);
  std::array<char, UUID_STR_LEN> text{};
  uuid_unparse_upper(bytes.data(), text.data());
  return text.data();
}

}  // namespace lunevra
