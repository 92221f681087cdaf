#pragma once

#include <optional>

#include <QGuiApplication>
#include <QSocketNotifier>

#include "app/desktop_part.h"
#include "app/menu_bar_extra.h"
#include "app/program.h"
#include "platform/desktop/desktop_host.h"
#include "platform/desktop/qt_open_panels.h"
#include "platform/desktop/qt_run_loop.h"
#include "platform/linux/instance_calls.h"
#include "platform/linux/linux_host.h"
#include "platform/linux/login_session.h"

namespace lunevra {

/// The program on a Linux computer with an X11 desktop, from its start to an accepted quit.
class DesktopProgram {
 public:
  explicit DesktopProgram(const ProcessStart& start);
  ~DesktopProgram();
  DesktopProgram(const DesktopProgram&) = delete;
  DesktopProgram& operator=(const DesktopProgram&) = delete;

  /// Returns the toolkit's status once a request to quit has been accepted.
  int run();
  /// Whether the person may quit: neither a night nor an armed schedule stands against it.
  [[nodiscard]] bool isLockOff();

 private:
  void connectDelegate();
  void connectLoginSession();
  void keepCoverIfBroughtBack();
  void listenToCalls();

  const ProcessStart start_;
  int argumentCount_ = 1;  // the program's name; options would be the toolkit's
  QGuiApplication application_;
  QtRunLoop runLoop_;
  QtOpenPanels openPanels_{runLoop_};
  LinuxHost computer_;
  Host host_ = computer_.host();
  DesktopHost desktop_;
  Program program_;
  LoginSession login_;
  InstanceCalls calls_;
  QSocketNotifier callNotifier_;
  std::optional<MenuBarExtra> menuBarExtra_;
};

}  // namespace lunevra
