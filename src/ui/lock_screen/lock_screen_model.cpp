#include "ui/lock_screen/lock_screen_model.h"

#include <utility>

namespace lunevra {
namespace {

using std::chrono_literals::operator""ms;

constexpr auto clockInterval = 1000ms;
constexpr auto quoteInterval = 12000ms;
constexpr auto tickTolerance = 50ms;

PhaseScreen screenFor(BlockingState state) {
  switch (state) {
    case BlockingState::idle:
      return PhaseScreen::none;
    case BlockingState::countdown:
      return PhaseScreen::countdown;
    case BlockingState::warning:
    case BlockingState::blocking:
      return PhaseScreen::ambient;
  }
  return PhaseScreen::ambient;  // out of range: better the lock than a desktop that seems free
}

std::string twoDigits(int number) {
  const auto text = std::to_string(number);
  return text.size() < 2 ? '0' + text : text;
}

}  // namespace

LockScreenModel::LockScreenModel(const Host& host, RunLoop& ticks, ShutdownManager& engine)
    : host_(host), ticks_(ticks), engine_(engine) {
  engineObservation_ = engine.observeChanges([this] { refreshSoon(); });
  refresh();
}

Registration LockScreenModel::observeChanges(std::function<void()> changed) {
  return observers_.add(std::move(changed));
}

void LockScreenModel::setDrawn(bool isDrawn) {
  if (isDrawn_ == isDrawn) return;
  isDrawn_ = isDrawn;
  updateTicks();
  if (isDrawn_ && screen_ == PhaseScreen::ambient) clockTicked();
}

void LockScreenModel::refreshSoon() {
  if (isStale_) return;
  isStale_ = true;
  host_.runLoop.async(lifetime_.guard([this] { refresh(); }));
}

void LockScreenModel::refresh() {
  isStale_ = false;
  const auto previous = std::exchange(screen_, screenFor(engine_.currentState()));
  countdownValue_ = engine_.countdownValue();
  readTexts();
  if (screen_ == PhaseScreen::ambient && previous != PhaseScreen::ambient) enterAmbientScreen();
  updateTicks();
  observers_.notify();
}

void LockScreenModel::readTexts() {
  lockedUntilText_ = "Locked until " + engine_.lockEndTimeText();
  commitmentText_.reset();
  if (engine_.isLocked())
    commitmentText_ = "Settings locked for " + engine_.commitmentTimeRemainingText();
  hintText_ = engine_.isPhysicalKeyConfigured()
                  ? "Insert the trusted Lunevra USB key for an emergency release"
                  : "No early release is configured";
}

void LockScreenModel::enterAmbientScreen() {
  currentQuote_ = quotesProvider_.emplace(host_.random).randomQuote();
  clockText_ = currentTimeText();
}

void LockScreenModel::updateTicks() {
  if (!isDrawn_ || screen_ != PhaseScreen::ambient) {
    clockTimer_.reset();
    quoteTimer_.reset();
    return;
  }
  if (!clockTimer_)
    clockTimer_ = ticks_.scheduleRepeating(clockInterval, tickTolerance, [this] { clockTicked(); });
  if (!quoteTimer_)
    quoteTimer_ = ticks_.scheduleRepeating(quoteInterval, tickTolerance, [this] { quoteTicked(); });
}

void LockScreenModel::clockTicked() {
  auto text = currentTimeText();
  if (text == clockText_) return;
  clockText_ = std::move(text);
  readTexts();  // the remaining time goes by without the engine changing
  observers_.notify();
}

void LockScreenModel::quoteTicked() {
  auto quote = quotesProvider_->randomQuote();
  if (quote == currentQuote_) return;
  currentQuote_ = std::move(quote);
  observers_.notify();
}

std::string LockScreenModel::currentTimeText() const {
  const auto now = host_.calendar.components(host_.clock.now());
  if (!now) return {};  // better no time than a wrong one
  return twoDigits(now->hour) + ':' + twoDigits(now->minute);
}

}  // namespace lunevra
