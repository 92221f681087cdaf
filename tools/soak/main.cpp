#include <chrono>
#include <fstream>
#include <iostream>
#include <random>
#include <sstream>

#include "rehearsal/script.h"
#include "soak/night_watch.h"
#include "soak/random_nights.h"

using namespace lunevra;
using namespace lunevra::soak;

namespace {

constexpr const char* usage = "usage: lunevra-soak [--seed N] [--stories N | --seconds N]";
constexpr int statementsPerStory = 200;

struct Options {
  std::uint64_t seed = std::random_device{}();
  std::optional<std::uint64_t> stories;
  std::chrono::seconds seconds{60};
};

/// Tells of every turn of a night that is played in memory.
class WatchedStage final : public rehearsal::Stage {
 public:
  WatchedStage(SimulatedHost& computer, const std::function<void()>& turnEnded)
      : stage_(computer), turnEnded_(turnEnded) {}

  [[nodiscard]] Desktop desktop() override { return stage_.desktop(); }
  [[nodiscard]] LockContentFactory lockContent() override { return stage_.lockContent(); }
  void beginProcess() override { stage_.beginProcess(); }
  void endProcess() override { stage_.endProcess(); }
  void pass(SimulatedTime::Duration duration) override { stage_.pass(duration); }
  void phaseIs(BlockingState /*state*/) override { turnEnded_(); }

 private:
  rehearsal::MemoryStage stage_;
  const std::function<void()>& turnEnded_;
};

/// The statements up to the one that did it, if something was wrong.
std::optional<std::string> playStory(std::uint64_t seed) {
  std::ostringstream nobody;
  nobody.setstate(std::ios::failbit);
  std::function<void()> look = [] {};
  rehearsal::Night night(
      [&](auto& computer) { return std::make_unique<WatchedStage>(computer, look); }, seed, nobody);
  NightWatch watch(night);
  RandomNights nights(seed);
  look = [&] { watch.look(); };

  std::string script;
  const auto play = [&](const std::string& line) {
    script += line + '\n';
    watch.isAbout(line, nights.isKeyInserted());
    const auto parsed = rehearsal::parseScript("story", line);
    std::get<rehearsal::Action>(parsed.statements.front().meaning)(night);
    night.settle();
    watch.look();
  };
  for (const auto& line : nights.beginning()) play(line);
  for (int i = 0; i < statementsPerStory && !watch.breach(); ++i) play(nights.next(night));
  look = [] {};
  if (!watch.breach()) return std::nullopt;
  return script + "# " + *watch.breach() + '\n';
}

Options parse(int count, char** arguments) {
  Options options;
  for (int at = 1; at < count; at += 2) {
    const std::string name = arguments[at];
    if (at + 1 == count) throw std::invalid_argument(usage);
    const auto value = std::stoull(arguments[at + 1]);
    if (name == "--seed") {
      options.seed = value;
    } else if (name == "--stories") {
      options.stories = value;
    } else if (name == "--seconds") {
      options.seconds = std::chrono::seconds(value);
    } else {
      throw std::invalid_argument(usage);
    }
  }
  return options;
}

int playUntilEnough(const Options& options) {
  const auto end = std::chrono::steady_clock::now() + options.seconds;
  auto seed = options.seed;
  const auto isEnough = [&] {
    return options.stories ? seed - options.seed >= *options.stories
                           : std::chrono::steady_clock::now() >= end;
  };
  for (; !isEnough(); ++seed) {
    const auto script = playStory(seed);
    if (!script) continue;
    const auto file = "breach-" + std::to_string(seed) + ".night";
    std::ofstream(file) << *script;
    std::cerr << *script << "seed " << seed << ", written to " << file << '\n';
    return EXIT_FAILURE;
  }
  std::cout << seed - options.seed << " stories from seed " << options.seed << ", all kept\n";
  return EXIT_SUCCESS;
}

}  // namespace

int main(int count, char** arguments) {
  try {
    return playUntilEnough(parse(count, arguments));
  } catch (const std::logic_error&) {  // an option, or its number
    std::cerr << usage << '\n';
    return 2;
  }
}
