#include <gtest/gtest.h>

#include "platform/simulated/simulated_host.h"
#include "protection/firewall_helper_client.h"
#include "protection/firewall_helper_status.h"
#include "store/settings_keys.h"

namespace lunevra {
namespace {

using Behaviour = SimulatedFirewallHelper::Behaviour;

TEST(FirewallHelperStatus, SurvivesItsArchive) {
  for (const auto& status : {FirewallHelperStatus(true, Instant{1'790'000'000.5}, 14, 3, true),
                             FirewallHelperStatus(false, std::nullopt, 0, -1, false)})
    EXPECT_EQ(FirewallHelperStatus(status.archived()), status);
  const auto archive = FirewallHelperStatus(true, Instant{1}, 2, 3, true).archived();
  EXPECT_EQ(archive.className(), "LunevraFirewallHelperStatus");
  std::vector<std::string> keys;
  for (const auto& [key, value] : archive.entries()) keys.push_back(key);
  EXPECT_EQ(keys, (std::vector<std::string>{"isActive", "blockedUntil", "domainCount",
                                            "lastHonoredGeneration", "anchorLoaded"}));
}

TEST(FirewallHelperStatus, ReadsWhatAnotherHelperLeftOutOrMistyped) {
  const FirewallHelperStatus nothing(false, std::nullopt, 0, 0, false);
  KeyedArchive archive("LunevraFirewallHelperStatus");
  EXPECT_EQ(FirewallHelperStatus(archive), nothing);
  archive.encode("blockedUntil", 1'790'000'000.0);
  archive.encode("isActive", std::string("yes"));
  archive.encode("unknown", true);
  EXPECT_EQ(FirewallHelperStatus(archive), nothing);
  EXPECT_THROW(FirewallHelperStatus(KeyedArchive("Other")), LocalizedError);
}

class FirewallHelperClientTest : public ::testing::Test {
 protected:
  FirewallHelperClientTest() {
    computer_.defaults.standard().set(settings_key::firewallEnabled, true);
    computer_.services.daemon("").setStatus(ServiceStatus::enabled);
  }
  [[nodiscard]] FirewallHelperClient::Completion record() {
    return [this](bool success, const std::optional<std::string>& message) {
      answers_.push_back((success ? "yes " : "no ") + message.value_or("-"));
    };
  }
  void start() { client_.startBlock(Instant{1'790'000'000}, 4, record()); }

  SimulatedHost computer_;
  FirewallHelperClient client_{computer_.host()};
  std::vector<std::string> answers_;
};

TEST_F(FirewallHelperClientTest, RefusesAtOnceWhatCannotBeAsked) {
  computer_.defaults.standard().remove(settings_key::firewallEnabled);
  start();
  client_.clearBlock(5, record());  // a block is lifted whatever the switch says
  EXPECT_EQ(computer_.firewallHelper.requests().size(), 1U);
  for (const auto status : {ServiceStatus::notRegistered, ServiceStatus::requiresApproval,
                            ServiceStatus::notFound, ServiceStatus(7)}) {
    computer_.services.daemon("").setStatus(status);
    client_.clearBlock(5, record());
    EXPECT_EQ(answers_.back(), "no Firewall helper not installed.");
    computer_.defaults.standard().set(settings_key::firewallEnabled, true);
    start();
    EXPECT_EQ(answers_.back(), "no Firewall helper not enabled or not installed.");
  }
  EXPECT_EQ(computer_.firewallHelper.requests().size(), 1U);
}

TEST_F(FirewallHelperClientTest, SendsThePersonsDomainsOrTheBuiltInOnes) {
  const std::vector<std::string> many(10'000, "example.com");
  auto& standard = computer_.defaults.standard();
  const std::vector<std::pair<std::optional<StoredValue>, std::size_t>> cases{
      {std::nullopt, 14},
      {StoredValue(std::vector<std::string>{}), 0},
      {StoredValue(std::string("example.com")), 14},
      {StoredValue(many), many.size()}};
  for (const auto& [stored, count] : cases) {
    standard.remove(settings_key::firewallDomains);
    if (stored) standard.set(settings_key::firewallDomains, *stored);
    start();
    const auto& request = computer_.firewallHelper.requests().back();
    EXPECT_EQ(request.domainCount, count);
    EXPECT_EQ(request.generation, 4);
    EXPECT_EQ(request.until, Instant{1'790'000'000});
  }
}

TEST_F(FirewallHelperClientTest, ConnectsOnceAndAgainAfterAnInterruption) {
  computer_.firewallHelper.behave(Behaviour::silent);
  start();
  start();
  EXPECT_EQ(computer_.firewallHelper.connections(), 1);
  computer_.firewallHelper.behave(Behaviour::breakOff, "helper crashed");
  start();
  EXPECT_EQ(computer_.log.lines().back(), "Lunevra firewall client: XPC error — helper crashed");
  computer_.firewallHelper.behave(Behaviour::fail, "pf is not enabled");
  start();
  EXPECT_EQ(computer_.firewallHelper.connections(), 2);
  EXPECT_TRUE(answers_.empty()) << "a reply comes in a later turn of the main loop";
  computer_.time.drainMainQueue();
  EXPECT_EQ(answers_, std::vector<std::string>{"no pf is not enabled"});
}

}  // namespace
}  // namespace lunevra
