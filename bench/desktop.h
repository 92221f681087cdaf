#pragma once

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <memory>
#include <optional>
#include <poll.h>
#include <string>
#include <xcb/xcb.h>

namespace lunevra::bench {

using std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

struct Disconnect {
  void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};

/// A desktop that a person works on: one window over the whole screen, which has the keyboard.
class Desktop {
 public:
  /// An empty name stands for the display of the environment.
  explicit Desktop(const std::string& display = "")
      : connection_(xcb_connect(display.empty() ? nullptr : display.c_str(), nullptr)) {
    auto* const x = connection_.get();
    const std::uint32_t values[] = {color, 1,
                                    XCB_EVENT_MASK_VISIBILITY_CHANGE | XCB_EVENT_MASK_FOCUS_CHANGE};
    xcb_create_window(x, XCB_COPY_FROM_PARENT, window_, screen_->root, 0, 0,
                      screen_->width_in_pixels, screen_->height_in_pixels, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
    xcb_map_window(x, window_);
    takeKeyboard();
    wait(std::chrono::milliseconds(100), [] { return false; });
  }

  /// From here on; what happened before is forgotten.
  void takeKeyboard() {
    xcb_set_input_focus(connection_.get(), XCB_INPUT_FOCUS_POINTER_ROOT, window_, XCB_CURRENT_TIME);
    xcb_flush(connection_.get());
    begin_ = steady_clock::now();
    keyboardTaken_.reset();
    seen_ = Milliseconds(0);
  }

  bool waitUntilLocked() {
    return wait(std::chrono::seconds(10), [this] { return covered_ && keyboardTaken_; });
  }
  /// Takes away what a killed locker has left.
  bool waitUntilOpen() {
    return wait(std::chrono::seconds(10), [this] {
      xcb_kill_client(connection_.get(), XCB_KILL_ALL_TEMPORARY);
      xcb_flush(connection_.get());
      return !covered_;
    });
  }
  void rest(std::chrono::milliseconds duration) {
    wait(duration, [] { return false; });
  }

  // In milliseconds since the keyboard was taken.
  [[nodiscard]] double sinceTaken() const {
    return Milliseconds(steady_clock::now() - begin_).count();
  }
  [[nodiscard]] double coveredAfter() const { return Milliseconds(*covered_ - begin_).count(); }
  [[nodiscard]] double keyboardTakenAfter() const {
    return Milliseconds(*keyboardTaken_ - begin_).count();
  }
  /// For how long any of it was to be seen.
  [[nodiscard]] double seen() const { return seen_.count(); }

 private:
  template <class Condition>
  bool wait(std::chrono::milliseconds limit, Condition isMet) {
    const auto end = steady_clock::now() + limit;
    while (steady_clock::now() < end) {
      while (auto* const event = xcb_poll_for_event(connection_.get())) {
        note(*event);
        std::free(event);
      }
      if (isMet()) return true;
      pollfd readable{xcb_get_file_descriptor(connection_.get()), POLLIN, 0};
      ::poll(&readable, 1, 20);
    }
    return isMet();
  }

  void note(const xcb_generic_event_t& event) {
    const auto now = steady_clock::now();
    if (event.response_type == XCB_FOCUS_OUT && !keyboardTaken_) keyboardTaken_ = now;
    if (event.response_type != XCB_VISIBILITY_NOTIFY) return;
    const auto& visibility = reinterpret_cast<const xcb_visibility_notify_event_t&>(event);
    if (visibility.state != XCB_VISIBILITY_FULLY_OBSCURED) {
      if (covered_) openSince_ = now;
      covered_.reset();
    } else if (!covered_) {
      covered_ = now;
      seen_ += now - std::max(openSince_, begin_);
    }
  }

  static constexpr std::uint32_t color = 0x3366CC;

  std::unique_ptr<xcb_connection_t, Disconnect> connection_;
  const xcb_screen_t* screen_ = xcb_setup_roots_iterator(xcb_get_setup(connection_.get())).data;
  xcb_window_t window_ = xcb_generate_id(connection_.get());
  steady_clock::time_point begin_;
  std::optional<steady_clock::time_point> covered_;
  std::optional<steady_clock::time_point> keyboardTaken_;
  steady_clock::time_point openSince_;
  Milliseconds seen_{0};
};

}  // namespace lunevra::bench
