#include "platform/x11/floor_window.h"

#include <algorithm>
#include <exception>
#include <string>
#include <utility>
#include <xcb/xfixes.h>

#include "platform/x11/x_atom.h"
#include "platform/x11/x_reply.h"

namespace lunevra {
namespace {

// What a root may grow by at once, a large display to the right or below, without showing anything
// new for a moment.
constexpr std::uint32_t margin = 4096;
constexpr std::uint32_t furthestCoordinate = 32767;  // beyond it the server's own sums overflow

}  // namespace

FloorWindow::FloorWindow() {
  compositorSelection_ = atomNamed(x_.get(), "_NET_WM_CM_S" + std::to_string(x_.screenIndex));
  desktopProperty_ = atomNamed(x_.get(), "_NET_CURRENT_DESKTOP");
  serverKeys_.emplace(x_.get(), x_.screen->root);
  watchCompositor();
  createWindow();
}

void FloorWindow::createWindow() {
  window_ = xcb_generate_id(x_.get());
  const std::uint32_t values[] = {x_.screen->black_pixel, 1};
  xcb_create_window(x_.get(), XCB_COPY_FROM_PARENT, window_, x_.screen->root, 0, 0, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                    XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT, values);
}

void FloorWindow::show() {
  auto* const connection = x_.get();
  if (!isShown_) {
    const auto cookie = xcb_get_input_focus(connection);
    const XReply<xcb_get_input_focus_reply_t> focus(
        xcb_get_input_focus_reply(connection, cookie, nullptr));
    previousFocus_ = focus ? focus->focus : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
  }
  isShown_ = true;
  watchRoot(true);
  coverRoot();
  stackOnTop(connection, {window_});
  xcb_map_window(connection, window_);
  takeFocus();
  static_cast<void>(holdInput());
  serverKeys_->disable();
  waitForServer();
  keepPileOnTop();
}

void FloorWindow::setWindowsAbove(WindowPile windows) {
  windowsAbove_ = std::move(windows);
  if (isShown_) keepPileOnTop();
}

// Where no keeper is to be had, the order is at least right now, and at the next call.
void FloorWindow::keepPileOnTop() {
  auto pile = windowsAbove_;
  pile.push_back(window_);
  stackOnTop(x_.get(), pile);
  try {
    if (stackKeeper_ && !stackKeeper_->isLost())
      stackKeeper_->setPile(std::move(pile));
    else
      stackKeeper_.emplace(std::move(pile));
  } catch (const std::exception& error) {  // no connection is to be had, or no thread
    errors_.push_back(error.what());
  }
}

// If the grab goes with the process, what is typed goes to the floor; and nowhere once that is
// gone.
void FloorWindow::takeFocus() {
  xcb_set_input_focus(x_.get(), XCB_INPUT_FOCUS_NONE, window_, XCB_CURRENT_TIME);
}

void FloorWindow::hide() {
  serverKeys_->restore();
  removeLeftBehind();  // an open screen has nothing on it, whenever its owner died
  if (!isShown_) return;
  isShown_ = false;
  stackKeeper_.reset();
  windowsAbove_.clear();
  watchRoot(false);
  setOutlivesProcess(false);
  xcb_unmap_window(x_.get(), window_);  // which ends both grabs
  // Typing must go somewhere even if the window that had the focus is gone.
  for (const auto focus : {xcb_window_t{XCB_INPUT_FOCUS_POINTER_ROOT}, previousFocus_})
    if (focus != XCB_WINDOW_NONE)
      xcb_set_input_focus(x_.get(), XCB_INPUT_FOCUS_POINTER_ROOT, focus, XCB_CURRENT_TIME);
  waitForServer();
}

void FloorWindow::setOutlivesProcess(bool outlives) {
  xcb_set_close_down_mode(x_.get(),
                          outlives ? XCB_CLOSE_DOWN_RETAIN_TEMPORARY : XCB_CLOSE_DOWN_DESTROY_ALL);
  xcb_flush(x_.get());
}

void FloorWindow::removeLeftBehind() {
  xcb_kill_client(x_.get(), XCB_KILL_ALL_TEMPORARY);
  waitForServer();
}

// A compositor keeps the whole of each window in memory; for it the floor is as large as the root,
// and what a growing root shows first is the compositor's own.
void FloorWindow::coverRoot() {
  auto* const connection = x_.get();
  const auto cookie = xcb_get_geometry(connection, x_.screen->root);
  const XReply<xcb_get_geometry_reply_t> root(xcb_get_geometry_reply(connection, cookie, nullptr));
  if (!root) return;
  const std::uint32_t beyond = hasCompositor() ? 0 : margin;
  const std::uint32_t size[] = {std::min(root->width + beyond, furthestCoordinate),
                                std::min(root->height + beyond, furthestCoordinate)};
  xcb_configure_window(connection, window_, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                       size);
}

// One that comes while the floor is up must not be handed more than it has to show.
void FloorWindow::watchCompositor() {
  auto* const connection = x_.get();
  const auto* const extension = xcb_get_extension_data(connection, &xcb_xfixes_id);
  if (extension == nullptr || extension->present == 0) return;
  const auto cookie =
      xcb_xfixes_query_version(connection, XCB_XFIXES_MAJOR_VERSION, XCB_XFIXES_MINOR_VERSION);
  const XReply<xcb_xfixes_query_version_reply_t> version(
      xcb_xfixes_query_version_reply(connection, cookie, nullptr));
  compositorEvent_ =
      static_cast<std::uint8_t>(extension->first_event + XCB_XFIXES_SELECTION_NOTIFY);
  xcb_xfixes_select_selection_input(connection, x_.screen->root, compositorSelection_,
                                    XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                        XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                        XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
}

bool FloorWindow::hasCompositor() {
  if (compositorSelection_ == XCB_ATOM_NONE) return false;
  const auto cookie = xcb_get_selection_owner(x_.get(), compositorSelection_);
  const XReply<xcb_get_selection_owner_reply_t> reply(
      xcb_get_selection_owner_reply(x_.get(), cookie, nullptr));
  return reply && reply->owner != XCB_WINDOW_NONE;
}

void FloorWindow::watchRoot(bool isWatched) {
  const std::uint32_t mask[] = {isWatched ? XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY |
                                                XCB_EVENT_MASK_STRUCTURE_NOTIFY |
                                                XCB_EVENT_MASK_PROPERTY_CHANGE
                                          : std::uint32_t{XCB_EVENT_MASK_NO_EVENT}};
  xcb_change_window_attributes(x_.get(), x_.screen->root, XCB_CW_EVENT_MASK, mask);
}

void FloorWindow::waitForServer() {
  const auto cookie = xcb_get_input_focus(x_.get());
  const XReply<xcb_get_input_focus_reply_t> answered(
      xcb_get_input_focus_reply(x_.get(), cookie, nullptr));
}

bool FloorWindow::holdInput() {
  const auto keyboardCookie = xcb_grab_keyboard(x_.get(), 1, window_, XCB_CURRENT_TIME,
                                                XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
  const XReply<xcb_grab_keyboard_reply_t> keyboard(
      xcb_grab_keyboard_reply(x_.get(), keyboardCookie, nullptr));
  const auto pointerCookie =
      xcb_grab_pointer(x_.get(), 1, window_, 0, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC,
                       XCB_WINDOW_NONE, XCB_CURSOR_NONE, XCB_CURRENT_TIME);
  const XReply<xcb_grab_pointer_reply_t> pointer(
      xcb_grab_pointer_reply(x_.get(), pointerCookie, nullptr));
  return keyboard && keyboard->status == XCB_GRAB_STATUS_SUCCESS && pointer &&
         pointer->status == XCB_GRAB_STATUS_SUCCESS;
}

int FloorWindow::fileDescriptor() const {
  return xcb_get_file_descriptor(x_.get());
}

FloorWindow::News FloorWindow::readNews() {
  News news;
  news.errors.swap(errors_);
  while (const XReply<xcb_generic_event_t> event{xcb_poll_for_event(x_.get())})
    noteEvent(*event, news);
  news.isConnectionLost = x_.isLost();
  xcb_flush(x_.get());
  return news;
}

void FloorWindow::noteEvent(const xcb_generic_event_t& event, News& news) {
  if (isShown_ && serverKeys_->isNews(event)) serverKeys_->disable();
  if (isShown_ && compositorEvent_ != 0 && event.response_type == compositorEvent_) coverRoot();
  switch (event.response_type) {  // events made up by a client carry one more bit and match nothing
    case 0: {
      const auto& error = reinterpret_cast<const xcb_generic_error_t&>(event);
      news.errors.push_back("X error " + std::to_string(error.error_code) + " on request " +
                            std::to_string(error.major_code));
      return;
    }
    case XCB_CONFIGURE_NOTIFY: {
      const auto& configured = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
      if (configured.window == x_.screen->root && isShown_) coverRoot();
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
