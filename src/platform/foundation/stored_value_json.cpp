#include "platform/foundation/stored_value_json.h"

#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>
#include <type_traits>

namespace lunevra {
namespace {

using nlohmann::json;

template <class T>
constexpr std::string_view typeName() {
  if constexpr (std::is_same_v<T, std::int64_t>) return "integer";
  if constexpr (std::is_same_v<T, bool>) return "flag";
  if constexpr (std::is_same_v<T, double>) return "double";
  if constexpr (std::is_same_v<T, Instant>) return "date";
  if constexpr (std::is_same_v<T, std::string>) return "text";
  if constexpr (std::is_same_v<T, std::vector<std::string>>) return "texts";
}

std::optional<StoredValue> decodeNumber(const json& value, std::string_view type) {
  const bool fitsInteger =
      value.is_number_integer() &&
      !(value.is_number_unsigned() &&
        value.get<std::uint64_t>() >
            static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()));
  if (type == typeName<std::int64_t>())
    return fitsInteger ? std::optional<StoredValue>(value.get<std::int64_t>()) : std::nullopt;
  const auto number = value.get<double>();
  if (!std::isfinite(number)) return std::nullopt;
  if (type == typeName<double>()) return number;
  if (type == typeName<Instant>()) return Instant{number};
  return std::nullopt;
}

std::string dump(const json& value) {
  return value.dump(-1, ' ', false, json::error_handler_t::replace);
}

std::optional<std::vector<std::string>> textsOf(const json& value) {
  if (!value.is_array()) return std::nullopt;
  std::vector<std::string> texts;
  for (const auto& element : value) {
    if (!element.is_string()) return std::nullopt;
    texts.push_back(element.get<std::string>());
  }
  return texts;
}

}  // namespace

std::string encodeStoredValue(const StoredValue& value) {
  const auto object = std::visit(
      [](const auto& held) -> json {
        using Held = std::decay_t<decltype(held)>;
        if constexpr (std::is_same_v<Held, Instant>)
          return {{"type", typeName<Held>()}, {"value", held.secondsSince1970}};
        else
          return {{"type", typeName<Held>()}, {"value", held}};
      },
      value);
  return dump(object);
}

std::optional<StoredValue> decodeStoredValue(std::string_view text) {
  const auto object = json::parse(text, nullptr, false);
  if (!object.is_object()) return std::nullopt;
  const auto type = object.find("type");
  const auto value = object.find("value");
  if (type == object.end() || value == object.end() || !type->is_string()) return std::nullopt;
  const auto name = type->get<std::string>();
  if (value->is_number()) return decodeNumber(*value, name);
  if (value->is_boolean() && name == typeName<bool>()) return value->get<bool>();
  if (value->is_string() && name == typeName<std::string>()) return value->get<std::string>();
  if (name == typeName<std::vector<std::string>>()) return textsOf(*value);
  return std::nullopt;
}

std::string encodeTexts(const std::vector<std::string>& texts) {
  return dump(json(texts));
}

std::optional<std::vector<std::string>> decodeTexts(std::string_view text) {
  return textsOf(json::parse(text, nullptr, false));
}

}  // namespace lunevra
