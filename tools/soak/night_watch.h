#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "rehearsal/night.h"

namespace lunevra::soak {

/// Looks at a night after each of its turns and says what must not be. It judges by what was seen
/// before and by rules of its own, not by asking the engine what it thinks.
class NightWatch {
 public:
  explicit NightWatch(rehearsal::Night& night) : night_(night) {}

  /// Before a statement.
  void isAbout(const std::string& statement, bool isKeyInserted);
  /// After a statement, and after every turn of the run loop.
  void look();

  /// The first thing that was wrong.
  [[nodiscard]] const std::optional<std::string>& breach() const { return breach_; }

 private:
  using Duration = SimulatedTime::Duration;

  /// For how long something has been so without interruption, in time awake.
  class Stretch {
   public:
    Duration lasts(bool isSo, Duration uptime) {
      if (!isSo) since_.reset();
      if (isSo && !since_) since_ = uptime;
      return since_ ? uptime - *since_ : Duration{-1};
    }

   private:
    std::optional<Duration> since_;
  };

  void require(bool condition, const char* rule);
  void followNight();
  void followRelease();
  void followCommitment();
  void watchPhase();
  void watchScreen();
  void watchQuit();
  [[nodiscard]] bool isNightDue() const;
  [[nodiscard]] bool isOver(std::optional<Instant> end) const { return !end || *end <= now_; }

  rehearsal::Night& night_;
  std::optional<std::string> breach_;
  bool isKeyInserted_ = false;
  bool mayQuit_ = true;
  bool isEnding_ = false;  // the computer has said that it is being shut down

  Instant now_;
  Duration uptime_{};
  bool wasUp_ = false;
  std::optional<Instant> end_;     // of the night that has begun
  std::optional<Instant> stored_;  // the same, whether past or future
  std::optional<Instant> release_;
  std::optional<Instant> commitment_;
  std::vector<Screen> screens_;
  Stretch due_, open_, missed_, keyIn_, steady_;
};

}  // namespace lunevra::soak
