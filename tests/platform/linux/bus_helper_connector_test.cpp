#include "platform/linux/bus_helper_connector.h"

#include "platform/linux/private_bus.h"
#include "platform/simulated/simulated_host.h"
#include "protection/firewall_helper_client.h"
#include "store/settings_keys.h"

namespace lunevra {
namespace {

using std::chrono::steady_clock;

/// Far less than any of the waits that must not be, and more than a busy machine needs.
constexpr std::chrono::milliseconds shortTime{1500};

/// The program's firewall client over a real bus; everything else of its computer is simulated.
class BusHelperTest : public ::testing::Test, private RunLoop, private Log {
 protected:
  BusHelperTest() {
    computer_.defaults.standard().set(settings_key::firewallEnabled, true);
    computer_.services.daemon("").setStatus(ServiceStatus::enabled);
  }

  void connectTo(const std::string& bus, uid_t helperUser = ::getuid()) {
    client_.reset();
    connector_ = std::make_unique<BusHelperConnector>(bus, helperUser);
    const auto host = computer_.host();
    client_.emplace(Host{host.clock, host.calendar, *this, host.notificationCenter, host.defaults,
                         host.cloud, *this, host.random, host.keychain, host.volumes, host.services,
                         *connector_, host.openPanels});
  }
  void start() {
    const auto begin = steady_clock::now();
    client_->startBlock(Instant{1'790'000'000.5}, 7, record());
    EXPECT_LT(steady_clock::now() - begin, shortTime) << "a call waited";
  }
  FirewallHelperClient::Completion record() {
    return [this](bool success, const std::optional<std::string>& message) {
      answer_ = (success ? "yes " : "no ") + message.value_or("-");
    };
  }
  /// The next completion or log line.
  std::string outcome() {
    answer_.reset();
    eventually([this] {
      const std::lock_guard lock(mutex_);
      if (!answer_ && !news_.empty()) {
        const auto work = std::move(news_.front());
        news_.erase(news_.begin());
        work();
      }
      return answer_.has_value();
    });
    return answer_.value_or("nothing");
  }
  [[nodiscard]] std::string recorded() const {
    std::ifstream file(folder_ / "record");
    return {std::istreambuf_iterator<char>(file), {}};
  }
  [[nodiscard]] std::vector<std::string> standIn(const PrivateBus& bus,
                                                 const std::vector<std::string>& behaviour) const {
    std::vector<std::string> command{LUNEVRA_HELPER_STAND_IN, bus.address(), folder_ / "record"};
    command.insert(command.end(), behaviour.begin(), behaviour.end());
    return command;
  }
  /// From now on the bus starts the helper when it is asked.
  void install(const PrivateBus& bus, const std::vector<std::string>& behaviour) const {
    std::string line;
    for (const auto& word : standIn(bus, behaviour)) line += " '" + word + "'";
    writeFile(bus.services() / "com.lunevra.firewall.service",
              "[D-BUS Service]\nName=com.lunevra.firewall\nExec=" + line.substr(1) + "\n");
  }

  PrivateBus bus_;
  TemporaryFolder folder_;
  SimulatedHost computer_;

 private:
  [[nodiscard]] Registration scheduleRepeating(std::chrono::milliseconds, std::chrono::milliseconds,
                                               std::function<void()>) override {
    return {};
  }
  void after(std::chrono::milliseconds, std::function<void()>) override {}
  void async(std::function<void()> work) override {
    const std::lock_guard lock(mutex_);
    news_.push_back(std::move(work));
  }
  void line(std::string_view text) override {
    async([this, text = std::string(text)] { answer_ = text; });
  }

  std::mutex mutex_;
  std::vector<std::function<void()>> news_;
  std::optional<std::string> answer_;

 protected:
  std::unique_ptr<BusHelperConnector> connector_;
  std::optional<FirewallHelperClient> client_;
};

const std::string lost = "Lunevra firewall client: XPC error — ";

TEST_F(BusHelperTest, EachWayToAnswerReachesTheCompletion) {
  const std::vector<std::pair<std::vector<std::string>, std::string>> cases{
      {{"succeed"}, "yes -"},
      {{"succeed", "already active"}, "yes already active"},
      {{"fail"}, "no -"},
      {{"fail", ""}, "no "},
      {{"fail", "pf is not enabled"}, "no pf is not enabled"},
      {{"garble"}, lost + "The helper's reply cannot be read."},
      {{"crash"}, lost}};
  for (const auto& [behaviour, expected] : cases) {
    const PrivateBus bus;
    install(bus, behaviour);
    connectTo(bus.address());
    start();
    EXPECT_TRUE(outcome().starts_with(expected)) << behaviour.front();
  }
}

TEST_F(BusHelperTest, CarriesTheWholeRequest) {
  install(bus_, {"succeed"});
  connectTo(bus_.address());
  const std::vector<std::pair<std::vector<std::string>, std::string>> cases{
      {{}, "start 0  "},
      {std::vector<std::string>(10'000, "bücher.example"), "start 10000 bücher.example "}};
  for (const auto& [domains, expected] : cases) {
    computer_.defaults.standard().set(settings_key::firewallDomains, domains);
    start();
    EXPECT_EQ(outcome(), "yes -");
    EXPECT_TRUE(recorded().ends_with(expected + "1790000000.500000 7\n")) << recorded();
  }
  client_->clearBlock(8, record());
  EXPECT_EQ(outcome(), "yes -");
  EXPECT_TRUE(recorded().ends_with("clear 8\n"));
}

TEST_F(BusHelperTest, ASilentHelperHoldsUpNobodyAndItsEndIsNoticed) {
  connectTo(bus_.address());
  std::optional<host_test::ChildProcess> helper(std::in_place, standIn(bus_, {"silent"}),
                                                std::vector<std::string>{});
  ASSERT_TRUE(eventually([&] {
    start();
    return !recorded().empty();
  }));
  const auto begin = steady_clock::now();
  client_->clearBlock(8, record());
  EXPECT_LT(steady_clock::now() - begin, shortTime);
  EXPECT_TRUE(eventually([&] { return recorded().find("clear 8") != std::string::npos; }));
  helper.reset();
  while (outcome().find("has ended") == std::string::npos) ASSERT_FALSE(HasFailure());
  install(bus_, {"succeed"});
  std::string answer;
  EXPECT_TRUE(eventually([&] {
    start();
    answer = outcome();
    return answer == "yes -";
  })) << answer;
}

TEST_F(BusHelperTest, SpeaksToNobodyWhoMerelyTookTheName) {
  install(bus_, {"succeed"});
  connectTo(bus_.address(), ::getuid() + 1);
  start();
  EXPECT_EQ(outcome(),
            lost + "The name com.lunevra.firewall is taken by a program of another user.");
  EXPECT_EQ(recorded(), "");
}

TEST_F(BusHelperTest, SaysWhatIsMissingAndFindsItLater) {
  connectTo(bus_.address());
  start();
  EXPECT_EQ(outcome(), lost +
                           "The name com.lunevra.firewall was not provided by any .service "
                           "files");
  install(bus_, {"succeed"});
  start();
  EXPECT_EQ(outcome(), "yes -");
  bus_.kill();
  EXPECT_TRUE(eventually([&] {
    start();
    return outcome().starts_with(lost + "The message bus cannot be reached: ");
  }));
  bus_.start();
  EXPECT_TRUE(eventually([&] {
    start();
    return outcome() == "yes -";
  }));
}

TEST_F(BusHelperTest, ABusThatNeverAnswersHoldsUpNobody) {
  const HungBus hung;
  connectTo(hung.address());
  start();
  start();
  const auto begin = steady_clock::now();
  client_.reset();
  connector_.reset();
  EXPECT_LT(steady_clock::now() - begin, shortTime) << "quitting waited";
}

}  // namespace
}  // namespace lunevra
