#pragma once

#include <atomic>
#include <mutex>
#include <thread>
#include <vector>

#include "platform/x11/x_connection.h"

namespace lunevra {

/// Windows in front of all others, the first one uppermost.
using WindowPile = std::vector<xcb_window_t>;

/// Asks for that order; each window has to be known to the server.
void stackOnTop(xcb_connection_t* connection, const WindowPile& pile);

/// Keeps a pile of windows in front for as long as it lives. Another program that raises a window
/// or opens one is answered within milliseconds: from a thread and a connection of its own, so that
/// nothing the main thread draws or waits for delays the answer.
class StackKeeper {
 public:
  /// Throws LocalizedError if the X server takes no further connection, std::system_error if the
  /// computer has no further thread.
  explicit StackKeeper(WindowPile pile);
  ~StackKeeper();
  StackKeeper(const StackKeeper&) = delete;
  StackKeeper& operator=(const StackKeeper&) = delete;

  /// The pile from now on. Any thread.
  void setPile(WindowPile pile);
  /// Somebody has cut the connection: nothing is kept any more.
  [[nodiscard]] bool isLost() const { return x_.isLost(); }

 private:
  void run();
  void restack();

  XConnection x_;
  xcb_window_t mailbox_;  // what is sent to it wakes the thread
  std::atomic<bool> isEnding_ = false;
  std::mutex mutex_;
  WindowPile pile_;
  std::thread thread_;  // last: it uses all of the above
};

}  // namespace lunevra
