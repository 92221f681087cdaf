#include "platform/foundation/base64.h"

#include <algorithm>
#include <limits>
#include <openssl/evp.h>

namespace lunevra {
namespace {

constexpr std::string_view alphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// OpenSSL's decoder trims white space and line ends that the strict form does not allow.
bool isStrict(std::string_view text) {
  if (text.size() % 4 != 0 || text.size() > std::numeric_limits<int>::max()) return false;
  const auto padding = std::min(text.find('='), text.size());
  return text.size() - padding <= 2 &&
         text.substr(0, padding).find_first_not_of(alphabet) == std::string_view::npos &&
         text.substr(padding).find_first_not_of('=') == std::string_view::npos;
}

}  // namespace

std::string base64Encode(std::span<const std::uint8_t> bytes) {
  std::vector<unsigned char> encoded((bytes.size() + 2) / 3 * 4 + 1);
  const int length = EVP_EncodeBlock(encoded.data(), bytes.data(), static_cast<int>(bytes.size()));
  return {encoded.begin(), encoded.begin() + length};
}

std::optional<std::vector<std::uint8_t>> base64Decode(std::string_view text) {
  if (!isStrict(text)) return std::nullopt;
  if (text.empty()) return std::vector<std::uint8_t>{};
  const std::vector<unsigned char> encoded(text.begin(), text.end());
  std::vector<std::uint8_t> bytes(text.size() / 4 * 3);
  const int length =
      EVP_DecodeBlock(bytes.data(), encoded.data(), static_cast<int>(encoded.size()));
  if (length < 0) return std::nullopt;
  const auto padding = static_cast<std::size_t>(std::count(text.begin(), text.end(), '='));
  bytes.resize(static_cast<std::size_t>(length) - padding);
  return bytes;
}

}  // namespace lunevra
