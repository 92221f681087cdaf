#include "rehearsal/show.h"

#include <array>
#include <ostream>

#include <QGuiApplication>

#include "rehearsal/screen_stage.h"

namespace lunevra::rehearsal {

Tally show(const Script& script, double speed, const std::string& pictures, std::ostream& out) {
  DesktopHost::prepareQt();
  int argumentCount = 1;
  std::string name = "lunevra-rehearsal";
  std::array<char*, 2> arguments{name.data(), nullptr};
  FloorWindow floor;
  const QGuiApplication application(argumentCount, arguments.data());
  Photographer photographer(pictures);
  out << std::unitbuf;

  Tally tally;
  const auto makeStage = [&](SimulatedHost& computer) {
    return std::make_unique<ScreenStage>(computer, floor, photographer, speed);
  };
  play(script, makeStage, out, tally);
  return tally;
}

}  // namespace lunevra::rehearsal
