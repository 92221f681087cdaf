#include <gtest/gtest.h>
#include <limits>

#include "platform/foundation/base64.h"
#include "platform/foundation/key_payload_json.h"
#include "platform/foundation/stored_value_json.h"
#include "platform/foundation/timer_queue.h"
#include "platform/foundation/zoned_calendar.h"
#include "platform/localized_error.h"
#include "platform/observer_list.h"

namespace lunevra {
namespace {

using namespace std::chrono_literals;

TEST(TimerQueue, TimersShareTheLatestWakeUpWithinTheirTolerances) {
  TimerQueue queue;
  std::vector<char> fired;
  const auto slow = queue.addRepeating(0s, 5s, 1s, [&] { fired.push_back('s'); });
  const auto fast = queue.addRepeating(0s, 1s, 200ms, [&] { fired.push_back('f'); });
  EXPECT_EQ(queue.latestWakeUp(), 1200ms);
  for (auto now = *queue.latestWakeUp(); now < 6s; now = *queue.latestWakeUp())
    while (queue.fireNextDue(now)) continue;
  // Late firings do not move the grid, and the slow timer never needed a wake-up of its own.
  EXPECT_EQ(std::string(fired.begin(), fired.end()), "ffffsf");
  EXPECT_EQ(queue.nextDue(), 6s);
}

TEST(TimerQueue, ATimerMayEndItselfOrClearTheQueueWhileFiring) {
  TimerQueue queue;
  Registration self;
  int fired = 0;
  self = queue.addRepeating(0s, 1s, 0s, [&] {
    ++fired;
    self.reset();
  });
  while (queue.fireNextDue(3s)) continue;
  EXPECT_EQ(fired, 1);
  self = queue.addRepeating(0s, 1s, 0s, [&] { queue.clear(); });
  queue.addOnce(2s, [&] { ++fired; });
  while (queue.fireNextDue(3s)) continue;
  EXPECT_EQ(fired, 1);
  EXPECT_EQ(queue.nextDue(), std::nullopt);
}

TEST(ObserverList, EndingAndAddingDuringARoundIsSafe) {
  ObserverList list;
  std::string calls;
  Registration second;
  Registration added;
  const auto first = list.add([&] {
    calls += '1';
    second.reset();
    added = list.add([&] { calls += 'a'; });
  });
  second = list.add([&] { calls += '2'; });
  list.notify();
  EXPECT_EQ(calls, "1");
}

TEST(ZonedCalendar, OddWallTimesGiveAnInstant) {
  const ZonedCalendar berlin("Europe/Berlin");
  const auto at = [&](DateComponents wanted) { return berlin.components(*berlin.instant(wanted)); };
  EXPECT_EQ(at({2026, 3, 29, 2, 30, 0}), (DateComponents{2026, 3, 29, 3, 0, 0}));
  EXPECT_EQ(berlin.instant({2026, 10, 25, 2, 30, 0})->secondsSince1970,
            1792891800.0);  // the second
  EXPECT_EQ(berlin.components(*berlin.addingDays(*berlin.instant({2026, 3, 28, 6, 0, 0}), 1)),
            (DateComponents{2026, 3, 29, 6, 0, 0}));
  EXPECT_EQ(berlin.addingDays(Instant{0.25}, 1), Instant{86400.25});
  const ZonedCalendar apia("Pacific/Apia");  // has no 30 December 2011
  EXPECT_EQ(apia.components(*apia.addingDays(*apia.instant({2011, 12, 29, 6, 0, 0}), 1)),
            (DateComponents{2011, 12, 31, 0, 0, 0}));
  for (const double seconds : {1e300, -1e300, std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_EQ(berlin.components(Instant{seconds}), std::nullopt);
    EXPECT_EQ(berlin.addingDays(Instant{seconds}, 1), std::nullopt);
  }
  EXPECT_EQ(berlin.instant({2026, 13, 1, 0, 0, 0}), std::nullopt);
  EXPECT_THROW(ZonedCalendar("Nowhere/Land"), LocalizedError);
}

TEST(StoredValueJson, RoundTripsAndRefusesWhatDoesNotFit) {
  const StoredValue values[] = {std::numeric_limits<std::int64_t>::min(),
                                std::numeric_limits<std::int64_t>::max(),
                                true,
                                0.1,
                                Instant{1795413600.123456},
                                std::string("a\"\n\xc3\xa9"),
                                std::vector<std::string>{},
                                std::vector<std::string>{"", "b"}};
  for (const auto& value : values) EXPECT_EQ(decodeStoredValue(encodeStoredValue(value)), value);
  for (const auto* foreign :
       {"", "[]", "{", R"({"type":"integer"})", R"({"type":"integer","value":1.5})",
        R"({"type":"integer","value":9223372036854775808})", R"({"type":"flag","value":1})",
        R"({"type":"double","value":1e999})", R"({"type":"texts","value":["a",1]})",
        R"({"type":"colour","value":"red"})", R"({"type":7,"value":7})"})
    EXPECT_EQ(decodeStoredValue(foreign), std::nullopt) << foreign;
  const std::string nested(100000, '[');
  EXPECT_EQ(decodeStoredValue(nested), std::nullopt);
}

TEST(KeyPayload, IsWrittenInItsOrderAndBase64IsStrict) {
  const KeyPayloadFields key{1, "id", "a/b="};
  EXPECT_EQ(encodeKeyPayload(key), R"({"version":1,"identifier":"id","secret":"a/b="})");
  EXPECT_EQ(decodeKeyPayload(encodeKeyPayload(key))->secret, key.secret);
  EXPECT_EQ(base64Encode(*base64Decode("AAECAw==")), "AAECAw==");
  for (const auto* odd : {"A", "AAA", "AA=A", "A===", "AAAA\n", "AA A", "AA-_"})
    EXPECT_FALSE(base64Decode(odd)) << odd;
}

}  // namespace
}  // namespace lunevra
