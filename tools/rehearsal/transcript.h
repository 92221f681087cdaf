#pragma once

#include <iosfwd>
#include <string>

#include "app/program.h"
#include "platform/simulated/simulated_host.h"

namespace lunevra::rehearsal {

/// Prints what happens in a night, one line an event, in virtual local time. What the engine and
/// the shell hold is compared at the end of each turn of the main loop, so that a turn reads in one
/// order whatever the order of its assignments.
class Transcript {
 public:
  Transcript(SimulatedHost& host, std::ostream& out) : host_(host), out_(out) {}

  void note(const std::string& event);

  void begin(Program& program, const Desktop& desktop);
  void end();
  /// Called at the end of every turn.
  void compare();

 private:
  struct Snapshot {
    BlockingState state = BlockingState::idle;
    std::int64_t countdown = 3;
    std::string latch = "none";
    std::string release = "none";
    std::string message;
    std::size_t windows = 0;
    PresentationOptions presentation = PresentationOptions::standard;
  };
  [[nodiscard]] bool isUnchanged() const;
  [[nodiscard]] Snapshot take() const;
  void print(const Snapshot& now);

  SimulatedHost& host_;
  std::ostream& out_;
  Program* program_ = nullptr;
  Application* application_ = nullptr;
  Registration engineObservation_;
  bool engineChanged_ = false;
  std::uint64_t seenStoreChanges_ = 0;
  Snapshot last_;
};

}  // namespace lunevra::rehearsal
