#include "rehearsal/script.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

namespace lunevra::rehearsal {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

std::string reasonOf(const std::string& text) {
  try {
    static_cast<void>(parseScript("night", text));
  } catch (const MalformedScript& error) {
    return error.what();
  }
  return "well-formed";
}

struct Played {
  Tally tally;
  std::string out;
};

Played playText(const std::string& text) {
  Played played;
  std::ostringstream out;
  play(
      parseScript("night", text),
      [](auto& computer) { return std::make_unique<MemoryStage>(computer); }, out, played.tally);
  played.out = out.str();
  return played;
}

TEST(Script, MalformedLinesAreNamedBeforeAnythingIsPlayed) {
  const std::pair<const char*, const char*> cases[] = {
      {"launch\nlanch", "night:2: unknown statement lanch"},
      {"expect", "night:1: what is expected is missing"},
      {"expect nothing", "night:1: unknown expectation nothing"},
      {"until 24:00", "night:1: not a time"},
      {"until 7:00", "night:1: not a time"},
      {"clock 2026-02-29 10:00", "night:1: no such day"},
      {"clock 2026-01-01", "night:1: a time is missing"},
      {"pass 5", "night:1: not a duration"},
      {"pass -5s", "night:1: not a duration"},
      {"zone Mars/Olympus", "night:1: unknown time zone"},
      {"store standard key integer 1.5", "night:1: an integer must be a whole number"},
      {"store local key none", "night:1: unknown store local"},
      {"expect message none", "night:1: a text must stand in quotes"},
      {"expect message \"open", "night:1: a text has no closing quote"},
      {"expect message \"\\n\"", "night:1: unknown escape"},
      {"launch twice", "night:1: unexpected \"twice\""},
      {"service agent 4", "night:1: a status is 0, 1, 2 or 3"},
      {"keychain 12ab", "night:1: a fingerprint has 64"},
      {"volume A relative", "night:1: not an absolute path"},
      {"expect state asleep", "night:1: unknown phase asleep"},
      {"show moon", "night:1: menu, dashboard, lock-screen or settings is wanted"},
      {"kill \xff", "night:1: not UTF-8"},
  };
  for (const auto& [text, reason] : cases) EXPECT_THAT(reasonOf(text), StartsWith(reason)) << text;
  EXPECT_EQ(reasonOf("\t # comment\r\n\nlaunch # \"quote\nstore standard k text \"a # \\\"b\\\"\""),
            "well-formed");
}

TEST(Script, FailedExpectationsAreReportedAndTheNightGoesOn) {
  const auto played = playText(
      "launch\nexpect state blocking\nexpect stored group wakeHour 6.0\n"
      "kill\nexpect state idle\nexpect running no\n");
  EXPECT_EQ(played.tally.passed, 2);
  EXPECT_EQ(played.tally.failed, 2);
  EXPECT_THAT(played.out, HasSubstr("night:2: expected blocking, found idle\n"));
  EXPECT_THAT(played.out, HasSubstr("night:5: expected idle, found the program not running\n"));
}

TEST(Script, EqualScriptsPlayEquallyAndUnequalOnesDrawOtherKeys) {
  const std::string night = "volume USB /V\nlaunch\ncreate-key /V\nvolume USB off\nuntil 22:01\n";
  const auto fingerprint = [](const std::string& text) {
    const auto script = parseScript("night", text);
    std::ostringstream out;
    Night played([](auto& computer) { return std::make_unique<MemoryStage>(computer); },
                 script.seed, out);
    for (const auto& statement : script.statements) {
      std::get<Action>(statement.meaning)(played);
      played.settle();
    }
    return *PhysicalKeyManager(played.computer().host()).loadFingerprint();
  };
  EXPECT_EQ(playText(night).out, playText(night).out);
  EXPECT_EQ(fingerprint(night), fingerprint(night));
  EXPECT_NE(fingerprint(night), fingerprint(night + "# another\n"));
}

}  // namespace
}  // namespace lunevra::rehearsal
