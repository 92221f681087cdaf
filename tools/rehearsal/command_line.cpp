#include "rehearsal/command_line.h"

#include "rehearsal/script_words.h"

namespace lunevra::rehearsal {
namespace {

constexpr const char* usage =
    "usage: lunevra-rehearsal FILE...\n"
    "       lunevra-rehearsal --show [--speed N] [--pictures DIR] FILE";

}  // namespace

CommandLine parseCommandLine(const std::vector<std::string>& arguments) {
  CommandLine command;
  bool isForShow = false;
  for (auto argument = arguments.begin(); argument != arguments.end(); ++argument) {
    const auto value = [&] {
      if (++argument == arguments.end()) throw MalformedScript(usage);
      isForShow = true;
      return *argument;
    };
    if (*argument == "--show") {
      command.show = true;
    } else if (*argument == "--speed") {
      command.speed = Words(value()).takeNumber("the speed");
      if (!(command.speed > 0.0)) throw MalformedScript("the speed must be positive");
    } else if (*argument == "--pictures") {
      command.pictures = value();
    } else if (argument->starts_with("--")) {
      throw MalformedScript(usage);
    } else {
      command.files.push_back(*argument);
    }
  }
  const bool isOneFile = command.files.size() == 1;
  if (command.files.empty() || (command.show ? !isOneFile : isForShow))
    throw MalformedScript(usage);
  return command;
}

}  // namespace lunevra::rehearsal
