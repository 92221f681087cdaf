#include "app/desktop_program.h"

#include <chrono>

#include "app/daytime.h"
#include "ui/lock_screen/lock_screen_content.h"

namespace lunevra {
namespace {

/// Before the toolkit's application object is made.
int& prepared(int& argumentCount) {
  DesktopHost::prepareQt();
  return argumentCount;
}

}  // namespace

DesktopProgram::DesktopProgram(const ProcessStart& start)
    : start_(start),
      application_(prepared(argumentCount_), start.arguments),
      computer_(start.paths, runLoop_, openPanels_),
      desktop_(start.floor, runLoop_, host_.log, host_.notificationCenter),
      program_(host_, desktop_.desktop(), lockScreenFactory(host_, runLoop_),
               daytimeContents(host_)),
      login_(start.paths.systemBus, runLoop_, desktop_.desktop().workspaceNotifications,
             [this] { program_.app().appDelegate().systemWillSleep(); }),
      calls_(start.instance),
      callNotifier_(calls_.fileDescriptor(), QSocketNotifier::Read) {
  connectDelegate();
  connectLoginSession();
  listenToCalls();
}

DesktopProgram::~DesktopProgram() {
  desktop_.onResignActive = nullptr;  // the windows that close now are no reason to come back
  desktop_.onPresentationOptionsChanged = nullptr;
}

void DesktopProgram::connectDelegate() {
  auto& delegate = program_.app().appDelegate();
  desktop_.onResignActive = [&delegate] { delegate.applicationDidResignActive(); };
  desktop_.onTerminateRequest = [&delegate] {
    return delegate.applicationShouldTerminate() == TerminateReply::now;
  };
  desktop_.handleSignals(start_.requests);
}

void DesktopProgram::connectLoginSession() {
  desktop_.onPresentationOptionsChanged = [this](PresentationOptions options) {
    // A panel is none of the windows that the lock orders out.
    if (contains(options, PresentationOptions::disableProcessSwitching)) openPanels_.cancel();
    login_.setTerminationInhibited(
        contains(options, PresentationOptions::disableSessionTermination));
    runLoop_.async([this] { keepCoverIfBroughtBack(); });  // the cover does not wait for an answer
  };
}

/// A killed program leaves its cover behind only where the agent will replace it. That there is one
/// is beyond doubt when it has started this process, even if nobody can be asked right now.
void DesktopProgram::keepCoverIfBroughtBack() {
  if (!start_.floor.isShown()) return;
  const auto status = host_.services.agent(EnforcementAgent::propertyListName).status();
  start_.floor.setOutlivesProcess(status == ServiceStatus::enabled ||
                                  (start_.isAgentStart && status == ServiceStatus::notFound));
}

/// Whoever starts the program once more wants to see it.
void DesktopProgram::listenToCalls() {
  QObject::connect(&callNotifier_, &QSocketNotifier::activated, &application_, [this] {
    if (calls_.take()) program_.app().bringMenuForward();
  });
}

int DesktopProgram::run() {
  program_.app().launch();
  runLoop_.async([this] { program_.app().windowGroupContentAppeared(); });
  runLoop_.async([this] { menuBarExtra_.emplace(program_.app(), runLoop_); });  // after the cover
  // The server may hear of a process's death only after the next one's start.
  runLoop_.after(std::chrono::seconds(1), [this] { start_.floor.removeLeftBehind(); });
  // A request like any other: the engine decides.
  if (start_.instance.followsQuit()) runLoop_.async([] { QGuiApplication::quit(); });
  return QGuiApplication::exec();
}

bool DesktopProgram::isLockOff() {
  const auto& engine = program_.app().shutdownManager();
  return engine.currentState() == BlockingState::idle && !engine.shouldPreventQuit();
}

}  // namespace lunevra
