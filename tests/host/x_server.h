#pragma once

#include <fstream>
#include <stdexcept>

#include "host/child_process.h"
#include "host/temporary_folder.h"

namespace lunevra::host_test {

/// A real X server without hardware: displays can be plugged in and out. It starts with one,
/// DUMMY0, of 1024x768, and touches neither console nor devices of the machine.
class XServer {
 public:
  XServer() {
    const auto config = folder_.path() / "xorg.conf";
    std::ofstream(config) << R"(
Section "ServerFlags"
  Option "AutoAddDevices" "false"
  Option "DontVTSwitch" "true"
EndSection
Section "Device"
  Identifier "none"
  Driver "dummy"
  VideoRam 65536
EndSection
Section "Monitor"
  Identifier "any"
  HorizSync 1-200
  VertRefresh 1-200
EndSection
Section "Screen"
  Identifier "screen"
  Device "none"
  Monitor "any"
  DefaultDepth 24
  SubSection "Display"
    Modes "1024x768" "1280x720" "800x600"
  EndSubSection
EndSection)";
    // The server itself looks for a free display and writes its number once it answers.
    const auto number = folder_.path() / "number";
    const int file = open(number.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
    process_.emplace(
        std::vector<std::string>{"Xorg", "-displayfd", std::to_string(file), "-config", config,
                                 "-noreset", "-nolisten", "tcp", "-novtswitch", "-sharevts",
                                 "-logfile", folder_.path() / "log", "-quiet"},
        std::vector<std::string>{}, file);
    close(file);
    std::string line;
    if (!eventually([&] { return !std::getline(std::ifstream(number), line).eof(); }))
      throw std::runtime_error("the X server does not start");
    display_ = ":" + line;
  }

  [[nodiscard]] const std::string& display() const { return display_; }
  void plugIn(const std::string& output, const std::string& mode, const std::string& position) {
    randr("--addmode " + output + " " + mode);
    randr("--output " + output + " --mode " + mode + " --pos " + position);
  }
  void unplug(const std::string& output) { randr("--output " + output + " --off"); }
  void kill() { process_->signal(SIGKILL); }

 private:
  void randr(const std::string& arguments) const {
    if (std::system(("xrandr -d " + display_ + " " + arguments).c_str()) != 0)
      throw std::runtime_error("xrandr " + arguments);
  }

  TemporaryFolder folder_;
  std::string display_;
  std::optional<ChildProcess> process_;
};

}  // namespace lunevra::host_test
