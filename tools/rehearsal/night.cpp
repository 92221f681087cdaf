#include "rehearsal/night.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "rehearsal/names.h"

namespace lunevra::rehearsal {
namespace {

constexpr DateComponents defaultStart{2026, 1, 1, 12, 0, 0};
constexpr Rect defaultDisplay{0, 0, 1440, 900};

bool showsSameTime(const std::optional<DateComponents>& date, const TimeOfDay& time) {
  return date && date->hour == time.hour && date->minute == time.minute &&
         date->second == time.second;
}

// The first instant after `now` at which the wall clock shows this time. Of a time that comes twice
// the calendar gives the second occurrence; the first lies one change of offset before it.
std::optional<Instant> nextOccurrence(const TimeOfDay& time, Instant now,
                                      const Calendar& calendar) {
  constexpr std::array changesOfOffset{7200.0, 3600.0, 1800.0, 0.0};
  constexpr int daysToTry = 4;
  for (int day = 0; day < daysToTry; ++day) {
    const auto later = calendar.addingDays(now, day);
    auto date = later ? calendar.components(*later) : std::nullopt;
    if (!date) return std::nullopt;
    date->hour = time.hour;
    date->minute = time.minute;
    date->second = time.second;
    const auto candidate = calendar.instant(*date);
    if (!candidate) return std::nullopt;
    for (const double change : changesOfOffset) {
      const Instant occurrence{candidate->secondsSince1970 - change};
      if (occurrence > now && showsSameTime(calendar.components(occurrence), time))
        return occurrence;
    }
  }
  return std::nullopt;
}

}  // namespace

Night::Night(const StageFactory& makeStage, std::uint64_t seed, std::ostream& transcript)
    : stage_(makeStage(computer_)), transcript_(computer_, transcript) {
  computer_.random.seed(seed);
  computer_.time.setWallClock(instant(defaultStart));
  computer_.time.setTurnObserver([this] {
    transcript_.compare();
    if (isRunning()) stage_->phaseIs(engine().currentState());
  });
  computer_.log.setObserver(
      [this](const std::string& line) { transcript_.note("log " + describe(line)); });
  computer_.onFirewallRequest = [this](const FirewallRequest& request) {
    transcript_.note("firewall " + requestText(request, computer_.calendar));
  };
}

Night::~Night() {
  if (isRunning()) end();
}

Instant Night::instant(const DateComponents& date) const {
  return computer_.calendar.instant(date).value_or(computer_.time.now());
}

void Night::launch(bool contentAppears) {
  if (isRunning()) return;  // a second start ends by itself
  hasStarted_ = true;
  if (!computer_.displays.isAnyNamed()) computer_.displays.set("Built-in", defaultDisplay);
  computer_.log.clear();
  computer_.notificationCenter.forgetCounts();
  computer_.workspaceNotifications.forgetCounts();
  for (const auto* service : {&computer_.services.agent(""), &computer_.services.daemon(""),
                              &computer_.services.mainApp()})
    registrationsAtLaunch_[service] = service->registrations();
  wasQuitAccepted_.reset();
  wasKeyPassed_.reset();

  transcript_.note("launched");
  stage_->beginProcess();
  program_ = std::make_unique<Program>(computer_.host(), desktop(), stage_->lockContent());
  program_->app().launch();
  transcript_.begin(*program_, desktop());
  if (contentAppears) program_->app().windowGroupContentAppeared();
  settle();
}

void Night::appear() {
  if (isRunning()) program_->app().windowGroupContentAppeared();
  settle();
}

void Night::kill() {
  if (!isRunning()) return;
  end();
  transcript_.note("killed");
}

// The process is gone: nothing of it runs any more, not even what it would do at a regular end.
void Night::end() {
  transcript_.end();
  program_.reset();
  stage_->endProcess();
  computer_.time.dropProcess();
}

void Night::quit() {
  if (!isRunning()) return;
  wasQuitAccepted_ = delegate().applicationShouldTerminate() == TerminateReply::now;
  transcript_.note(*wasQuitAccepted_ ? "quit accepted" : "quit refused");
  if (*wasQuitAccepted_) end();
}

void Night::sendKey(KeyEventKind kind) {
  if (!isRunning()) return;
  wasKeyPassed_ = computer_.keyEvents.send(kind) == KeyEventDisposition::passOn;
  settle();
}

void Night::passUntil(const TimeOfDay& time) {
  const auto now = computer_.time.now();
  const auto next = nextOccurrence(time, now, computer_.calendar);
  if (!next) return;
  const auto seconds = (*next - now).count();
  pass(SimulatedTime::Duration{std::llround(seconds * 1000.0)});
}

void Night::sleep(SimulatedTime::Duration duration) {
  computer_.time.sleep(duration);
  transcript_.note("woke");
  announce(workspace_notification::didWake);
}

void Night::announce(std::string_view workspaceNotification) {
  desktop().workspaceNotifications.post(workspaceNotification);
  settle();
}

void Night::announceScreens() {
  computer_.notificationCenter.post(didChangeScreenParametersNotification);
  settle();
}

void Night::resignActive() {
  computer_.application.resignActive();
  if (isRunning()) delegate().applicationDidResignActive();
  settle();
}

void Night::note(const std::string& view, const std::vector<std::string>& rows) {
  for (const auto& row : rows) transcript_.note(view + "  " + row);
}

int Night::registrationsSinceLaunch(const SimulatedService& service) const {
  const auto atLaunch = registrationsAtLaunch_.find(&service);
  return service.registrations() -
         (atLaunch == registrationsAtLaunch_.end() ? 0 : atLaunch->second);
}

}  // namespace lunevra::rehearsal
