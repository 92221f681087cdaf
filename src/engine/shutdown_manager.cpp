#include "engine/shutdown_manager.h"

#include <utility>

namespace lunevra {
namespace {

using std::chrono_literals::operator""ms;

constexpr auto timeCheckInterval = 5000ms;
constexpr auto timeCheckTolerance = 1000ms;
constexpr auto physicalKeyInterval = 1000ms;
constexpr auto physicalKeyTolerance = 200ms;
constexpr auto countdownInterval = 1000ms;
constexpr std::int64_t countdownStart = 3;

}  // namespace

ShutdownManager::ShutdownManager(const Host& host, SyncedStore& store,
                                 PhysicalKeyManager& keyManager, FirewallHelperClient& firewall)
    : host_(host),
      store_(store),
      keyManager_(keyManager),
      firewall_(firewall),
      agent_(host),
      latch_(host.defaults),
      override_(host.defaults) {
  const auto own = schedule();
  store_.seedScheduleIfNeeded(own.blockStartHour, own.blockStartMinute, own.wakeHour,
                              own.wakeMinute);
  applySyncedState();
  storeObservation_ = host_.notificationCenter.addObserver(SyncedStore::changedNotification,
                                                           [this] { syncedStoreChanged(); });
  refreshPhysicalKeyStatus();
  clearExpiredPhysicalOverride();
  clearExpiredNightLock();
  evaluateSchedule();
  startTimeCheckTimer();
  startPhysicalKeyTimer();
}

Registration ShutdownManager::observeChanges(std::function<void()> willChange) {
  return willChange_.add(std::move(willChange));
}

void ShutdownManager::startTimeCheckTimer() {
  timeCheckTimer_ = host_.runLoop.scheduleRepeating(timeCheckInterval, timeCheckTolerance, [this] {
    evaluateSchedule();
    refreshCommitmentState();
  });
  evaluateSchedule();
}

void ShutdownManager::startPhysicalKeyTimer() {
  physicalKeyTimer_ = host_.runLoop.scheduleRepeating(physicalKeyInterval, physicalKeyTolerance,
                                                      [this] { pollPhysicalKey(); });
}

void ShutdownManager::evaluateSchedule() {
  const auto now = host_.clock.now();
  const auto evaluation = evaluate({
      .isReleaseInForce = clearExpiredPhysicalOverride(),
      .isNightLatched = clearExpiredNightLock(),
      .isInWindow = isWithinBlockingWindow(now),
      .isEnabled = isEnabled_,
      .state = currentState_,
  });
  change(isBlockingTime_, evaluation.isBlockingTime);
  carryOut(evaluation.step);
}

void ShutdownManager::carryOut(EvaluationStep step) {
  switch (step) {
    case EvaluationStep::none:
      return;
    case EvaluationStep::endLockForOverride:
      return endLockForOverride();
    case EvaluationStep::beginCountdown:
      return beginCountdown();
    case EvaluationStep::latchNight:
      return latchNightLock();
    case EvaluationStep::latchNightAndBeginCountdown:
      latchNightLock();
      return beginCountdown();
    case EvaluationStep::returnToIdle:
      return returnToIdle();
  }
}

void ShutdownManager::beginCountdown() {
  if (currentState_ != BlockingState::idle) return;
  const auto now = host_.clock.now();
  const bool isDue = latch_.futureEnd(now) || (isEnabled_ && isWithinBlockingWindow(now));
  if (!isDue || isPhysicalOverrideActive()) return;
  latchNightLock();
  change(countdownValue_, countdownStart);
  enter(BlockingState::countdown);
  countdownTimer_ =
      host_.runLoop.scheduleRepeating(countdownInterval, 0ms, [this] { countdownTick(); });
}

void ShutdownManager::countdownTick() {
  if (countdownValue_ >= 2) {
    change(countdownValue_, countdownValue_ - 1);
    return;
  }
  countdownTimer_.reset();
  countdownFinished();
}

void ShutdownManager::countdownFinished() {
  if (!latch_.futureEnd(host_.clock.now()) || isPhysicalOverrideActive()) {
    returnToIdle();
    return;
  }
  enter(BlockingState::blocking);
  pollPhysicalKey();  // a key already inserted need not wait for the key timer
}

void ShutdownManager::returnToIdle() {
  countdownTimer_.reset();
  enter(BlockingState::idle);
  change(isBlockingTime_, false);
  clearExpiredPhysicalOverride();
  clearExpiredNightLock();
}

void ShutdownManager::endLockForOverride() {
  countdownTimer_.reset();
  enter(BlockingState::idle);
  change(isBlockingTime_, isWithinBlockingWindow(host_.clock.now()));
}

void ShutdownManager::enter(BlockingState state) {
  change(currentState_, state);
  host_.notificationCenter.post(blockingStateChangedNotification);
}

void ShutdownManager::latchNightLock() {
  const auto now = host_.clock.now();
  auto end = latch_.futureEnd(now);
  if (end) {
    latch_.renew(*end);
  } else {
    end = nextWakeDate(now);
    latch_.set(*end);
  }
  startFirewallBlock(*end);
}

bool ShutdownManager::clearExpiredNightLock() {
  return latch_.expire(host_.clock.now());
}

bool ShutdownManager::clearExpiredPhysicalOverride() {
  return override_.expire(host_.clock.now());
}

bool ShutdownManager::isPhysicalOverrideActive() const {
  return override_.isInForce(host_.clock.now());
}

bool ShutdownManager::shouldPreventQuit() const {
  return isEnabled_ || latch_.futureEnd(host_.clock.now()).has_value();
}

std::string ShutdownManager::lockEndTimeText() const {
  if (const auto end = latch_.futureEnd(host_.clock.now())) return timeText(*end);
  const auto wake = schedule();
  return formatTime12Hour(wake.wakeHour, wake.wakeMinute);
}

std::string ShutdownManager::timeText(Instant instant) const {
  if (const auto components = host_.calendar.components(instant))
    return formatTime12Hour(components->hour, components->minute);
  const auto wake = schedule();
  return formatTime12Hour(wake.wakeHour, wake.wakeMinute);
}

}  // namespace lunevra
