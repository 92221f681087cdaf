#include "host/x_probe.h"

#include <algorithm>
#include <cstring>
#include <span>
#include <type_traits>

#include "platform/desktop/x_reply.h"

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
  for (const auto& place : visibleWindows())
    if (place.width > 16384) return place.window;
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

}  // namespace lunevra::host_test
