#include "soak/night_watch.h"

#include <algorithm>

namespace lunevra::soak {
namespace {

using namespace std::chrono_literals;

constexpr auto evaluated = 6s;      // an evaluation each five, with tolerance
constexpr auto countedDown = 10s;   // ... and the countdown
constexpr auto polled = 1500ms;     // the key, each second
constexpr auto reasserted = 1s;     // displays and windows, each 0.75 s
constexpr auto longestNight = 25h;  // on the day on which the clock is put back
constexpr std::size_t mostTimers = 5;

bool isUp(BlockingState state) {
  return state != BlockingState::idle;
}

}  // namespace

void NightWatch::require(bool condition, const char* rule) {
  if (!condition && !breach_) breach_ = rule;
}

void NightWatch::isAbout(const std::string& statement, bool isKeyInserted) {
  isKeyInserted_ = isKeyInserted;
  if (statement == "launch" && !night_.isRunning()) isEnding_ = false;
  if (statement == "power-off" && night_.isRunning()) isEnding_ = true;
  mayQuit_ =
      statement != "quit" || !night_.isRunning() || isEnding_ ||
      (!isUp(night_.engine().currentState()) && !night_.engine().isEnabled() && isOver(end_));
}

void NightWatch::look() {
  now_ = night_.computer().time.now();
  uptime_ = night_.computer().time.uptime();
  followRelease();
  followNight();
  if (!night_.isRunning()) {
    require(mayQuit_, "a quit was accepted in the night");
    wasUp_ = false;
    for (auto* stretch : {&due_, &open_, &missed_, &keyIn_, &steady_})
      static_cast<void>(stretch->lasts(false, uptime_));
    return;
  }
  followCommitment();
  watchPhase();
  watchScreen();
  require(night_.computer().time.repeatingTimers() <= mostTimers, "timers pile up");
}

/// A night that has begun keeps its end until that has passed or a key has released it.
void NightWatch::followNight() {
  const auto end = night_.latch().until();
  if (!isOver(end_) && isOver(release_)) require(end == end_, "a running night lost its end");
  require(!end || end == stored_ || *end - now_ <= longestNight, "a night is longer than a day");
  stored_ = end;
  end_ = isOver(end) ? std::nullopt : end;
}

/// A release comes of the key alone and ends with the night that it has ended.
void NightWatch::followRelease() {
  const auto release = night_.release().until();
  if (!isOver(release_)) require(release == release_, "a release was changed");
  if (!isOver(release) && release != release_) {
    require(isKeyInserted_, "a night was released without the key");
    require(isOver(end_) || release == end_, "a release does not end with its night");
  }
  release_ = isOver(release) ? std::nullopt : release;
}

void NightWatch::followCommitment() {
  const auto end = night_.engine().isLocked() ? night_.engine().lockEndDate() : std::nullopt;
  if (!isOver(commitment_)) require(end && *end >= *commitment_, "a commitment was shortened");
  commitment_ = isOver(end) ? std::nullopt : end;
}

bool NightWatch::isNightDue() const {
  const auto schedule = night_.engine().schedule();
  const auto clock = night_.computer().calendar.components(now_);
  if (!night_.engine().isEnabled() || !clock) return false;
  const auto minutes = [](auto hour, auto minute) { return hour * 60 + minute; };
  const auto now = minutes(clock->hour, clock->minute);
  const auto bedtime = minutes(schedule.blockStartHour, schedule.blockStartMinute);
  const auto wake = minutes(schedule.wakeHour, schedule.wakeMinute);
  return bedtime <= wake ? now >= bedtime && now < wake : now >= bedtime || now < wake;
}

void NightWatch::watchPhase() {
  const auto state = night_.engine().currentState();
  const bool isReleased = !isOver(release_);
  const bool isNight = !isOver(end_) && !isReleased;
  const auto due = due_.lasts(isNight, uptime_);
  require(!wasUp_ || isUp(state) || !isNight, "it opened in the night");
  require(due < evaluated || isUp(state), "it does not lock in a night");
  require(due < countedDown || state == BlockingState::blocking, "it counts for ever");
  wasUp_ = isUp(state);

  require(missed_.lasts(isNightDue() && !isReleased && !isNight, uptime_) < evaluated,
          "bedtime has come and no night has begun");
  require(
      open_.lasts(!isNight && !(isNightDue() && !isReleased), uptime_) < evaluated || !isUp(state),
      "it stays shut");
  require(keyIn_.lasts(isKeyInserted_ && isUp(state), uptime_) < polled,
          "the key does not open it");
}

void NightWatch::watchScreen() {
  const auto screens = night_.desktop().displays.screens();
  const auto state = night_.engine().currentState();
  const auto& windows = night_.delegate().lockWindows();
  const auto options = night_.desktop().application.presentationOptions();
  const auto steady = steady_.lasts(isUp(state) && screens == screens_, uptime_);
  screens_ = screens;
  if (!isUp(state)) {
    require(windows.empty(), "lock windows by day");
    require(options == PresentationOptions::standard, "input is held by day");
    return;
  }
  require(options != PresentationOptions::standard, "input is free in the night");
  if (steady < reasserted) return;
  const auto isCovered = [&](const Screen& screen) {
    return std::any_of(windows.begin(), windows.end(),
                       [&](const auto& lock) { return lock.window().frame() == screen.frame; });
  };
  require(
      std::all_of(screens.begin(), screens.end(), isCovered) && windows.size() == screens.size(),
      "a display is not covered");
}

}  // namespace lunevra::soak
