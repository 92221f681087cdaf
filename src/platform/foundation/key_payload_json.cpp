#include "platform/foundation/key_payload_json.h"

#include <limits>
#include <nlohmann/json.hpp>

namespace lunevra {
namespace {

std::optional<std::int64_t> wholeNumber(const nlohmann::json& value) {
  if (value.is_number_unsigned()) {
    const auto number = value.get<std::uint64_t>();
    if (number > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()))
      return std::nullopt;
    return static_cast<std::int64_t>(number);
  }
  if (value.is_number_integer()) return value.get<std::int64_t>();
  return std::nullopt;
}

}  // namespace

std::string encodeKeyPayload(const KeyPayloadFields& fields) {
  nlohmann::ordered_json object;
  object["version"] = fields.version;
  object["identifier"] = fields.identifier;
  object["secret"] = fields.secret;
  return object.dump();
}

std::optional<KeyPayloadFields> decodeKeyPayload(std::string_view json) {
  const auto object = nlohmann::json::parse(json, nullptr, false);
  if (!object.is_object()) return std::nullopt;
  const auto version = object.find("version");
  const auto identifier = object.find("identifier");
  const auto secret = object.find("secret");
  const auto end = object.end();
  if (version == end || identifier == end || secret == end) return std::nullopt;
  const auto number = wholeNumber(*version);
  if (!number || !identifier->is_string() || !secret->is_string()) return std::nullopt;
  return KeyPayloadFields{*number, identifier->get<std::string>(), secret->get<std::string>()};
}

}  // namespace lunevra
