#include "ui/lock_screen/lock_screen_bridge.h"

namespace lunevra {

LockScreenBridge::LockScreenBridge(const Host& host, RunLoop& ticks, ShutdownManager& engine)
    : host_(host), ticks_(ticks), model_(host, ticks, engine) {
  takeQuote();
  observation_ = model_.observeChanges([this] {
    takeQuote();
    emit changed();
  });
}

void LockScreenBridge::takeQuote() {
  const auto& quote = model_.currentQuote();
  if (!quote) return;
  const Slot next{QString::fromStdString(quote->text),
                  QStringLiteral("\u2014 ") + QString::fromStdString(quote->author)};
  if (next.text == slots_[shownSlot_].text && next.author == slots_[shownSlot_].author) return;
  if (!slots_[shownSlot_].text.isEmpty()) shownSlot_ = 1 - shownSlot_;
  slots_[shownSlot_] = next;
}

LockScreenBridge::Phase LockScreenBridge::phase() const {
  switch (model_.screen()) {
    case PhaseScreen::none:
      return None;
    case PhaseScreen::countdown:
      return Countdown;
    case PhaseScreen::ambient:
      return Ambient;
  }
  return Ambient;
}

QString LockScreenBridge::lockedUntilText() const {
  return QString::fromStdString(model_.lockedUntilText());
}

QString LockScreenBridge::commitmentText() const {
  return QString::fromStdString(model_.commitmentText().value_or(std::string()));
}

}  // namespace lunevra
