#include <algorithm>

#include "rehearsal/expectation_parts.h"
#include "rehearsal/names.h"
#include "rehearsal/statements.h"
#include "rehearsal/view_rows.h"
#include "rehearsal/world_text.h"

namespace lunevra::rehearsal {
namespace {

std::string rectText(const Rect& rect) {
  return describe(rect.x) + " " + describe(rect.y) + " " + describe(rect.width) + " " +
         describe(rect.height);
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

}  // namespace

const ExpectationParsers& surroundingsExpectations() {
  static const ExpectationParsers parsers{
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
  return parsers;
}

}  // namespace lunevra::rehearsal
