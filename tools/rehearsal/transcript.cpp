#include "rehearsal/transcript.h"

#include <ostream>

#include "rehearsal/names.h"
#include "rehearsal/world_text.h"

namespace lunevra::rehearsal {

void Transcript::note(const std::string& event) {
  out_ << timestamp(host_.time.now(), host_.calendar) << "  " << event << '\n';
}

void Transcript::begin(Program& program, const Desktop& desktop) {
  program_ = &program;
  application_ = &desktop.application;
  engineObservation_ =
      program.app().shutdownManager().observeChanges([this] { engineChanged_ = true; });
  engineChanged_ = true;
}

void Transcript::end() {
  engineObservation_.reset();
  program_ = nullptr;
  const auto latch = last_.latch;
  const auto release = last_.release;
  last_ = {};
  last_.latch = latch;
  last_.release = release;
}

bool Transcript::isUnchanged() const {
  return !engineChanged_ && seenStoreChanges_ == host_.storeChanges &&
         last_.windows == program_->app().appDelegate().lockWindows().size() &&
         last_.presentation == application_->presentationOptions();
}

void Transcript::compare() {
  if (program_ == nullptr || isUnchanged()) return;
  engineChanged_ = false;
  seenStoreChanges_ = host_.storeChanges;
  print(take());
}

Transcript::Snapshot Transcript::take() const {
  const auto& engine = program_->app().shutdownManager();
  return {engine.currentState(),
          engine.countdownValue(),
          describe(engine.activeNightLockUntil(), host_.calendar),
          describe(engine.physicalOverrideUntil(), host_.calendar),
          engine.physicalKeyMessage(),
          program_->app().appDelegate().lockWindows().size(),
          application_->presentationOptions()};
}

void Transcript::print(const Snapshot& now) {
  if (now.latch != last_.latch) note("latch " + now.latch);
  if (now.release != last_.release) note("release " + now.release);
  if (now.message != last_.message) note("message " + describe(now.message));
  const bool countdownBegan =
      now.state == BlockingState::countdown && last_.state != BlockingState::countdown;
  if (now.state != last_.state) note("state " + stateName(now.state));
  if (countdownBegan || now.countdown != last_.countdown)
    note("countdown " + std::to_string(now.countdown));
  if (now.presentation != last_.presentation)
    note("presentation " + presentationText(now.presentation));
  if (now.windows != last_.windows) note("windows " + std::to_string(now.windows));
  last_ = now;
}

}  // namespace lunevra::rehearsal
