#include "platform/foundation/key_payload_json.h"

#include <limits>
#include <nlohmann/json.hpp>

namespace lunevra {
namespace {

using nlohmann::json;

/// Picks the three members out of a text as it goes by, so that a file from anybody costs no more
/// than its own length, whatever is in it.
class PayloadReader : public nlohmann::json_sax<json> {
 public:
  [[nodiscard]] std::optional<KeyPayloadFields> fields() && {
    if (!version_ || !identifier_ || !secret_) return std::nullopt;
    return KeyPayloadFields{*version_, std::move(*identifier_), std::move(*secret_)};
  }

  bool key(string_t& name) override {
    if (depth_ == 1) member_ = name;
    return true;
  }
  bool number_integer(number_integer_t value) override { return keep(value, std::nullopt); }
  bool number_unsigned(number_unsigned_t value) override {
    constexpr auto greatest = std::numeric_limits<std::int64_t>::max();
    return value <= static_cast<number_unsigned_t>(greatest)
               ? keep(static_cast<std::int64_t>(value), std::nullopt)
               : keepNothing();
  }
  bool string(string_t& value) override { return keep(std::nullopt, std::move(value)); }
  bool null() override { return keepNothing(); }
  bool boolean(bool /*value*/) override { return keepNothing(); }
  bool number_float(number_float_t /*value*/, const string_t& /*text*/) override {
    return keepNothing();
  }
  bool binary(binary_t& /*value*/) override { return keepNothing(); }

  bool start_object(std::size_t /*count*/) override {
    if (depth_ > 0) keepNothing();
    ++depth_;
    return true;
  }
  bool start_array(std::size_t /*count*/) override {
    const bool isInObject = keepNothing();
    ++depth_;
    return isInObject;
  }
  bool end_object() override { return leave(); }
  bool end_array() override { return leave(); }
  bool parse_error(std::size_t /*position*/, const std::string& /*token*/,
                   const json::exception& /*error*/) override {
    return false;
  }

 private:
  /// The value of the member that is being read. Reading ends where there can be none.
  bool keep(std::optional<std::int64_t> number, std::optional<std::string> text) {
    if (depth_ == 1) {
      if (member_ == "version") version_ = number;
      if (member_ == "identifier") identifier_ = std::move(text);
      if (member_ == "secret") secret_ = std::move(text);
    }
    return depth_ > 0;
  }
  bool keepNothing() { return keep(std::nullopt, std::nullopt); }
  bool leave() {
    --depth_;
    return true;
  }

  std::size_t depth_ = 0;
  std::string member_;
  std::optional<std::int64_t> version_;
  std::optional<std::string> identifier_;
  std::optional<std::string> secret_;
};

}  // namespace

std::string encodeKeyPayload(const KeyPayloadFields& fields) {
  nlohmann::ordered_json object;
  object["version"] = fields.version;
  object["identifier"] = fields.identifier;
  object["secret"] = fields.secret;
  return object.dump();
}

std::optional<KeyPayloadFields> decodeKeyPayload(std::string_view text) {
  PayloadReader reader;
  return json::sax_parse(text, &reader) ? std::move(reader).fields() : std::nullopt;
}

}  // namespace lunevra
