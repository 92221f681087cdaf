#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/x11/server_keys.h"
#include "platform/x11/stack_keeper.h"

namespace lunevra {

/// The black ground under the lock windows: one window over all of the X screen, on a connection of
/// its own, that holds keyboard and pointer. It stays when everything above it comes and goes. It
/// needs no toolkit and is no window of the program. One thread only.
class FloorWindow {
 public:
  /// What the X server reported since the last time.
  struct News {
    bool isDesktopSwitched = false;  ///< the person went to another of the desktops
    bool isRemoved = false;          ///< somebody unmapped or destroyed the shown floor
    bool isConnectionLost = false;
    std::vector<std::string> errors;
  };

  /// Connects and shows nothing yet. Throws LocalizedError if no X server can be reached.
  FloorWindow();

  /// On top of all windows, black everywhere when the call returns, and in possession of the input
  /// unless another program holds it.
  void show();
  /// Gives up the input, and the focus to the window that had it before `show`. If the floor is
  /// not shown, it still takes away and puts back what a killed process has left and changed.
  void hide();
  [[nodiscard]] bool isShown() const { return isShown_; }
  /// The windows that belong directly above the floor, which the server must know; while the floor
  /// is shown, they and it are kept in front of everything else. None whenever it is put up.
  void setWindowsAbove(WindowPile windows);

  /// Takes or renews both grabs; false while another program holds one of them. Never lets go of
  /// one in between.
  [[nodiscard]] bool holdInput();

  /// Whether the server keeps the floor on the screen, without its grabs, when this process dies
  /// with it shown. Only for a process that is brought back: nothing but the next start's
  /// `removeLeftBehind`, or the end of the X server, takes such a floor away.
  void setOutlivesProcess(bool outlives);
  /// Takes away what processes that died have left on the screen; to be called with the own floor
  /// up where one has to be. No process that lives loses anything.
  void removeLeftBehind();

  /// Readable when there may be news; to be read after each other operation as well, since waiting
  /// for an answer takes what has arrived off the descriptor.
  [[nodiscard]] int fileDescriptor() const;
  [[nodiscard]] News readNews();

 private:
  void createWindow();
  void coverRoot();
  void keepPileOnTop();
  void takeFocus();
  void watchRoot(bool isWatched);
  void waitForServer();
  void watchCompositor();
  [[nodiscard]] bool hasCompositor();
  void noteEvent(const xcb_generic_event_t& event, News& news);

  XConnection x_ = XConnection::open();
  xcb_atom_t compositorSelection_ = XCB_ATOM_NONE;
  std::uint8_t compositorEvent_ = 0;  // 0: cannot be watched
  xcb_atom_t desktopProperty_ = XCB_ATOM_NONE;
  std::optional<ServerKeys> serverKeys_;
  xcb_window_t window_ = XCB_WINDOW_NONE;
  xcb_window_t previousFocus_ = XCB_WINDOW_NONE;
  bool isShown_ = false;
  WindowPile windowsAbove_;
  std::optional<StackKeeper> stackKeeper_;
  std::vector<std::string> errors_;  // not reported yet
};

}  // namespace lunevra
