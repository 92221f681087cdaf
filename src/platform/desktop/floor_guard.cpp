#include "platform/desktop/floor_guard.h"

namespace lunevra {
namespace {

using std::chrono_literals::operator""ms;

constexpr auto grabRetryInterval = 25ms;
constexpr auto restBetweenReactions = 10ms;

}  // namespace

FloorGuard::FloorGuard(FloorWindow& floor, RunLoop& runLoop, Log& log)
    : floor_(floor), runLoop_(runLoop), log_(log) {}

void FloorGuard::setUp(bool isUp) {
  if (isUp && floor_.isShown()) {
    holdInput();
  } else if (isUp) {
    restore();
  } else {
    grabRetry_.reset();
    floor_.hide();
    readNews();
  }
}

void FloorGuard::restore() {
  floor_.show();
  holdInput();
}

void FloorGuard::holdInput() {
  if (!floor_.isShown()) return;
  if (floor_.holdInput()) {
    grabRetry_.reset();
  } else if (!grabRetry_) {
    log_.line("Keyboard or pointer are held by another program; trying until they are free.");
    grabRetry_ = runLoop_.scheduleRepeating(grabRetryInterval, 0ms, [this] { holdInput(); });
  }
  readNews();
}

void FloorGuard::readNews() {
  const auto news = floor_.readNews();
  for (const auto& error : news.errors) log_.line(error);
  if (news.isConnectionLost) {
    if (onConnectionLost) onConnectionLost();
    return;
  }
  if (!floor_.isShown()) return;
  if (news.isDesktopSwitched && onDesktopSwitched) onDesktopSwitched();
  // In a later turn: this may be the news that came while the floor was being put up.
  if (news.isRemoved) runLoop_.async(lifetime_.guard([this] { restoreRemoved(); }));
  if (news.isDisturbed) disturbed();
}

void FloorGuard::restoreRemoved() {
  if (!floor_.isShown()) return;
  restore();
  disturbed();
}

void FloorGuard::disturbed() {
  if (isResting_) {
    wasDisturbedMeanwhile_ = true;
    return;
  }
  isResting_ = true;
  wasDisturbedMeanwhile_ = false;
  runLoop_.after(restBetweenReactions, lifetime_.guard([this] {
    isResting_ = false;
    if (wasDisturbedMeanwhile_ && floor_.isShown()) disturbed();
  }));
  if (onDisturbed) onDisturbed();
}

}  // namespace lunevra
