#include "host/x_server.h"

#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <stdexcept>
#include <unistd.h>

#include "host/eventually.h"

namespace lunevra::host_test {
namespace {

// No device of the machine is touched, and neither is its console.
constexpr auto configuration = R"(
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
EndSection
)";

}  // namespace

TemporaryFolder::TemporaryFolder() {
  auto name = (std::filesystem::temp_directory_path() / "lunevra-host-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
  path_ = name;
}

TemporaryFolder::~TemporaryFolder() {
  std::filesystem::remove_all(path_);
}

XServer::XServer() {
  const auto config = folder_.path() / "xorg.conf";
  std::ofstream(config) << configuration;
  int ready[2];
  if (pipe2(ready, O_CLOEXEC | O_NONBLOCK) != 0) throw std::runtime_error("no pipe");
  process_.emplace(
      std::vector<std::string>{"Xorg", "-displayfd", std::to_string(ready[1]), "-config", config,
                               "-noreset", "-nolisten", "tcp", "-novtswitch", "-sharevts",
                               "-logfile", folder_.path() / "log", "-quiet"},
      std::vector<std::string>{}, ready[1]);
  close(ready[1]);
  std::string number(16, '\0');
  ssize_t length = 0;
  const bool answers = eventually([&] {
    length = read(ready[0], number.data(), number.size());
    return length > 0;
  });
  close(ready[0]);
  if (!answers) throw std::runtime_error("the X server does not start");
  display_ = ":" + std::to_string(std::stoi(number));
}

void XServer::plugIn(const std::string& output, const std::string& mode,
                     const std::string& position) {
  randr("--addmode " + output + " " + mode);
  randr("--output " + output + " --mode " + mode + " --pos " + position);
}

void XServer::unplug(const std::string& output) {
  randr("--output " + output + " --off");
}

void XServer::randr(const std::string& arguments) const {
  if (std::system(("xrandr -d " + display_ + " " + arguments).c_str()) != 0)
    throw std::runtime_error("xrandr " + arguments);
}

}  // namespace lunevra::host_test
