#include "platform/desktop/floor_guard.h"

namespace lunevra {
namespace {

using std::chrono_literals::operator""ms;

constexpr auto grabRetryInterval = 25ms;

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
  if (news.isRemoved)
    runLoop_.async(lifetime_.guard([this] {
      if (floor_.isShown()) restore();
    }));
}

}  // namespace lunevra
