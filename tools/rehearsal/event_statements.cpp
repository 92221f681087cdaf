#include <algorithm>
#include <string_view>

#include "engine/commitment.h"
#include "rehearsal/statements.h"
#include "rehearsal/view_rows.h"
#include "ui/settings/hardness_dashboard.h"

namespace lunevra::rehearsal {
namespace {

// An operation of the engine; nothing where the program does not run.
template <class Operation>
Action onEngine(Operation operation) {
  return [operation](Night& night) {
    if (night.isRunning()) operation(night.engine());
  };
}

Action parseLaunch(Words& words) {
  const bool isUnattached = words.takeIf("unattached");
  return [isUnattached](Night& night) { night.launch(!isUnattached); };
}

Action parseAppear(Words& /*words*/) {
  return [](Night& night) { night.appear(); };
}

Action parseKill(Words& /*words*/) {
  return [](Night& night) { night.kill(); };
}

Action parseQuit(Words& /*words*/) {
  return [](Night& night) { night.quit(); };
}

Action parsePass(Words& words) {
  return [duration = words.takeDuration()](Night& night) { night.pass(duration); };
}

Action parseUntil(Words& words) {
  return [time = words.takeTime()](Night& night) { night.passUntil(time); };
}

Action parseSleep(Words& words) {
  return [duration = words.takeDuration()](Night& night) { night.sleep(duration); };
}

Action parseSessionActive(Words& /*words*/) {
  return [](Night& night) { night.announce(workspace_notification::sessionDidBecomeActive); };
}

Action parseSpaceChanged(Words& /*words*/) {
  return [](Night& night) { night.announce(workspace_notification::activeSpaceDidChange); };
}

Action parsePowerOff(Words& /*words*/) {
  return [](Night& night) { night.announce(workspace_notification::willPowerOff); };
}

Action parseScreensChanged(Words& /*words*/) {
  return [](Night& night) { night.announceScreens(); };
}

Action parseResignedActive(Words& /*words*/) {
  return [](Night& night) { night.resignActive(); };
}

Action parseSchedule(Words& words) {
  const auto bedtime = words.takeTime();
  const auto wake = words.takeTime();
  if (bedtime.second != 0 || wake.second != 0)
    throw MalformedScript("a schedule has whole minutes");
  return onEngine([bedtime, wake](ShutdownManager& engine) {
    engine.updateBlockStart(bedtime.hour, bedtime.minute);
    engine.updateWakeTime(wake.hour, wake.minute);
  });
}

Action parseEnabled(Words& words) {
  return onEngine(
      [isEnabled = words.takeYesNo()](ShutdownManager& engine) { engine.setEnabled(isEnabled); });
}

LockDuration takeLockDuration(Words& words) {
  if (words.takeIf("oneDay")) return LockDuration::oneDay;
  if (words.takeIf("threeDays")) return LockDuration::threeDays;
  if (words.takeIf("oneWeek")) return LockDuration::oneWeek;
  if (words.takeIf("twoWeeks")) return LockDuration::twoWeeks;
  if (words.takeIf("oneMonth")) return LockDuration::oneMonth;
  throw MalformedScript("oneDay, threeDays, oneWeek, twoWeeks or oneMonth is wanted");
}

Action parseCommit(Words& words) {
  return [duration = takeLockDuration(words)](Night& night) {
    if (!night.isRunning()) return;
    auto& computer = night.computer();
    night.engine().activateCommitmentLock(
        commitmentEnd(duration, computer.calendar, computer.time.now()));
  };
}

Action parseCreateKey(Words& words) {
  std::optional<std::string> folder;
  if (!words.takeIf("cancel")) folder = words.takeWord("a folder, or cancel");
  return [folder](Night& night) {
    if (!night.isRunning()) return;
    night.computer().openPanels.answerNextWith(folder);
    night.engine().createPhysicalKey();
  };
}

Action parseCheckKey(Words& /*words*/) {
  return onEngine([](ShutdownManager& engine) { engine.refreshPhysicalKeyStatus(); });
}

Action parseFirewall(Words& words) {
  return [isOn = words.takeYesNo()](Night& night) {
    if (night.isRunning()) setFirewallEnabled(night.computer().host(), night.engine(), isOn);
  };
}

Action parseInstallHelper(Words& /*words*/) {
  return onEngine([](ShutdownManager& engine) { engine.installFirewallHelper(); });
}

Action parseUninstallHelper(Words& /*words*/) {
  return onEngine([](ShutdownManager& engine) { engine.uninstallFirewallHelper(); });
}

Action parseInstallAgent(Words& /*words*/) {
  return onEngine([](ShutdownManager& engine) { installEnforcementAgent(engine); });
}

Action parseKey(Words& words) {
  const auto send = [](KeyEventKind kind) { return [kind](Night& night) { night.sendKey(kind); }; };
  if (words.takeIf("down")) return send(KeyEventKind::keyDown);
  if (words.takeIf("up")) return send(KeyEventKind::keyUp);
  if (words.takeIf("flags")) return send(KeyEventKind::flagsChanged);
  throw MalformedScript("down, up or flags is wanted");
}

Action parseShow(Words& words) {
  return [view = takeView(words)](Night& night) {
    if (night.isRunning()) night.note(viewName(view), rowsOf(view, night));
  };
}

}  // namespace

const ActionParsers& eventStatements() {
  static const ActionParsers parsers{
      {"launch", parseLaunch},
      {"appear", parseAppear},
      {"kill", parseKill},
      {"quit", parseQuit},
      {"pass", parsePass},
      {"until", parseUntil},
      {"sleep", parseSleep},
      {"session-active", parseSessionActive},
      {"space-changed", parseSpaceChanged},
      {"screens-changed", parseScreensChanged},
      {"resigned-active", parseResignedActive},
      {"power-off", parsePowerOff},
      {"schedule", parseSchedule},
      {"enabled", parseEnabled},
      {"commit", parseCommit},
      {"create-key", parseCreateKey},
      {"check-key", parseCheckKey},
      {"firewall", parseFirewall},
      {"install-helper", parseInstallHelper},
      {"uninstall-helper", parseUninstallHelper},
      {"install-agent", parseInstallAgent},
      {"key", parseKey},
      {"show", parseShow},
  };
  return parsers;
}

Action parseAction(const std::string& keyword, Words& words) {
  for (const auto* statements : {&worldStatements(), &eventStatements()}) {
    const auto parser = statements->find(keyword);
    if (parser == statements->end()) continue;
    auto action = parser->second(words);
    words.expectEnd();
    return action;
  }
  throw MalformedScript("unknown statement " + keyword);
}

}  // namespace lunevra::rehearsal
