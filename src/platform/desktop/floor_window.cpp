#include "platform/desktop/floor_window.h"

#include <cstdlib>
#include <string>

#include "platform/desktop/x_atom.h"
#include "platform/desktop/x_reply.h"
#include "platform/localized_error.h"

namespace lunevra {
namespace {

// As large as coordinates of 16 bits allow, so that a root that grows shows nothing new.
constexpr std::int32_t farOrigin = -64;
constexpr std::uint32_t farExtent = 32700;

xcb_screen_t* screenAt(xcb_connection_t* connection, int index) {
  auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
  for (; index > 0 && screens.rem > 1; --index) xcb_screen_next(&screens);
  return screens.data;
}

}  // namespace

FloorWindow::FloorWindow() {
  int screenIndex = 0;
  connection_.reset(xcb_connect(nullptr, &screenIndex));
  if (xcb_connection_has_error(connection_.get()) != 0) {
    const char* display = std::getenv("DISPLAY");
    throw LocalizedError(display == nullptr || *display == '\0'
                             ? std::string("There is no X display: DISPLAY is not set.")
                             : "The X display " + std::string(display) + " cannot be reached.");
  }
  screen_ = screenAt(connection_.get(), screenIndex);
  compositorSelection_ = atomNamed(connection_.get(), "_NET_WM_CM_S" + std::to_string(screenIndex));
  desktopProperty_ = atomNamed(connection_.get(), "_NET_CURRENT_DESKTOP");
  serverKeys_.emplace(connection_.get(), screen_->root);
  createWindow();
}

void FloorWindow::createWindow() {
  window_ = xcb_generate_id(connection_.get());
  const std::uint32_t values[] = {screen_->black_pixel, 1};
  xcb_create_window(connection_.get(), XCB_COPY_FROM_PARENT, window_, screen_->root, 0, 0, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                    XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT, values);
}

void FloorWindow::show() {
  auto* const connection = connection_.get();
  if (!isShown_) {
    const auto cookie = xcb_get_input_focus(connection);
    const XReply<xcb_get_input_focus_reply_t> focus(
        xcb_get_input_focus_reply(connection, cookie, nullptr));
    previousFocus_ = focus ? focus->focus : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
  }
  isShown_ = true;
  watchRoot(true);
  coverRoot();
  const std::uint32_t onTop[] = {XCB_STACK_MODE_ABOVE};
  xcb_configure_window(connection, window_, XCB_CONFIG_WINDOW_STACK_MODE, onTop);
  xcb_map_window(connection, window_);
  serverKeys_->disable();
  waitForServer();
}

void FloorWindow::hide() {
  serverKeys_->restore();
  if (!isShown_) return;
  isShown_ = false;
  watchRoot(false);
  xcb_unmap_window(connection_.get(), window_);  // which ends both grabs
  if (previousFocus_ > XCB_INPUT_FOCUS_POINTER_ROOT)
    xcb_set_input_focus(connection_.get(), XCB_INPUT_FOCUS_POINTER_ROOT, previousFocus_,
                        XCB_CURRENT_TIME);
  waitForServer();
}

// A compositor keeps the whole of each window in memory; for it the floor is as large as the root
// and follows it, and what a growing root shows first is the compositor's own.
void FloorWindow::coverRoot() {
  auto* const connection = connection_.get();
  std::uint32_t place[] = {static_cast<std::uint32_t>(farOrigin),
                           static_cast<std::uint32_t>(farOrigin), farExtent, farExtent};
  if (hasCompositor()) {
    const auto cookie = xcb_get_geometry(connection, screen_->root);
    const XReply<xcb_get_geometry_reply_t> root(
        xcb_get_geometry_reply(connection, cookie, nullptr));
    if (root) {
      place[0] = place[1] = 0;
      place[2] = root->width;
      place[3] = root->height;
    }
  }
  xcb_configure_window(connection, window_,
                       XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                           XCB_CONFIG_WINDOW_HEIGHT,
                       place);
}

bool FloorWindow::hasCompositor() {
  if (compositorSelection_ == XCB_ATOM_NONE) return false;
  const auto cookie = xcb_get_selection_owner(connection_.get(), compositorSelection_);
  const XReply<xcb_get_selection_owner_reply_t> reply(
      xcb_get_selection_owner_reply(connection_.get(), cookie, nullptr));
  return reply && reply->owner != XCB_WINDOW_NONE;
}

void FloorWindow::watchRoot(bool isWatched) {
  const std::uint32_t mask[] = {isWatched ? XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY |
                                                XCB_EVENT_MASK_STRUCTURE_NOTIFY |
                                                XCB_EVENT_MASK_PROPERTY_CHANGE
                                          : std::uint32_t{XCB_EVENT_MASK_NO_EVENT}};
  xcb_change_window_attributes(connection_.get(), screen_->root, XCB_CW_EVENT_MASK, mask);
}

void FloorWindow::waitForServer() {
  const auto cookie = xcb_get_input_focus(connection_.get());
  const XReply<xcb_get_input_focus_reply_t> answered(
      xcb_get_input_focus_reply(connection_.get(), cookie, nullptr));
}

bool FloorWindow::holdInput() {
  const auto keyboardCookie = xcb_grab_keyboard(connection_.get(), 1, window_, XCB_CURRENT_TIME,
                                                XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
  const XReply<xcb_grab_keyboard_reply_t> keyboard(
      xcb_grab_keyboard_reply(connection_.get(), keyboardCookie, nullptr));
  const auto pointerCookie =
      xcb_grab_pointer(connection_.get(), 1, window_, 0, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC,
                       XCB_WINDOW_NONE, XCB_CURSOR_NONE, XCB_CURRENT_TIME);
  const XReply<xcb_grab_pointer_reply_t> pointer(
      xcb_grab_pointer_reply(connection_.get(), pointerCookie, nullptr));
  return keyboard && keyboard->status == XCB_GRAB_STATUS_SUCCESS && pointer &&
         pointer->status == XCB_GRAB_STATUS_SUCCESS;
}

int FloorWindow::fileDescriptor() const {
  return xcb_get_file_descriptor(connection_.get());
}

FloorWindow::News FloorWindow::readNews() {
  News news;
  while (const XReply<xcb_generic_event_t> event{xcb_poll_for_event(connection_.get())})
    noteEvent(*event, news);
  news.isConnectionLost = xcb_connection_has_error(connection_.get()) != 0;
  xcb_flush(connection_.get());
  return news;
}

void FloorWindow::noteEvent(const xcb_generic_event_t& event, News& news) {
  if (isShown_ && serverKeys_->isNews(event)) serverKeys_->disable();
  switch (event.response_type) {  // events made up by a client carry one more bit and match nothing
    case 0: {
      const auto& error = reinterpret_cast<const xcb_generic_error_t&>(event);
      news.errors.push_back("X error " + std::to_string(error.error_code) + " on request " +
                            std::to_string(error.major_code));
      return;
    }
    case XCB_MAP_NOTIFY:
    case XCB_REPARENT_NOTIFY:
    case XCB_CIRCULATE_NOTIFY:
      news.isDisturbed = true;
      return;
    case XCB_CONFIGURE_NOTIFY: {
      const auto& configured = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
      if (configured.window == screen_->root && isShown_) coverRoot();
      news.isDisturbed = true;
      return;
    }
    case XCB_PROPERTY_NOTIFY: {
      const auto& changed = reinterpret_cast<const xcb_property_notify_event_t&>(event);
      if (changed.atom == desktopProperty_) news.isDesktopSwitched = true;
      return;
    }
    case XCB_UNMAP_NOTIFY: {
      const auto& unmapped = reinterpret_cast<const xcb_unmap_notify_event_t&>(event);
      if (unmapped.window == window_) news.isRemoved = isShown_;
      return;
    }
    case XCB_DESTROY_NOTIFY: {
      const auto& destroyed = reinterpret_cast<const xcb_destroy_notify_event_t&>(event);
      if (destroyed.window != window_) return;
      createWindow();
      news.isRemoved = isShown_;
      return;
    }
  }
}

}  // namespace lunevra
