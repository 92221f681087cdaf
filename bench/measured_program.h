#pragma once

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "host/child_process.h"
#include "host/temporary_folder.h"
#include "platform/linux/linux_user_defaults_domains.h"
#include "platform/linux/stderr_log.h"
#include "store/settings_keys.h"

namespace lunevra::bench {

/// A person's home whose schedule is switched off, so that the hour of the day does not matter.
class Home {
 public:
  Home() {
    defaults_.suite(settings_key::appGroup)->set(settings_key::scheduleEnabled, false);
    defaults_.standard().set(settings_key::enforcementAgentStatus, std::int64_t{1});
  }

  /// A night that has begun and will outlast any measurement.
  void latchNight() {
    const auto end = std::chrono::system_clock::now().time_since_epoch() + std::chrono::hours(10);
    defaults_.standard().set(settings_key::activeNightLockUntil,
                             Instant{std::chrono::duration<double>(end).count()});
  }
  /// Another machine changes a setting, on which the program looks at all of them.
  void changeElsewhere() const {
    const auto cloud = folder_.path() / "lunevra/cloud";
    std::ofstream(cloud / "new") << R"({"type": "integer", "value": 7})";
    std::filesystem::rename(cloud / "new", cloud / "wakeHour.json");
  }

  [[nodiscard]] const std::filesystem::path& path() const { return folder_.path(); }
  [[nodiscard]] std::vector<std::string> environment(const std::string& display = "") const {
    const std::string path = folder_.path();
    std::vector<std::string> variables{"HOME=" + path, "XDG_DATA_HOME=" + path,
                                       "XDG_RUNTIME_DIR=" + path, "TZ=UTC"};
    if (!display.empty()) variables.push_back("DISPLAY=" + display);
    return variables;
  }

 private:
  host_test::TemporaryFolder folder_;
  StderrLog log_;
  LinuxUserDefaultsDomains defaults_{folder_.path() / "lunevra", log_};
};

inline double median(std::vector<double> values) {
  if (values.empty()) return 0;
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

inline std::filesystem::path processFolder(pid_t pid) {
  return "/proc/" + std::to_string(pid);
}

inline double proportionalMegabytes(pid_t pid) {
  std::ifstream file(processFolder(pid) / "smaps_rollup");
  for (std::string word; file >> word;)
    if (double kilobytes = 0; word == "Pss:" && file >> kilobytes) return kilobytes / 1024;
  return 0;
}

/// What the threads of a process have done so far.
struct Effort {
  double processorSeconds = 0;
  double wakeUps = 0;

  static Effort of(pid_t pid) {
    Effort sum;
    for (const auto& thread : std::filesystem::directory_iterator(processFolder(pid) / "task")) {
      double nanoseconds = 0;
      std::ifstream(thread.path() / "schedstat") >> nanoseconds;
      sum.processorSeconds += nanoseconds * 1e-9;
      std::ifstream status(thread.path() / "status");
      for (std::string word; status >> word;)
        if (double count = 0; word == "voluntary_ctxt_switches:" && status >> count)
          sum.wakeUps += count;
    }
    return sum;
  }
};

}  // namespace lunevra::bench
