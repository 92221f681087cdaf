#include "host/x_probe.h"

#include <algorithm>
#include <cstring>
#include <span>
#include <type_traits>

#define explicit explicit_  // the header is C's and has a member of that name
#include <xcb/xkb.h>
#undef explicit
#include <xcb/xtest.h>

#include "platform/x11/x_reply.h"

namespace lunevra::host_test {
namespace {

constexpr std::uint32_t brightColor = 0xFF00FF;

bool isDark(std::uint32_t pixel) {
  return (pixel >> 16 & 0xFF) + (pixel >> 8 & 0xFF) + (pixel & 0xFF) < 3 * 0x50;
}

template <class Wait, class Cookie>
auto answer(Wait wait, xcb_connection_t* connection, Cookie cookie) {
  auto* const reply = wait(connection, cookie, nullptr);
  return XReply<std::remove_pointer_t<decltype(reply)>>(reply);
}

}  // namespace

XProbe::XProbe(const std::string& display)
    : connection_(xcb_connect(display.c_str(), nullptr)),
      root_(xcb_setup_roots_iterator(xcb_get_setup(connection_.get())).data->root) {
  xcb_change_window_attributes(connection_.get(), root_, XCB_CW_BACK_PIXEL, &brightColor);
  xcb_clear_area(connection_.get(), 0, root_, 0, 0, 0, 0);
}

bool XProbe::isCovered() const {
  auto* const x = connection_.get();
  const auto size = answer(xcb_get_geometry_reply, x, xcb_get_geometry(x, root_));
  const auto image = answer(
      xcb_get_image_reply, x,
      xcb_get_image(x, XCB_IMAGE_FORMAT_Z_PIXMAP, root_, 0, 0, size->width, size->height, ~0U));
  std::vector<std::uint32_t> pixels(std::size_t{size->width} * size->height);
  std::memcpy(pixels.data(), xcb_get_image_data(image.get()), pixels.size() * sizeof pixels[0]);
  const auto dark = std::count_if(pixels.begin(), pixels.end(), isDark);
  return static_cast<std::size_t>(dark) > pixels.size() / 10 * 9 &&  // the rest is text
         std::none_of(pixels.begin(), pixels.end(),
                      [](auto pixel) { return (pixel & 0xFFFFFF) == brightColor; });
}

bool XProbe::isBright(int x, int y) const {
  const auto image =
      answer(xcb_get_image_reply, connection_.get(),
             xcb_get_image(connection_.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, root_,
                           static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), 1, 1, ~0U));
  std::uint32_t pixel = 0;
  if (image) std::memcpy(&pixel, xcb_get_image_data(image.get()), sizeof pixel);
  return (pixel & 0xFFFFFF) == brightColor;
}

std::vector<XProbe::Place> XProbe::visibleWindows() const {
  auto* const x = connection_.get();
  const auto tree = answer(xcb_query_tree_reply, x, xcb_query_tree(x, root_));
  std::vector<Place> places;
  for (const auto window : std::span(xcb_query_tree_children(tree.get()), tree->children_len)) {
    const auto place = answer(xcb_get_geometry_reply, x, xcb_get_geometry(x, window));
    const auto state =
        answer(xcb_get_window_attributes_reply, x, xcb_get_window_attributes(x, window));
    if (place && state && state->map_state == XCB_MAP_STATE_VIEWABLE)
      places.push_back({window, place->x, place->y, place->width, place->height});
  }
  return places;
}

bool XProbe::hasWindowAt(int x, int y, int width, int height) const {
  const auto places = visibleWindows();
  return std::any_of(places.begin(), places.end(), [&](const Place& place) {
    return place.x == x && place.y == y && place.width == width && place.height == height;
  });
}

xcb_window_t XProbe::floor() const {
  const auto screen =
      answer(xcb_get_geometry_reply, connection_.get(), xcb_get_geometry(connection_.get(), root_));
  for (const auto& place : visibleWindows())
    if (place.width > screen->width) return place.window;
  return XCB_WINDOW_NONE;
}

xcb_window_t XProbe::openWindow(bool isOverrideRedirect) const {
  const auto window = xcb_generate_id(connection_.get());
  const std::uint32_t values[] = {brightColor, isOverrideRedirect};
  xcb_create_window(connection_.get(), XCB_COPY_FROM_PARENT, window, root_, 0, 0, 8192, 4096, 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                    XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT, values);
  xcb_map_window(connection_.get(), window);
  xcb_flush(connection_.get());
  return window;
}

void XProbe::raise(xcb_window_t window) const {
  const std::uint32_t mode[] = {XCB_STACK_MODE_ABOVE};
  xcb_configure_window(connection_.get(), window, XCB_CONFIG_WINDOW_STACK_MODE, mode);
  xcb_flush(connection_.get());
}

void XProbe::destroy(xcb_window_t window) const {
  xcb_destroy_window(connection_.get(), window);
  xcb_flush(connection_.get());
}

void XProbe::focusWindow() const {
  auto* const x = connection_.get();
  const auto window = openWindow(true);
  const std::uint32_t events[] = {XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_BUTTON_PRESS};
  xcb_change_window_attributes(x, window, XCB_CW_EVENT_MASK, events);
  xcb_set_input_focus(x, XCB_INPUT_FOCUS_POINTER_ROOT, window, XCB_CURRENT_TIME);
  xcb_flush(x);
}

void XProbe::typeAndClick() const {
  auto* const x = connection_.get();
  constexpr std::uint8_t letter = 38;
  for (const auto& [event, detail] : {std::pair<std::uint8_t, std::uint8_t>{XCB_KEY_PRESS, letter},
                                      {XCB_KEY_RELEASE, letter},
                                      {XCB_BUTTON_PRESS, 1},
                                      {XCB_BUTTON_RELEASE, 1}})
    xcb_test_fake_input(x, event, detail, XCB_CURRENT_TIME, root_, 0, 0, 0);
  xcb_flush(x);
}

void XProbe::clickAt(int x, int y) const {
  auto* const server = connection_.get();
  xcb_test_fake_input(server, XCB_MOTION_NOTIFY, 0, XCB_CURRENT_TIME, root_,
                      static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), 0);
  for (const auto event : {std::uint8_t{XCB_BUTTON_PRESS}, std::uint8_t{XCB_BUTTON_RELEASE}})
    xcb_test_fake_input(server, event, 1, XCB_CURRENT_TIME, root_, 0, 0, 0);
  xcb_flush(server);
}

int XProbe::inputReceived() const {
  auto* const x = connection_.get();
  answer(xcb_get_input_focus_reply, x, xcb_get_input_focus(x));  // whatever was sent is here now
  int count = 0;
  while (const XReply<xcb_generic_event_t> event{xcb_poll_for_event(x)})
    if (event->response_type == XCB_KEY_PRESS || event->response_type == XCB_BUTTON_PRESS) ++count;
  return count;
}

int XProbe::grabKeyboard() const {
  auto* const x = connection_.get();
  return answer(xcb_grab_keyboard_reply, x,
                xcb_grab_keyboard(x, 0, root_, XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC,
                                  XCB_GRAB_MODE_ASYNC))
      ->status;
}

int XProbe::grabPointer() const {
  auto* const x = connection_.get();
  return answer(xcb_grab_pointer_reply, x,
                xcb_grab_pointer(x, 0, root_, 0, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC,
                                 XCB_WINDOW_NONE, XCB_CURSOR_NONE, XCB_CURRENT_TIME))
      ->status;
}

bool XProbe::takesInput() const {
  return grabKeyboard() == XCB_GRAB_STATUS_SUCCESS && grabPointer() == XCB_GRAB_STATUS_SUCCESS;
}

void XProbe::release() const {
  xcb_ungrab_keyboard(connection_.get(), XCB_CURRENT_TIME);
  xcb_ungrab_pointer(connection_.get(), XCB_CURRENT_TIME);
  xcb_flush(connection_.get());
}

bool XProbe::isInputHeld() const {
  const bool isHeld = grabKeyboard() == XCB_GRAB_STATUS_ALREADY_GRABBED &&
                      grabPointer() == XCB_GRAB_STATUS_ALREADY_GRABBED;
  if (!isHeld) release();
  return isHeld;
}

int XProbe::serverKeyActions() const {
  auto* const x = connection_.get();
  constexpr auto keyboard = XCB_XKB_ID_USE_CORE_KBD;
  answer(xcb_xkb_use_extension_reply, x, xcb_xkb_use_extension(x, 1, 0));
  const auto reply = answer(xcb_xkb_get_map_reply, x,
                            xcb_xkb_get_map(x, keyboard, XCB_XKB_MAP_PART_KEY_ACTIONS, 0, 0, 0, 0,
                                            0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0));
  // A count for each key, padded to four bytes, then the actions of eight bytes, their type first.
  const auto* bytes = static_cast<const std::uint8_t*>(xcb_xkb_get_map_map(reply.get()));
  const auto* actions = bytes + (reply->nKeyActions + 3) / 4 * 4;
  int count = 0;
  for (int i = 0; i < reply->totalActions; ++i) {
    const auto type = actions[i * 8];
    if (type == XCB_XKB_SA_TYPE_TERMINATE || type == XCB_XKB_SA_TYPE_SWITCH_SCREEN || type == 0x86)
      ++count;
  }
  return count;
}

xcb_atom_t XProbe::atom(const std::string& name) const {
  return answer(xcb_intern_atom_reply, connection_.get(),
                xcb_intern_atom(connection_.get(), 0, static_cast<std::uint16_t>(name.size()),
                                name.c_str()))
      ->atom;
}

bool XProbe::isManaged() const {
  const auto check =
      answer(xcb_get_property_reply, connection_.get(),
             xcb_get_property(connection_.get(), 0, root_, atom("_NET_SUPPORTING_WM_CHECK"),
                              XCB_ATOM_WINDOW, 0, 1));
  return check && check->value_len == 1;
}

bool XProbe::isComposited() const {
  return answer(xcb_get_selection_owner_reply, connection_.get(),
                xcb_get_selection_owner(connection_.get(), atom("_NET_WM_CM_S0")))
             ->owner != XCB_WINDOW_NONE;
}

void XProbe::askWindowManager(xcb_window_t window, const std::string& message,
                              std::array<std::uint32_t, 2> data) const {
  xcb_client_message_event_t event{};
  event.response_type = XCB_CLIENT_MESSAGE;
  event.format = 32;
  event.window = window;
  event.type = atom(message);
  std::copy(data.begin(), data.end(), event.data.data32);
  xcb_send_event(connection_.get(), 0, root_,
                 XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                 reinterpret_cast<const char*>(&event));
  xcb_flush(connection_.get());
}

void XProbe::makeFullscreen(xcb_window_t window) const {
  askWindowManager(window, "_NET_WM_STATE", {1, atom("_NET_WM_STATE_FULLSCREEN")});
}

void XProbe::switchDesktop(std::uint32_t number) const {
  if (isManaged()) return askWindowManager(root_, "_NET_CURRENT_DESKTOP", {number, 0});
  xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, root_, atom("_NET_CURRENT_DESKTOP"),
                      XCB_ATOM_CARDINAL, 32, 1, &number);
  xcb_flush(connection_.get());
}

}  // namespace lunevra::host_test
