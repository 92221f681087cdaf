#pragma once

#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/program.h"
#include "engine/night_latch.h"
#include "platform/simulated/simulated_host.h"
#include "rehearsal/script_words.h"
#include "rehearsal/stage.h"
#include "rehearsal/transcript.h"

namespace lunevra::rehearsal {

/// One scripted night: a simulated computer, and the real program on it while it runs. What asks
/// something of the program does nothing while it does not run.
class Night {
 public:
  using StageFactory = std::function<std::unique_ptr<Stage>(SimulatedHost&)>;

  /// `seed` makes what the night draws at random repeatable.
  Night(const StageFactory& makeStage, std::uint64_t seed, std::ostream& transcript);
  ~Night();
  Night(const Night&) = delete;
  Night& operator=(const Night&) = delete;

  [[nodiscard]] SimulatedHost& computer() { return computer_; }
  [[nodiscard]] bool isRunning() const { return program_ != nullptr; }
  /// Whether the program has been launched, ever.
  [[nodiscard]] bool hasStarted() const { return hasStarted_; }
  /// Only while it runs.
  [[nodiscard]] ShutdownManager& engine() { return program_->app().shutdownManager(); }
  [[nodiscard]] AppDelegate& delegate() { return program_->app().appDelegate(); }
  [[nodiscard]] Desktop desktop() { return stage_->desktop(); }

  /// The instant at which the wall clock of the night's zone shows this date and time.
  [[nodiscard]] Instant instant(const DateComponents& date) const;

  // The program.
  void launch(bool contentAppears);
  void appear();
  void kill();
  void quit();
  void sendKey(KeyEventKind kind);

  // Time and what the computer announces.
  void pass(SimulatedTime::Duration duration) { stage_->pass(duration); }
  void passUntil(const TimeOfDay& time);
  void sleep(SimulatedTime::Duration duration);
  void announce(std::string_view workspaceNotification);
  void announceScreens();
  void resignActive();

  /// Puts what a view shows into the transcript.
  void note(const std::string& view, const std::vector<std::string>& rows);

  /// Empties the main queue and tells the transcript.
  void settle() { computer_.time.drainMainQueue(); }

  // What the last such statement led to.
  [[nodiscard]] std::optional<bool> wasQuitAccepted() const { return wasQuitAccepted_; }
  [[nodiscard]] std::optional<bool> wasKeyPassed() const { return wasKeyPassed_; }

  [[nodiscard]] NightLatch latch() { return NightLatch(computer_.host()); }
  [[nodiscard]] PhysicalOverride release() { return PhysicalOverride(computer_.host()); }
  [[nodiscard]] int registrationsSinceLaunch(const SimulatedService& service) const;

 private:
  void end();

  SimulatedHost computer_;
  std::unique_ptr<Stage> stage_;
  Transcript transcript_;
  std::unique_ptr<Program> program_;
  bool hasStarted_ = false;
  std::optional<bool> wasQuitAccepted_;
  std::optional<bool> wasKeyPassed_;
  std::map<const SimulatedService*, int> registrationsAtLaunch_;
};

}  // namespace lunevra::rehearsal
