#include "rehearsal/expectations.h"

#include <algorithm>
#include <map>

#include "rehearsal/names.h"
#include "rehearsal/statements.h"
#include "rehearsal/view_rows.h"
#include "rehearsal/world_text.h"
#include "store/settings_keys.h"

namespace lunevra::rehearsal {
namespace {

using Find = std::function<std::string(Night&)>;

std::string yesNo(bool flag) {
  return flag ? "yes" : "no";
}

std::string rectText(const Rect& rect) {
  return describe(rect.x) + " " + describe(rect.y) + " " + describe(rect.width) + " " +
         describe(rect.height);
}

std::string twoDigits(std::int64_t number) {
  return (number >= 0 && number < 10 ? "0" : "") + std::to_string(number);
}

Expectation fixed(std::string expected, Find find) {
  return [expected = std::move(expected), find = std::move(find)](Night& night) {
    return Comparison{expected, find(night)};
  };
}

// For what only a running program has.
Find whileRunning(Find find) {
  return [find = std::move(find)](Night& night) {
    return night.isRunning() ? find(night) : "the program not running";
  };
}

Expectation running(std::string expected, Find find) {
  return fixed(std::move(expected), whileRunning(std::move(find)));
}

// `none` or an instant, which is one only in the zone that the night has by then.
Expectation parseInstantExpectation(Words& words, Find find) {
  if (words.takeIf("none")) return fixed("none", std::move(find));
  return [date = words.takeInstant(), find = std::move(find)](Night& night) {
    return Comparison{describe(std::optional(night.instant(date)), night.computer().calendar),
                      find(night)};
  };
}

Expectation parseRunning(Words& words) {
  return fixed(yesNo(words.takeYesNo()), [](Night& night) { return yesNo(night.isRunning()); });
}

Expectation parseState(Words& words) {
  const auto name = words.takeWord("a phase");
  for (const auto state : {BlockingState::idle, BlockingState::warning, BlockingState::countdown,
                           BlockingState::blocking})
    if (stateName(state) == name)
      return running(name, [](Night& night) { return stateName(night.engine().currentState()); });
  throw MalformedScript("unknown phase " + name);
}

Expectation parseCountdown(Words& words) {
  return running(std::to_string(words.takeInteger("a number")),
                 [](Night& night) { return std::to_string(night.engine().countdownValue()); });
}

template <bool (ShutdownManager::*property)() const>
Expectation parseEngineFlag(Words& words) {
  return running(yesNo(words.takeYesNo()),
                 [](Night& night) { return yesNo((night.engine().*property)()); });
}

Expectation parseSchedule(Words& words) {
  const auto bedtime = words.takeTime();
  const auto wake = words.takeTime();
  const auto text = [](std::int64_t hour, std::int64_t minute) {
    return twoDigits(hour) + ":" + twoDigits(minute);
  };
  const auto expected = text(bedtime.hour, bedtime.minute) + " " + text(wake.hour, wake.minute);
  return running(expected, [text](Night& night) {
    const auto schedule = night.engine().schedule();
    return text(schedule.blockStartHour, schedule.blockStartMinute) + " " +
           text(schedule.wakeHour, schedule.wakeMinute);
  });
}

template <class Text>
Expectation runningText(Words& words, Text text) {
  return running(describe(words.takeText("a text")),
                 [text](Night& night) { return describe(std::string(text(night))); });
}

Expectation parseCommitment(Words& words) {
  return runningText(words,
                     [](Night& night) { return night.engine().commitmentTimeRemainingText(); });
}

Expectation parseMessage(Words& words) {
  return runningText(words, [](Night& night) { return night.engine().physicalKeyMessage(); });
}

Expectation parseLockEnd(Words& words) {
  return runningText(words, [](Night& night) { return night.engine().lockEndTimeText(); });
}

Expectation parseCommitmentEnd(Words& words) {
  return parseInstantExpectation(words, whileRunning([](Night& night) {
                                   return describe(night.engine().lockEndDate(),
                                                   night.computer().calendar);
                                 }));
}

Expectation parseLatch(Words& words) {
  return parseInstantExpectation(words, [](Night& night) {
    return describe(night.latch().until(), night.computer().calendar);
  });
}

Expectation parseRelease(Words& words) {
  return parseInstantExpectation(words, [](Night& night) {
    return describe(night.release().until(), night.computer().calendar);
  });
}

Expectation parseGeneration(Words& words) {
  return fixed(std::to_string(words.takeInteger("a generation")), [](Night& night) {
    auto& defaults = night.computer().defaults;
    auto* const suite = defaults.suite(settings_key::appGroup);
    const UserDefaults& local = suite != nullptr ? *suite : defaults.standard();
    return std::to_string(local.integer(settings_key::activeUnlockGeneration).value_or(0));
  });
}

Find storedValue(const std::string& store, const std::string& key) {
  return [store, key](Night& night) {
    auto& computer = night.computer();
    const auto value = store == "standard" ? computer.defaults.standard().object(key)
                       : store == "group"  ? computer.defaults.group().object(key)
                                           : computer.cloud.object(key);
    return describe(value, computer.calendar);
  };
}

// A number reads as the shortest text that gives it again, so that 0.50 equals a stored 0.5.
std::string numberText(Words& words) {
  const auto word = words.takeWord("a value");
  Words again(word);
  const bool isWhole =
      word.find_first_not_of("0123456789", word.starts_with('-') ? 1 : 0) == std::string::npos;
  return isWhole ? std::to_string(again.takeInteger("a value"))
                 : describe(again.takeNumber("a value"));
}

Expectation parseStored(Words& words) {
  const auto store = words.takeWord("a store");
  if (store != "standard" && store != "group" && store != "cloud")
    throw MalformedScript("unknown store " + store);
  const auto find = storedValue(store, words.takeWord("a key"));
  if (words.takeIf("none")) return fixed("none", find);
  if (words.takeIf("yes")) return fixed("yes", find);
  if (words.takeIf("no")) return fixed("no", find);
  if (words.isDateNext()) return parseInstantExpectation(words, find);
  if (!words.isTextNext()) return fixed(numberText(words), find);
  auto texts = describe(words.takeText("a text"));
  while (!words.isAtEnd()) texts += " " + describe(words.takeText("a text"));
  return fixed(texts, find);
}

Expectation parseWindows(Words& words) {
  return running(std::to_string(words.takeInteger("a number")), [](Night& night) {
    return std::to_string(night.delegate().lockWindows().size());
  });
}

Expectation parseWindow(Words& words) {
  const auto name = words.takeWord("a display's name");
  Rect frame;
  frame.x = words.takeNumber("x");
  frame.y = words.takeNumber("y");
  frame.width = words.takeNumber("width");
  frame.height = words.takeNumber("height");
  return running(rectText(frame), [name](Night& night) -> std::string {
    for (const auto& lockWindow : night.delegate().lockWindows())
      if (lockWindow.window().screenName() == name) return rectText(lockWindow.window().frame());
    return "no lock window on " + name;
  });
}

Expectation parseKeyWindow(Words& words) {
  return running(words.takeWord("a display's name, or none"), [](Night& night) -> std::string {
    const auto keyWindow = night.desktop().application.keyWindow();
    for (const auto& lockWindow : night.delegate().lockWindows())
      if (lockWindow.is(keyWindow)) return lockWindow.window().screenName().value_or("none");
    return "none";
  });
}

Expectation parsePresentation(Words& words) {
  const auto word = words.takeWord("presentation options");
  if (!word.starts_with("0x") || word.size() < 3 || word.size() > 10 ||
      word.find_first_not_of("0123456789abcdefABCDEF", 2) != std::string::npos)
    throw MalformedScript("not a hexadecimal number (0x…): " + word);
  return running(hexText(std::stoull(word, nullptr, 16)), [](Night& night) {
    return presentationText(night.desktop().application.presentationOptions());
  });
}

Expectation parseActive(Words& words) {
  return running(yesNo(words.takeYesNo()),
                 [](Night& night) { return yesNo(night.desktop().application.isActive()); });
}

std::string takeOneOf(Words& words, const std::string& first, const std::string& second) {
  if (words.takeIf(first)) return first;
  if (words.takeIf(second)) return second;
  throw MalformedScript(first + " or " + second + " is wanted");
}

// An accepted quit ends the process, so its outcome is known without it.
Expectation parseQuit(Words& words) {
  return fixed(takeOneOf(words, "refused", "accepted"), [](Night& night) -> std::string {
    const auto accepted = night.wasQuitAccepted();
    if (!accepted) return "no request to quit";
    return *accepted ? "accepted" : "refused";
  });
}

Expectation parseKeyEvent(Words& words) {
  return running(takeOneOf(words, "passed", "discarded"), [](Night& night) -> std::string {
    const auto passed = night.wasKeyPassed();
    if (!passed) return "no key event";
    return *passed ? "passed" : "discarded";
  });
}

std::string lastRequest(Night& night) {
  const auto& requests = night.computer().firewallHelper.requests();
  return requests.empty() ? "none" : requestText(requests.back(), night.computer().calendar);
}

std::int64_t takeNamedNumber(Words& words, const std::string& name) {
  if (!words.takeIf(name)) throw MalformedScript(name + " is missing");
  return words.takeInteger(name);
}

Expectation parseFirewall(Words& words) {
  if (words.takeIf("none")) return fixed("none", lastRequest);
  FirewallRequest request;
  if (words.takeIf("clear")) {
    request.kind = FirewallRequest::Kind::clear;
    request.generation = takeNamedNumber(words, "generation");
    return [request](Night& night) {
      return Comparison{requestText(request, night.computer().calendar), lastRequest(night)};
    };
  }
  if (!words.takeIf("start")) throw MalformedScript("none, start or clear is wanted");
  const auto until = words.takeInstant();
  request.generation = takeNamedNumber(words, "generation");
  request.domainCount = static_cast<std::size_t>(takeNamedNumber(words, "domains"));
  return [request, until](Night& night) mutable {
    request.until = night.instant(until);
    return Comparison{requestText(request, night.computer().calendar), lastRequest(night)};
  };
}

Expectation parseFirewallRequests(Words& words) {
  return fixed(std::to_string(words.takeInteger("a number")), [](Night& night) {
    return std::to_string(night.computer().firewallHelper.requests().size());
  });
}

Expectation parsePanel(Words& words) {
  return running(takeOneOf(words, "shown", "none"), [](Night& night) -> std::string {
    return night.computer().openPanels.wasShown() ? "shown" : "none";
  });
}

Expectation parseRegistrations(Words& words) {
  const auto find = parseService(words);
  return running(std::to_string(words.takeInteger("a number")), [find](Night& night) {
    return std::to_string(night.registrationsSinceLaunch(find(night.computer())));
  });
}

Expectation parseTimers(Words& words) {
  return running(std::to_string(words.takeInteger("a number")), [](Night& night) {
    return std::to_string(night.computer().time.repeatingTimers());
  });
}

Expectation parsePosted(Words& words) {
  const auto name = words.takeWord("a notification's name");
  return running(std::to_string(words.takeInteger("a number")), [name](Night& night) {
    auto& computer = night.computer();
    return std::to_string(computer.notificationCenter.takeCount(name) +
                          computer.workspaceNotifications.takeCount(name));
  });
}

bool hasLogged(Night& night, const std::string& text) {
  const auto& lines = night.computer().log.lines();
  return std::find(lines.begin(), lines.end(), text) != lines.end();
}

Expectation parseLog(Words& words) {
  const auto text = words.takeText("a log line");
  return running("log " + describe(text), [text](Night& night) {
    return (hasLogged(night, text) ? "log " : "no log ") + describe(text);
  });
}

Expectation parseNoLog(Words& words) {
  const auto text = words.takeText("a log line");
  return running("no log " + describe(text), [text](Night& night) {
    return (hasLogged(night, text) ? "log " : "no log ") + describe(text);
  });
}

std::string shownText(const std::string& view, bool isShown, const std::string& text) {
  return view + (isShown ? " showing " : " hiding ") + describe(text);
}

template <bool isWanted>
Expectation parseView(Words& words) {
  const auto view = takeView(words);
  const auto text = words.takeText("a text");
  return running(shownText(viewName(view), isWanted, text), [view, text](Night& night) {
    const auto rows = rowsOf(view, night);
    const bool isShown = std::any_of(rows.begin(), rows.end(), [&](const std::string& row) {
      return row.find(text) != std::string::npos;
    });
    return shownText(viewName(view), isShown, text);
  });
}

using Parser = Expectation (*)(Words&);

const std::map<std::string, Parser, std::less<>>& parsers() {
  static const std::map<std::string, Parser, std::less<>> table{
      {"running", parseRunning},
      {"state", parseState},
      {"countdown", parseCountdown},
      {"blocking-time", parseEngineFlag<&ShutdownManager::isBlockingTime>},
      {"enabled", parseEngineFlag<&ShutdownManager::isEnabled>},
      {"schedule", parseSchedule},
      {"committed", parseEngineFlag<&ShutdownManager::isLocked>},
      {"commitment", parseCommitment},
      {"commitment-end", parseCommitmentEnd},
      {"key-configured", parseEngineFlag<&ShutdownManager::isPhysicalKeyConfigured>},
      {"key-mounted", parseEngineFlag<&ShutdownManager::isPhysicalKeyMounted>},
      {"message", parseMessage},
      {"latch", parseLatch},
      {"release", parseRelease},
      {"lock-end", parseLockEnd},
      {"prevent-quit", parseEngineFlag<&ShutdownManager::shouldPreventQuit>},
      {"generation", parseGeneration},
      {"stored", parseStored},
      {"windows", parseWindows},
      {"window", parseWindow},
      {"key-window", parseKeyWindow},
      {"presentation", parsePresentation},
      {"active", parseActive},
      {"quit", parseQuit},
      {"key-event", parseKeyEvent},
      {"firewall", parseFirewall},
      {"firewall-requests", parseFirewallRequests},
      {"panel", parsePanel},
      {"registrations", parseRegistrations},
      {"timers", parseTimers},
      {"posted", parsePosted},
      {"log", parseLog},
      {"no-log", parseNoLog},
      {"shows", parseView<true>},
      {"hides", parseView<false>},
  };
  return table;
}

}  // namespace

Expectation parseExpectation(Words& words) {
  const auto name = words.takeWord("what is expected");
  const auto parser = parsers().find(name);
  if (parser == parsers().end()) throw MalformedScript("unknown expectation " + name);
  auto expectation = parser->second(words);
  words.expectEnd();
  return expectation;
}

}  // namespace lunevra::rehearsal
