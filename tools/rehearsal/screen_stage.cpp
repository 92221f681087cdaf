#include "rehearsal/screen_stage.h"

#include <algorithm>
#include <memory>

#include <QEventLoop>
#include <QTimer>

#include "engine/night_latch.h"
#include "rehearsal/names.h"
#include "ui/lock_screen/lock_screen_content.h"

namespace lunevra::rehearsal {
namespace {

using std::chrono_literals::operator""ms;

constexpr auto frame = 10ms;
constexpr auto pictureDelay = 500ms;

}  // namespace

ScreenStage::ScreenStage(SimulatedHost& computer, FloorWindow& floor, Photographer& photographer,
                         double speed)
    : computer_(computer),
      photographer_(photographer),
      speed_(speed),
      host_(floor, viewTicks_, computer.log, computer.notificationCenter),
      keyEvents_(computer.keyEvents, host_.desktop().keyEvents) {}

Registration ScreenStage::BothKeyEvents::addLocalMonitor(
    KeyEventKind kinds, std::function<KeyEventDisposition(KeyEventKind)> decide) {
  struct Pair {
    Registration first;
    Registration second;
  };
  const auto both = std::make_shared<Pair>(
      Pair{first_.addLocalMonitor(kinds, decide), second_.addLocalMonitor(kinds, decide)});
  return Registration([both] { *both = {}; });
}

Desktop ScreenStage::desktop() {
  const auto real = host_.desktop();
  return {real.displays, real.application, keyEvents_, computer_.workspaceNotifications};
}

LockContentFactory ScreenStage::lockContent() {
  return lockScreenFactory(computer_.host(), viewTicks_);
}

// A process that ends takes its windows and grabs with it; here they are in the rehearsal's own.
void ScreenStage::endProcess() {
  desktop().application.setPresentationOptions(PresentationOptions::standard);
  phase_.reset();
  halfWay_.reset();
}

void ScreenStage::pass(SimulatedTime::Duration duration) {
  using std::chrono::duration_cast;
  QEventLoop loop;
  QTimer timer;
  timer.setTimerType(Qt::PreciseTimer);
  auto left = std::chrono::duration<double, std::milli>(duration);
  auto last = RealTime::now();
  QObject::connect(&timer, &QTimer::timeout, [&] {
    const auto now = RealTime::now();
    const std::chrono::duration<double, std::milli> due = (now - last) * currentSpeed();
    const auto step = duration_cast<SimulatedTime::Duration>(std::min(due, left));
    if (step > 0ms || left < 1ms) {
      computer_.time.pass(step);
      left -= step;
      last = now;
    }
    takeDuePictures();
    if (left < 1ms && !pictureDue_) loop.quit();
  });
  timer.start(frame);
  loop.exec();
}

// A picture that is due shows what it is named after, so time does not run away from it.
double ScreenStage::currentSpeed() const {
  const bool isSlow = phase_ == BlockingState::countdown || pictureDue_;
  return isSlow ? std::min(speed_, 1.0) : speed_;
}

void ScreenStage::phaseIs(BlockingState state) {
  if (phase_ == state) return;
  const bool lockBegins =
      state != BlockingState::idle && phase_.value_or(BlockingState::idle) == BlockingState::idle;
  phase_ = state;
  if (!photographer_.isHired()) return;
  pictureDue_ = RealTime::now() + pictureDelay;
  if (state == BlockingState::idle) halfWay_.reset();
  if (!lockBegins) return;
  const auto now = computer_.time.now();
  if (const auto end = NightLatch(computer_.defaults).until()) halfWay_ = now + (*end - now) / 2;
}

void ScreenStage::takeDuePictures() {
  if (halfWay_ && computer_.time.now() >= *halfWay_) {
    halfWay_.reset();
    pictureDue_ = RealTime::now() + pictureDelay;
  }
  if (!pictureDue_ || RealTime::now() < *pictureDue_) return;
  pictureDue_.reset();
  photographer_.takePictures(stateName(phase_.value_or(BlockingState::idle)));
}

}  // namespace lunevra::rehearsal
