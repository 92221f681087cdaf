#pragma once

#include <cstdint>
#include <vector>
#include <xcb/xcb.h>

namespace lunevra {

/// The keys that the X server answers itself, past every grab: switching virtual terminals, ending
/// the server, breaking grabs. They can be taken out of the keymap and put back. What was taken out
/// is kept on the root window, so that a successor of a killed process can put it back. One thread.
class ServerKeys {
 public:
  /// The connection outlives it. A server without the keyboard extension has nothing to take out.
  ServerKeys(xcb_connection_t* connection, xcb_window_t root);

  /// Also after each `isNews`: a keyboard that is plugged in brings a keymap of its own.
  void disable();
  void restore();
  [[nodiscard]] bool isNews(const xcb_generic_event_t& event) const;

 private:
  /// A key's actions as the server keeps them, eight bytes each.
  struct Key {
    std::uint8_t code;
    std::vector<std::uint8_t> actions;
  };
  using Keys = std::vector<Key>;

  [[nodiscard]] Keys keysOfServer();
  void setActions(const Key& key);
  [[nodiscard]] Keys takenOut() const;
  void keepTakenOut(const Keys& keys);

  xcb_connection_t* connection_;
  xcb_window_t root_;
  xcb_atom_t property_ = XCB_ATOM_NONE;
  std::uint8_t firstEvent_ = 0;
  std::uint8_t lowestKeycode_ = 0;
  std::uint8_t highestKeycode_ = 0;
};

}  // namespace lunevra
