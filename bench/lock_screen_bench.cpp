// What the lock screen costs: its first frame, and the processor while it is shown. Runs on the
// display of the session it is started in.

#include <benchmark/benchmark.h>
#include <memory>
#include <sys/resource.h>
#include <vector>

#include <QtCore/qelapsedtimer.h>
#include <QtCore/qeventloop.h>
#include <QtCore/qtimer.h>
#include <QtGui/qguiapplication.h>
#include <QtQuick/qquickwindow.h>

#include "engine/shutdown_manager.h"
#include "platform/desktop/qt_run_loop.h"
#include "platform/simulated/simulated_host.h"
#include "ui/lock_screen/lock_screen_content.h"

namespace lunevra {
namespace {

using std::chrono_literals::operator""ms;
using std::chrono_literals::operator""s;

constexpr QSize displaySize(1920, 1080);

void wait(std::chrono::milliseconds duration) {
  QEventLoop loop;
  QTimer::singleShot(duration, &loop, &QEventLoop::quit);
  loop.exec();
}

/// A real engine on a simulated computer, whose time passes as the real one does.
class Evening {
 public:
  void beginNight() {
    setTime(22);
    engine_.evaluateSchedule();
    computer_.time.drainMainQueue();
  }
  void beginBlocking() {
    beginNight();
    computer_.time.pass(3s);
  }

  /// Until the display shows its lock screen.
  void addDisplay() {
    auto& display = displays_.emplace_back();
    display.window = std::make_unique<QQuickWindow>();
    auto& window = *display.window;
    window.setFlags(Qt::FramelessWindowHint | Qt::BypassWindowManagerHint);
    window.setGeometry(QRect(QPoint(x_, 0), displaySize));
    x_ += displaySize.width();
    QEventLoop drawing;
    QObject::connect(&window, &QQuickWindow::frameSwapped, &drawing, &QEventLoop::quit);
    window.show();
    display.content = contents_(engine_);
    std::static_pointer_cast<QuickContent>(display.content)->attach(window);
    drawing.exec();
  }

 private:
  struct Display {
    std::unique_ptr<QQuickWindow> window;
    std::shared_ptr<WindowContent> content;  // goes before its window
  };
  bool setTime(int hour) {
    computer_.time.setWallClock(*computer_.calendar.instant(
        {.year = 2026, .month = 3, .day = 14, .hour = hour, .minute = 0}));
    return true;
  }

  SimulatedHost computer_;
  bool isAfternoon_ = setTime(15);  // before the engine first looks at the clock
  SyncedStore store_{computer_.host()};
  PhysicalKeyManager keyManager_{computer_.host()};
  FirewallHelperClient firewall_{computer_.host()};
  ShutdownManager engine_{computer_.host(), store_, keyManager_, firewall_};
  QtRunLoop ticks_;
  Registration flow_ =
      ticks_.scheduleRepeating(250ms, 25ms, [this] { computer_.time.pass(250ms); });
  LockContentFactory contents_ = lockScreenFactory(computer_.host(), ticks_);
  std::vector<Display> displays_;
  int x_ = 0;
};

double processorSeconds() {
  rusage usage{};
  ::getrusage(RUSAGE_SELF, &usage);
  const auto seconds = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
  };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/// Lets the screens be and counts what part of a core they take.
void watch(benchmark::State& state, std::chrono::milliseconds duration) {
  for ([[maybe_unused]] auto _ : state) {
    QElapsedTimer elapsed;
    elapsed.start();
    const double before = processorSeconds();
    wait(duration);
    const double part =
        (processorSeconds() - before) / (static_cast<double>(elapsed.elapsed()) / 1000.0);
    state.counters["percentOfACore"] = 100.0 * part;
    state.counters["processorSecondsAMinute"] = 60.0 * part;
  }
}

void firstFrame(benchmark::State& state, void (Evening::*begin)()) {
  for ([[maybe_unused]] auto _ : state) {
    state.PauseTiming();
    auto evening = std::make_unique<Evening>();
    (*evening.*begin)();
    state.ResumeTiming();
    for (std::int64_t display = 0; display < state.range(0); ++display) evening->addDisplay();
    state.PauseTiming();
    evening.reset();
    state.ResumeTiming();
  }
}
void firstFrameOfCountdown(benchmark::State& state) {
  firstFrame(state, &Evening::beginNight);
}
void firstFrameOfBlocking(benchmark::State& state) {
  firstFrame(state, &Evening::beginBlocking);
}
void coldFrame(benchmark::internal::Benchmark* frames) {
  frames->Arg(1)->Iterations(1)->UseRealTime()->Unit(benchmark::kMillisecond);
}
void warmFrames(benchmark::internal::Benchmark* frames) {
  frames->Arg(1)->Arg(3)->Iterations(5)->UseRealTime()->Unit(benchmark::kMillisecond);
}
BENCHMARK(firstFrameOfCountdown)->Name("firstFrameOfAll")->Apply(coldFrame);
BENCHMARK(firstFrameOfCountdown)->Apply(warmFrames);
BENCHMARK(firstFrameOfBlocking)->Apply(warmFrames);

void blocking(benchmark::State& state) {
  Evening evening;
  evening.beginBlocking();
  for (std::int64_t display = 0; display < state.range(0); ++display) evening.addDisplay();
  wait(1s);
  watch(state, 24s);  // three breaths, two quotes
}
BENCHMARK(blocking)->Arg(1)->Arg(3)->Iterations(1)->UseRealTime();

void countdown(benchmark::State& state) {
  Evening evening;
  evening.beginNight();
  for (std::int64_t display = 0; display < state.range(0); ++display) evening.addDisplay();
  watch(state, 2500ms);
}
BENCHMARK(countdown)->Arg(1)->Arg(3)->Iterations(1)->UseRealTime();

}  // namespace
}  // namespace lunevra

int main(int argc, char** argv) {
  // Where no session bus runs, Qt would start one in the middle of the first frame.
  if (!qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS"))
    qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
  QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
  const QGuiApplication application(argc, argv);
  QGuiApplication::setQuitOnLastWindowClosed(false);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
