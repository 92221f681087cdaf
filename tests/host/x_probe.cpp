#include "host/x_probe.h"

#include <algorithm>
#include <cstring>
#include <span>

#include "platform/desktop/x_reply.h"

namespace lunevra::host_test {

XProbe::XProbe(const std::string& display)
    : connection_(xcb_connect(display.c_str(), nullptr)),
      screen_(xcb_setup_roots_iterator(xcb_get_setup(connection_.get())).data) {
  const std::uint32_t background[] = {brightColor};
  xcb_change_window_attributes(connection_.get(), screen_->root, XCB_CW_BACK_PIXEL, background);
  xcb_clear_area(connection_.get(), 0, screen_->root, 0, 0, 0, 0);
}

std::vector<std::uint32_t> XProbe::pixels() const {
  auto* const connection = connection_.get();
  const XReply<xcb_get_geometry_reply_t> size(
      xcb_get_geometry_reply(connection, xcb_get_geometry(connection, screen_->root), nullptr));
  const XReply<xcb_get_image_reply_t> image(
      xcb_get_image_reply(connection,
                          xcb_get_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, screen_->root, 0, 0,
                                        size->width, size->height, ~0U),
                          nullptr));
  std::vector<std::uint32_t> pixels(std::size_t{size->width} * size->height);
  std::memcpy(pixels.data(), xcb_get_image_data(image.get()), pixels.size() * sizeof pixels[0]);
  for (auto& pixel : pixels) pixel &= 0xFFFFFF;
  return pixels;
}

bool XProbe::showsDesktop() const {
  const auto all = pixels();
  return std::find(all.begin(), all.end(), brightColor) != all.end();
}

bool XProbe::isCovered() const {
  const auto all = pixels();
  const auto isDark = [](std::uint32_t pixel) {
    return (pixel >> 16) + (pixel >> 8 & 0xFF) + (pixel & 0xFF) < 3 * 0x50;
  };
  const auto dark = std::count_if(all.begin(), all.end(), isDark);
  return std::find(all.begin(), all.end(), brightColor) == all.end() &&
         static_cast<std::size_t>(dark) > all.size() / 10 * 9;  // the rest is text
}

std::vector<XProbe::Place> XProbe::visibleWindows() const {
  auto* const connection = connection_.get();
  const XReply<xcb_query_tree_reply_t> tree(
      xcb_query_tree_reply(connection, xcb_query_tree(connection, screen_->root), nullptr));
  std::vector<Place> places;
  for (const auto window : std::span(xcb_query_tree_children(tree.get()), tree->children_len)) {
    const XReply<xcb_get_geometry_reply_t> place(
        xcb_get_geometry_reply(connection, xcb_get_geometry(connection, window), nullptr));
    const XReply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
        connection, xcb_get_window_attributes(connection, window), nullptr));
    if (place && attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE)
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
  xcb_create_window(connection_.get(), XCB_COPY_FROM_PARENT, window, screen_->root, 0, 0, 8192,
                    4096, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
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
  const XReply<xcb_grab_keyboard_reply_t> reply(xcb_grab_keyboard_reply(
      connection_.get(),
      xcb_grab_keyboard(connection_.get(), 0, screen_->root, XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC,
                        XCB_GRAB_MODE_ASYNC),
      nullptr));
  return reply->status;
}

int XProbe::grabPointer() const {
  const XReply<xcb_grab_pointer_reply_t> reply(xcb_grab_pointer_reply(
      connection_.get(),
      xcb_grab_pointer(connection_.get(), 0, screen_->root, 0, XCB_GRAB_MODE_ASYNC,
                       XCB_GRAB_MODE_ASYNC, XCB_WINDOW_NONE, XCB_CURSOR_NONE, XCB_CURRENT_TIME),
      nullptr));
  return reply->status;
}

bool XProbe::takesInput() const {
  return grabKeyboard() == XCB_GRAB_STATUS_SUCCESS && grabPointer() == XCB_GRAB_STATUS_SUCCESS;
}

bool XProbe::isInputHeld() const {
  const bool isHeld = grabKeyboard() == XCB_GRAB_STATUS_ALREADY_GRABBED &&
                      grabPointer() == XCB_GRAB_STATUS_ALREADY_GRABBED;
  if (!isHeld) release();
  return isHeld;
}

void XProbe::release() const {
  xcb_ungrab_keyboard(connection_.get(), XCB_CURRENT_TIME);
  xcb_ungrab_pointer(connection_.get(), XCB_CURRENT_TIME);
  xcb_flush(connection_.get());
}

}  // namespace lunevra::host_test
