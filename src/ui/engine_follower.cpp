#include "ui/engine_follower.h"

#include <utility>

namespace lunevra {
namespace {

using std::chrono_literals::operator""ms;

constexpr auto redrawInterval = 5000ms;
constexpr auto redrawTolerance = 500ms;

}  // namespace

EngineFollower::EngineFollower(RunLoop& runLoop, ShutdownManager& engine,
                               std::function<void()> read)
    : runLoop_(runLoop), read_(std::move(read)) {
  engineObservation_ = engine.observeChanges([this] { readSoon(); });
}

void EngineFollower::setDrawn(bool isDrawn) {
  if (isDrawn == static_cast<bool>(redrawTimer_)) return;
  redrawTimer_.reset();
  if (!isDrawn) return;
  redrawTimer_ = runLoop_.scheduleRepeating(redrawInterval, redrawTolerance, [this] { readNow(); });
  readNow();
}

void EngineFollower::readSoon() {
  if (std::exchange(isStale_, true)) return;
  runLoop_.async(lifetime_.guard([this] { readNow(); }));
}

void EngineFollower::readNow() {
  isStale_ = false;
  read_();
  observers_.notify();
}

}  // namespace lunevra
