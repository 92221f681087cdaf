#pragma once

#include <atomic>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

#include "platform/host.h"

namespace lunevra {

/// What the logic expects of a host, whichever host it is. A folder of tests runs it on its host
/// with
///
///   INSTANTIATE_TYPED_TEST_SUITE_P(Name, HostContract, Computer);
///
/// where `Computer` is default-constructible and has
///   Host host();                                  one computer, nothing stored yet
///   void restart();                               the program ends and starts again
///   void setZone(const std::string&);             the person travels
///   void writeElsewhere(std::string_view key, const StoredValue&);   another machine's cloud write
///   bool until(const std::function<bool()>&);     lets the computer run until that holds
template <class Computer>
class HostContract : public ::testing::Test {
 protected:
  Computer computer_;
};

TYPED_TEST_SUITE_P(HostContract);

TYPED_TEST_P(HostContract, DefaultsAnswerTheTypeThatIsStoredAndNoOther) {
  auto host = this->computer_.host();
  auto& standard = host.defaults.standard();
  const auto texts = std::vector<std::string>{"a.com", ""};
  standard.set("integer", std::int64_t{7});
  standard.set("flag", true);
  standard.set("double", 0.5);
  standard.set("date", Instant{1'790'000'000.25});
  standard.set("texts", texts);
  standard.set("infinite", std::numeric_limits<double>::infinity());
  standard.set("never", Instant{std::numeric_limits<double>::quiet_NaN()});
  for (const bool isRestarted : {false, true}) {
    if (isRestarted) this->computer_.restart();
    auto current = this->computer_.host();
    const auto& defaults = current.defaults.standard();
    EXPECT_EQ(defaults.integer("integer"), 7);
    EXPECT_EQ(defaults.number("integer"), 7.0);
    EXPECT_EQ(defaults.flag("flag"), true);
    EXPECT_EQ(defaults.number("double"), 0.5);
    EXPECT_EQ(defaults.date("date"), Instant{1'790'000'000.25});
    EXPECT_EQ(defaults.texts("texts"), texts);
    EXPECT_EQ(defaults.integer("flag"), std::nullopt);
    EXPECT_EQ(defaults.integer("double"), std::nullopt);
    EXPECT_EQ(defaults.flag("integer"), std::nullopt);
    EXPECT_EQ(defaults.date("double"), std::nullopt);
    EXPECT_EQ(defaults.number("date"), std::nullopt);
    EXPECT_EQ(defaults.number("infinite"), std::nullopt);
    EXPECT_EQ(defaults.date("never"), std::nullopt);
    EXPECT_EQ(defaults.object("absent"), std::nullopt);
  }
}

TYPED_TEST_P(HostContract, DomainsAreApartAndKeepTheLastWrite) {
  auto host = this->computer_.host();
  auto& standard = host.defaults.standard();
  auto* const group = host.defaults.suite("group.com.lunevra.shared");
  ASSERT_NE(group, nullptr);
  EXPECT_EQ(group, host.defaults.suite("group.com.lunevra.shared"));
  standard.set("key", std::int64_t{1});
  EXPECT_EQ(group->object("key"), std::nullopt);
  group->set("key", true);
  group->set("key", 2.5);
  standard.remove("key");
  standard.remove("never there");
  EXPECT_EQ(standard.object("key"), std::nullopt);
  EXPECT_EQ(group->object("key"), StoredValue(2.5));
}

TYPED_TEST_P(HostContract, CloudTellsOfOtherMachinesOnly) {
  auto host = this->computer_.host();
  std::atomic<int> calls = 0;
  auto observation = host.cloud.observeExternalChanges([&] { ++calls; });
  EXPECT_EQ(host.cloud.object("wakeHour"), std::nullopt);
  host.cloud.set("wakeHour", std::int64_t{7});
  host.cloud.set("lockEndDate", 1'790'000'000.125);
  host.cloud.synchronize();
  EXPECT_EQ(host.cloud.object("wakeHour"), StoredValue(std::int64_t{7}));
  EXPECT_EQ(host.cloud.object("lockEndDate"), StoredValue(1'790'000'000.125));
  this->computer_.writeElsewhere("wakeHour", std::int64_t{8});
  EXPECT_TRUE(this->computer_.until([&] { return calls > 0; }));
  EXPECT_EQ(calls, 1) << "own writes came back as another machine's";
  EXPECT_EQ(host.cloud.object("wakeHour"), StoredValue(std::int64_t{8}));
  observation.reset();
  this->computer_.writeElsewhere("wakeHour", std::int64_t{9});
  EXPECT_TRUE(this->computer_.until(
      [&] { return host.cloud.object("wakeHour") == StoredValue(std::int64_t{9}); }));
  EXPECT_EQ(calls, 1) << "told after the observation ended";
}

TYPED_TEST_P(HostContract, CalendarKnowsTheZoneOfTheMoment) {
  auto host = this->computer_.host();
  const Instant moment{1'790'000'000};  // 2026-09-21 14:13:20 UTC
  const std::vector<std::pair<const char*, DateComponents>> zones{
      {"UTC", {2026, 9, 21, 14, 13, 20}},
      {"Europe/Berlin", {2026, 9, 21, 16, 13, 20}},
      {"Asia/Kathmandu", {2026, 9, 21, 19, 58, 20}},
      {"Pacific/Kiritimati", {2026, 9, 22, 4, 13, 20}}};
  for (const auto& [zone, expected] : zones) {
    this->computer_.setZone(zone);
    EXPECT_EQ(host.calendar.components(moment), expected) << zone;
    EXPECT_EQ(host.calendar.instant(expected), moment) << zone;
  }
  EXPECT_EQ(host.calendar.components(Instant{std::numeric_limits<double>::infinity()}),
            std::nullopt);
}

TYPED_TEST_P(HostContract, CalendarEndsNightsOnceWhereTheOffsetChanges) {
  auto host = this->computer_.host();
  this->computer_.setZone("Europe/Berlin");
  const auto spring = host.calendar.instant({2026, 3, 29, 2, 30, 0});
  EXPECT_EQ(spring, Instant{1'774'746'000});  // the jump from 02:00 to 03:00
  const auto autumn = host.calendar.instant({2026, 10, 25, 2, 30, 0});
  EXPECT_EQ(autumn, Instant{1'792'891'800});  // the second 02:30
  const auto evening = host.calendar.instant({2026, 10, 24, 22, 0, 0});
  ASSERT_TRUE(evening);
  EXPECT_EQ(host.calendar.addingDays(*evening, 1), *evening + TimeInterval(25 * 3600));
}

TYPED_TEST_P(HostContract, NotificationsReachWhoIsThereWhenTheyArePosted) {
  auto host = this->computer_.host();
  auto& center = host.notificationCenter;
  std::string heard;
  Registration late;
  Registration second;
  const auto first = center.addObserver("name", [&] {
    heard += '1';
    second.reset();
    if (!late) late = center.addObserver("name", [&] { heard += 'L'; });
  });
  second = center.addObserver("name", [&] { heard += '2'; });
  const auto third = center.addObserver("name", [&] { heard += '3'; });
  const auto other = center.addObserver("other", [&] { heard += 'X'; });
  center.post("name");
  EXPECT_EQ(heard, "13");
  center.post("name");
  EXPECT_EQ(heard, "1313L");
}

REGISTER_TYPED_TEST_SUITE_P(HostContract, DefaultsAnswerTheTypeThatIsStoredAndNoOther,
                            DomainsAreApartAndKeepTheLastWrite, CloudTellsOfOtherMachinesOnly,
                            CalendarKnowsTheZoneOfTheMoment,
                            CalendarEndsNightsOnceWhereTheOffsetChanges,
                            NotificationsReachWhoIsThereWhenTheyArePosted);

}  // namespace lunevra
