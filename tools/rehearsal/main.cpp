#include <iostream>

#include "platform/localized_error.h"
#include "rehearsal/command_line.h"
#include "rehearsal/script.h"

#ifdef LUNEVRA_WITH_DESKTOP
#include "rehearsal/show.h"
#endif

using namespace lunevra::rehearsal;

namespace {

constexpr int expectationFailed = 1;
constexpr int malformed = 2;
constexpr int cannotShow = 3;

Tally playInMemory(const std::vector<Script>& scripts) {
  Tally tally;
  for (const auto& script : scripts)
    play(
        script, [](auto& computer) { return std::make_unique<MemoryStage>(computer); }, std::cout,
        tally);
  return tally;
}

Tally playOnScreen([[maybe_unused]] const CommandLine& command,
                   [[maybe_unused]] const Script& script) {
#ifdef LUNEVRA_WITH_DESKTOP
  return show(script, command.speed, command.pictures, std::cout);
#else
  throw MalformedScript("--show needs windows, and this build has none");
#endif
}

}  // namespace

int main(int argc, char** argv) {
  std::ios::sync_with_stdio(false);
  try {
    const auto command = parseCommandLine({argv + 1, argv + argc});
    std::vector<Script> scripts;
    for (const auto& file : command.files) scripts.push_back(readScript(file));
    const auto tally =
        command.show ? playOnScreen(command, scripts.front()) : playInMemory(scripts);
    std::cout << tally.passed << " passed, " << tally.failed << " failed" << std::endl;
    return tally.failed == 0 ? 0 : expectationFailed;
  } catch (const MalformedScript& error) {
    std::cerr << error.what() << '\n';
    return malformed;
  } catch (const lunevra::LocalizedError& error) {
    std::cerr << error.localizedDescription() << '\n';
    return cannotShow;
  }
}
