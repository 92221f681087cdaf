#include "platform/foundation/key_payload_json.h"
#include "platform/foundation/zoned_calendar.h"
#include "rehearsal/statements.h"

namespace lunevra::rehearsal {
namespace {

Action parseZone(Words& words) {
  const auto name = words.takeWord("a time zone");
  try {
    const ZonedCalendar known(name);
  } catch (const LocalizedError& error) {
    throw MalformedScript(error.localizedDescription());
  }
  return [name](Night& night) {
    // Before the program starts the script's clock reading holds; later the person travels.
    auto& computer = night.computer();
    const auto reading = computer.calendar.components(computer.time.now());
    computer.calendar.setZone(name);
    if (!night.hasStarted() && reading) computer.time.setWallClock(night.instant(*reading));
  };
}

Action parseClock(Words& words) {
  const auto date = words.takeInstant();
  return [date](Night& night) { night.computer().time.setWallClock(night.instant(date)); };
}

Action parseDisplay(Words& words) {
  const auto name = words.takeWord("a display's name");
  if (words.takeIf("off")) return [name](Night& night) { night.computer().displays.remove(name); };
  Rect frame;
  frame.x = words.takeNumber("x");
  frame.y = words.takeNumber("y");
  frame.width = words.takeNumber("width");
  frame.height = words.takeNumber("height");
  if (frame.width <= 0.0 || frame.height <= 0.0)
    throw MalformedScript("a display's size must be positive");
  return [name, frame](Night& night) { night.computer().displays.set(name, frame); };
}

Action parseMainDisplay(Words& words) {
  const auto name = words.takeWord("a display's name");
  return [name](Night& night) { night.computer().displays.setMain(name); };
}

// A date is only an instant in the zone that the night has when the statement is played.
using LateValue = std::function<std::optional<StoredValue>(Night&)>;

LateValue fixedValue(StoredValue value) {
  return [value = std::move(value)](Night&) { return std::optional(value); };
}

LateValue parseValue(Words& words) {
  if (words.takeIf("none")) return [](Night&) { return std::nullopt; };
  if (words.takeIf("integer")) return fixedValue(words.takeInteger("an integer"));
  if (words.takeIf("flag")) return fixedValue(words.takeYesNo());
  if (words.takeIf("double")) return fixedValue(words.takeNumber("a double"));
  if (words.takeIf("text")) return fixedValue(words.takeText("a text"));
  if (words.takeIf("date")) {
    const auto date = words.takeInstant();
    return [date](Night& night) { return std::optional<StoredValue>(night.instant(date)); };
  }
  if (words.takeIf("texts")) {
    std::vector<std::string> texts;
    while (!words.isAtEnd()) texts.push_back(words.takeText("a text"));
    return fixedValue(texts);
  }
  throw MalformedScript("unknown type of value " + words.takeWord("a type"));
}

void put(UserDefaults& defaults, const std::string& key, const std::optional<StoredValue>& value) {
  if (value)
    defaults.set(key, *value);
  else
    defaults.remove(key);
}

Action parseStore(Words& words) {
  const auto store = words.takeWord("a store");
  if (store != "standard" && store != "group" && store != "cloud")
    throw MalformedScript("unknown store " + store);
  const auto key = words.takeWord("a key");
  const auto late = parseValue(words);
  return [store, key, late](Night& night) {
    auto& computer = night.computer();
    const auto value = late(night);
    if (store == "standard") return put(computer.defaults.standard(), key, value);
    if (store == "group") return put(computer.defaults.group(), key, value);
    if (value)
      computer.cloud.setFromElsewhere(key, *value);
    else
      computer.cloud.removeFromElsewhere(key);
  };
}

Action parseSuite(Words& words) {
  if (!words.takeIf("refused")) throw MalformedScript("a suite can only be refused");
  return [](Night& night) { night.computer().defaults.refuseSuite(); };
}

Bytes parseFingerprint(const std::string& hex) {
  constexpr std::size_t digestLength = 32;
  if (hex.size() != 2 * digestLength ||
      hex.find_first_not_of("0123456789abcdefABCDEF") != std::string::npos)
    throw MalformedScript("a fingerprint has 64 hexadecimal digits");
  Bytes bytes;
  for (std::size_t at = 0; at < hex.size(); at += 2)
    bytes.push_back(static_cast<std::uint8_t>(std::stoi(hex.substr(at, 2), nullptr, 16)));
  return bytes;
}

Action parseKeychain(Words& words) {
  if (words.takeIf("none"))
    return [](Night& night) { night.computer().keychain.setItem(std::nullopt); };
  if (words.takeIf("refuses")) {
    const auto status = words.takeInteger("a status");
    if (status != static_cast<std::int32_t>(status)) throw MalformedScript("no such status");
    return [status](Night& night) {
      night.computer().keychain.refuse(static_cast<std::int32_t>(status));
    };
  }
  const auto fingerprint = parseFingerprint(words.takeWord("a fingerprint"));
  return [fingerprint](Night& night) { night.computer().keychain.setItem(fingerprint); };
}

bool takeVolumeTrait(Words& words, SimulatedVolumes::Volume& volume) {
  auto& traits = volume.traits;
  if (words.takeIf("internal")) return traits.isInternal = true, true;
  if (words.takeIf("external")) return traits.isInternal = false, true;
  if (words.takeIf("internal-unknown")) return traits.isInternal.reset(), true;
  if (words.takeIf("local")) return traits.isLocal = true, true;
  if (words.takeIf("remote")) return traits.isLocal = false, true;
  if (words.takeIf("local-unknown")) return traits.isLocal.reset(), true;
  if (words.takeIf("root")) return traits.isRootFileSystem = true, true;
  return false;
}

bool takeVolumeOption(Words& words, SimulatedVolumes::Volume& volume) {
  if (takeVolumeTrait(words, volume)) return true;
  if (words.takeIf("writable")) return volume.isReadOnly = false, true;
  if (words.takeIf("readonly")) return volume.isReadOnly = true, true;
  if (words.takeIf("writable-unknown")) return volume.isReadOnly.reset(), true;
  if (words.takeIf("unnamed")) return volume.isNamed = false, true;
  if (words.takeIf("unreadable")) return volume.isReadable = false, true;
  if (words.takeIf("flag-unreadable"))
    return volume.readOnlyFlagError = words.takeText("a description"), true;
  if (words.takeIf("write-fails")) return volume.writeError = words.takeText("a description"), true;
  return false;
}

Action parseVolume(Words& words) {
  SimulatedVolumes::Volume volume;
  volume.name = words.takeWord("a volume's name");
  if (words.takeIf("off"))
    return [name = volume.name](Night& night) { night.computer().volumes.eject(name); };
  volume.path = words.takeWord("a path");
  if (!volume.path.starts_with('/')) throw MalformedScript("not an absolute path: " + volume.path);
  while (!words.isAtEnd())
    if (!takeVolumeOption(words, volume))
      throw MalformedScript("unknown option " + words.takeWord("an option"));
  return [volume](Night& night) { night.computer().volumes.attach(volume); };
}

Action parseFile(Words& words) {
  const auto volume = words.takeWord("a volume's name");
  const auto path = words.takeWord("a path");
  const auto contents = words.takeText("the file's text");
  return [=](Night& night) { night.computer().volumes.putFile(volume, path, contents); };
}

Action parseKeyFile(Words& words) {
  const auto volume = words.takeWord("a volume's name");
  KeyPayloadFields payload{1, "00000000-0000-4000-8000-000000000000", words.takeWord("a secret")};
  if (!words.isAtEnd()) payload.version = words.takeInteger("a version");
  return [volume, contents = encodeKeyPayload(payload)](Night& night) {
    night.computer().volumes.putFile(volume, std::string(PhysicalKeyManager::keyFileName),
                                     contents);
  };
}

Action parseServiceStatement(Words& words) {
  const auto find = parseService(words);
  if (words.takeIf("refuses")) {
    const auto text = words.takeText("a description");
    return [find, text](Night& night) { find(night.computer()).refuse(text); };
  }
  const auto status = words.takeInteger("a status");
  if (status < 0 || status > 3) throw MalformedScript("a status is 0, 1, 2 or 3");
  return [find, status](Night& night) {
    find(night.computer()).setStatus(static_cast<ServiceStatus>(status));
  };
}

Action parseHelper(Words& words) {
  using Behaviour = SimulatedFirewallHelper::Behaviour;
  const auto behave = [](Behaviour behaviour,
                         const std::optional<std::string>& text = std::nullopt) {
    return [=](Night& night) { night.computer().firewallHelper.behave(behaviour, text); };
  };
  if (words.takeIf("ok")) return behave(Behaviour::succeed);
  if (words.takeIf("silent")) return behave(Behaviour::silent);
  if (words.takeIf("unreachable")) return behave(Behaviour::unreachable);
  if (words.takeIf("breaks")) return behave(Behaviour::breakOff, words.takeText("a description"));
  if (words.takeIf("fails"))
    return words.isAtEnd() ? behave(Behaviour::fail)
                           : behave(Behaviour::fail, words.takeText("a message"));
  throw MalformedScript("unknown behaviour of the helper");
}

}  // namespace

FindService parseService(Words& words) {
  if (words.takeIf("agent"))
    return [](SimulatedHost& computer) -> SimulatedService& { return computer.services.agent(""); };
  if (words.takeIf("daemon"))
    return
        [](SimulatedHost& computer) -> SimulatedService& { return computer.services.daemon(""); };
  if (words.takeIf("login-item"))
    return [](SimulatedHost& computer) -> SimulatedService& { return computer.services.mainApp(); };
  throw MalformedScript("agent, daemon or login-item is wanted");
}

const ActionParsers& worldStatements() {
  static const ActionParsers parsers{
      {"zone", parseZone},
      {"clock", parseClock},
      {"display", parseDisplay},
      {"main-display", parseMainDisplay},
      {"store", parseStore},
      {"suite", parseSuite},
      {"keychain", parseKeychain},
      {"volume", parseVolume},
      {"file", parseFile},
      {"keyfile", parseKeyFile},
      {"service", parseServiceStatement},
      {"helper", parseHelper},
  };
  return parsers;
}

}  // namespace lunevra::rehearsal
