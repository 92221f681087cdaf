// One table of what the benchmarks wrote: each figure beside what it is held against.

#include <cstdio>
#include <fstream>
#include <functional>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

namespace lunevra::bench {
namespace {

using nlohmann::json;

/// A figure, or nothing where it could not be measured.
using Figure = std::optional<double>;

Figure at(const json& tree, const std::string& pointer) {
  const json::json_pointer place(pointer);
  return tree.contains(place) ? Figure(tree.at(place).get<double>()) : std::nullopt;
}

/// One counter of a benchmark, its time in the unit of the report if none is named.
Figure benchmark(const json& report, const std::string& name,
                 const std::string& counter = "real_time") {
  const auto runs = report.find("benchmarks");
  if (runs == report.end()) return std::nullopt;
  for (const auto& run : *runs)
    if (run.at("name") == name) return run.value(counter, 0.0);
  return std::nullopt;
}

Figure scaled(Figure figure, double factor) {
  return figure ? Figure(*figure * factor) : std::nullopt;
}

Figure difference(Figure left, Figure right) {
  return left && right ? Figure(*left - *right) : std::nullopt;
}

json read(const std::string& folder, const std::string& name) {
  std::ifstream file(folder + "/" + name + ".json");
  auto tree = json::parse(file, nullptr, false);
  return tree.is_discarded() ? json::object() : tree;
}

struct Row {
  const char* name;
  const char* unit;
  Figure figure;
  const char* against;  ///< whose figure it is held against
  Figure limit;
};

void print(const Row& row) {
  const auto text = [](Figure figure) {
    char digits[32] = "-";
    if (figure) std::snprintf(digits, sizeof digits, "%.2f", *figure);
    return std::string(digits);
  };
  const bool hasRatio = row.figure && row.limit && *row.limit > 0;
  const auto ratio = hasRatio ? Figure(*row.figure / *row.limit) : std::nullopt;
  std::printf("%-44s %9s %-5s %-12s %9s %7s\n", row.name, text(row.figure).c_str(), row.unit,
              row.against, text(row.limit).c_str(), text(ratio).c_str());
}

void printAll(const std::string& folder) {
  const auto cover = read(folder, "cover");
  const auto program = read(folder, "program");
  const auto logic = read(folder, "logic");
  const auto screen = read(folder, "lock_screen");
  const auto covered = at(cover, "/lunevra/coveredMs");
  const auto keyboard = at(cover, "/lunevra/keyboardMs");
  const auto again = at(cover, "/lunevra/keyboardAfterDeathMs");
  std::printf("%-44s %9s %-5s %-12s %9s %7s\n", "", "", "", "against", "", "ratio");
  const std::vector<Row> rows{
      {"start to covered", "ms", covered, "i3lock", at(cover, "/i3lock/coveredMs")},
      {"", "ms", covered, "xsecurelock", at(cover, "/xsecurelock/coveredMs")},
      {"covered to keyboard held", "ms", difference(keyboard, covered), "goal", 2},
      {"killed: desktop seen for", "ms", at(cover, "/lunevra/seenAfterDeathMs"), "i3lock",
       at(cover, "/i3lock/seenAfterDeathMs")},
      {"killed: keyboard held again after", "ms", again, "i3lock",
       at(cover, "/i3lock/keyboardAfterDeathMs")},
      {"... under systemd", "ms", at(cover, "/lunevra under systemd/keyboardAfterDeathMs"), "", {}},
      {"by day: wake-ups a second", "", at(program, "/byDay/wakeUpsPerSecond"), "goal", 1.2},
      {"by day: processor a minute", "ms", at(program, "/byDay/processorMsPerMinute"), "goal", 15},
      {"by day: memory (PSS)", "MB", at(program, "/byDay/pssMegabytes"), "goal", 30},
      {"locked: share of a core", "%",
       scaled(at(program, "/locked/processorMsPerMinute"), 1 / 600.0), "goal", 2},
      {"locked: memory (PSS)", "MB", at(program, "/locked/pssMegabytes"), "goal", 60},
      {"lock screen: share of a core, 3 displays", "%",
       benchmark(screen, "blocking/3/iterations:1/real_time", "percentOfACore"), "goal", 6},
      {"waking to 6 displays covered", "ms", at(program, "/sixDisplays/coveredMs"), "goal", 16.7},
      {"waking to 6 displays' windows", "ms", at(program, "/sixDisplays/windowsMappedMs"), "goal",
       50},
      {"evaluation, simulated host", "us",
       scaled(benchmark(logic, "evaluateSchedule_median"), 1e-3), "goal", 1},
      {"evaluation, real stores", "us",
       scaled(benchmark(logic, "evaluateOnThisComputer_median"), 1e-3), "goal", 50},
      {"look for the key, real drives", "us",
       scaled(benchmark(logic, "pollOnThisComputer_median"), 1e-3), "goal", 200},
  };
  for (const auto& row : rows) print(row);
}

}  // namespace
}  // namespace lunevra::bench

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s FOLDER\n", argv[0]);
    return EXIT_FAILURE;
  }
  lunevra::bench::printAll(argv[1]);
  return EXIT_SUCCESS;
}
