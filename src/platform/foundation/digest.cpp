#include "platform/foundation/digest.h"

#include <openssl/sha.h>

namespace lunevra {

std::vector<std::uint8_t> sha256(std::span<const std::uint8_t> bytes) {
  std::vector<std::uint8_t> digest(SHA256_DIGEST_LENGTH);
  SHA256(bytes.data(), bytes.size(), digest.data());
  return digest;
}

}  // namespace lunevra
