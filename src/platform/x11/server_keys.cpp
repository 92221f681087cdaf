#include "platform/x11/server_keys.h"

#include <algorithm>

#define explicit explicit_  // the header is C's and has a member of that name
#include <xcb/xkb.h>
#undef explicit

#include "platform/x11/x_atom.h"
#include "platform/x11/x_reply.h"

namespace lunevra {
namespace {

constexpr std::size_t actionSize = sizeof(xcb_xkb_action_t);
constexpr auto keyboard = static_cast<xcb_xkb_device_spec_t>(XCB_XKB_ID_USE_CORE_KBD);
constexpr std::uint32_t longestProperty = 65536;  // in units of four bytes

/// The last one is what the server calls private: the ends of grabs and changes of video mode.
bool isServersOwn(std::uint8_t action) {
  constexpr std::uint8_t serverPrivate = 0x86;
  return action == XCB_XKB_SA_TYPE_TERMINATE || action == XCB_XKB_SA_TYPE_SWITCH_SCREEN ||
         action == serverPrivate;
}

}  // namespace

ServerKeys::ServerKeys(xcb_connection_t* connection, xcb_window_t root)
    : connection_(connection), root_(root) {
  const auto* const extension = xcb_get_extension_data(connection, &xcb_xkb_id);
  if (extension == nullptr || extension->present == 0) return;
  const XReply<xcb_xkb_use_extension_reply_t> use(xcb_xkb_use_extension_reply(
      connection, xcb_xkb_use_extension(connection, XCB_XKB_MAJOR_VERSION, XCB_XKB_MINOR_VERSION),
      nullptr));
  if (!use || use->supported == 0) return;
  firstEvent_ = extension->first_event;
  property_ = atomNamed(connection, "_LUNEVRA_SERVER_KEYS");
  constexpr std::uint16_t events =
      XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
  xcb_xkb_select_events(connection, keyboard, events, 0, events, XCB_XKB_MAP_PART_KEY_ACTIONS,
                        XCB_XKB_MAP_PART_KEY_ACTIONS, nullptr);
}

bool ServerKeys::isNews(const xcb_generic_event_t& event) const {
  return firstEvent_ != 0 && event.response_type == firstEvent_;
}

void ServerKeys::disable() {
  if (property_ == XCB_ATOM_NONE) return;
  auto keys = keysOfServer();
  if (keys.empty()) return;
  auto kept = takenOut();
  for (const auto& key : keys)
    if (std::none_of(kept.begin(), kept.end(), [&](const Key& k) { return k.code == key.code; }))
      kept.push_back(key);
  keepTakenOut(kept);  // before anything is out, in case this process ends in between
  for (auto& key : keys) {
    for (std::size_t at = 0; at < key.actions.size(); at += actionSize)
      if (isServersOwn(key.actions[at]))
        std::fill_n(key.actions.begin() + std::ptrdiff_t(at), actionSize, std::uint8_t{0});
    setActions(key);
  }
  xcb_flush(connection_);
}

void ServerKeys::restore() {
  if (property_ == XCB_ATOM_NONE) return;
  const auto keys = takenOut();
  if (keys.empty()) return;
  static_cast<void>(keysOfServer());  // the range of keycodes
  for (const auto& key : keys) setActions(key);
  xcb_delete_property(connection_, root_, property_);
  xcb_flush(connection_);
}

/// Those that have an action of the server's own.
ServerKeys::Keys ServerKeys::keysOfServer() {
  const auto cookie = xcb_xkb_get_map(connection_, keyboard, XCB_XKB_MAP_PART_KEY_ACTIONS, 0, 0, 0,
                                      0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
  const XReply<xcb_xkb_get_map_reply_t> reply(xcb_xkb_get_map_reply(connection_, cookie, nullptr));
  if (!reply) return {};
  lowestKeycode_ = reply->minKeyCode;
  highestKeycode_ = reply->maxKeyCode;
  xcb_xkb_get_map_map_t map;
  xcb_xkb_get_map_map_unpack(xcb_xkb_get_map_map(reply.get()), reply->nTypes, reply->nKeySyms,
                             reply->nKeyActions, reply->totalActions, reply->totalKeyBehaviors,
                             reply->virtualMods, reply->totalKeyExplicit, reply->totalModMapKeys,
                             reply->totalVModMapKeys, reply->present, &map);
  const auto* actions = reinterpret_cast<const std::uint8_t*>(map.acts_rtrn_acts);
  Keys keys;
  for (std::size_t at = 0; at < reply->nKeyActions; ++at) {
    const auto size = map.acts_rtrn_count[at] * actionSize;
    Key key{static_cast<std::uint8_t>(reply->firstKeyAction + at), {actions, actions + size}};
    actions += size;
    for (std::size_t first = 0; first < size; first += actionSize) {
      if (!isServersOwn(key.actions[first])) continue;
      keys.push_back(std::move(key));
      break;
    }
  }
  return keys;
}

void ServerKeys::setActions(const Key& key) {
  const auto count = key.actions.size() / actionSize;
  // The number of actions, padded to four bytes, then the actions.
  std::vector<std::uint8_t> values{static_cast<std::uint8_t>(count), 0, 0, 0};
  values.insert(values.end(), key.actions.begin(), key.actions.end());
  xcb_xkb_set_map(connection_, keyboard, XCB_XKB_MAP_PART_KEY_ACTIONS, 0, lowestKeycode_,
                  highestKeycode_, 0, 0, 0, 0, 0, key.code, 1, static_cast<std::uint16_t>(count), 0,
                  0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, values.data());
}

/// The property is a row of entries: keycode, number of actions, actions.
ServerKeys::Keys ServerKeys::takenOut() const {
  const auto cookie =
      xcb_get_property(connection_, 0, root_, property_, XCB_ATOM_CARDINAL, 0, longestProperty);
  const XReply<xcb_get_property_reply_t> reply(
      xcb_get_property_reply(connection_, cookie, nullptr));
  if (!reply || reply->format != 8) return {};
  const auto* bytes = static_cast<const std::uint8_t*>(xcb_get_property_value(reply.get()));
  const auto* const end = bytes + xcb_get_property_value_length(reply.get());
  Keys keys;
  while (end - bytes >= 2) {
    const auto size = static_cast<std::ptrdiff_t>(bytes[1] * actionSize);
    if (end - bytes < 2 + size) break;
    keys.push_back({bytes[0], {bytes + 2, bytes + 2 + size}});
    bytes += 2 + size;
  }
  return keys;
}

void ServerKeys::keepTakenOut(const Keys& keys) {
  std::vector<std::uint8_t> bytes;
  for (const auto& key : keys) {
    bytes.push_back(key.code);
    bytes.push_back(static_cast<std::uint8_t>(key.actions.size() / actionSize));
    bytes.insert(bytes.end(), key.actions.begin(), key.actions.end());
  }
  xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, root_, property_, XCB_ATOM_CARDINAL, 8,
                      static_cast<std::uint32_t>(bytes.size()), bytes.data());
}

}  // namespace lunevra
