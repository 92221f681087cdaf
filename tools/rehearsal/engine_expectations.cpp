#include "rehearsal/expectation_parts.h"
#include "rehearsal/names.h"
#include "rehearsal/world_text.h"
#include "store/settings_keys.h"

namespace lunevra::rehearsal {
namespace {

std::string twoDigits(std::int64_t number) {
  return (number >= 0 && number < 10 ? "0" : "") + std::to_string(number);
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

}  // namespace

const ExpectationParsers& engineExpectations() {
  static const ExpectationParsers parsers{
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
  };
  return parsers;
}

}  // namespace lunevra::rehearsal
