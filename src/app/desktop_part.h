#pragma once

#include "platform/linux/linux_paths.h"
#include "platform/linux/single_instance.h"
#include "platform/linux/termination_signals.h"
#include "platform/x11/floor_window.h"

namespace lunevra {

/// What the process has at hand before the toolkit is loaded, all of it as long as it lives.
struct ProcessStart {
  char** arguments;
  const LinuxPaths& paths;
  const SingleInstance& instance;
  TerminationSignals& requests;
  bool isAgentStart;   ///< the enforcement agent will bring the process back
  FloorWindow& floor;  ///< shown already if a night is running
};

}  // namespace lunevra

/// The program on the desktop, until an accepted quit; the process's exit status. The one symbol
/// that is looked up in this part of the program when it is loaded.
extern "C" int lunevraRunDesktop(const lunevra::ProcessStart& start);
