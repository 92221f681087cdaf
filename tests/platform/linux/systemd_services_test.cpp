#include "platform/linux/systemd_services.h"

#include <array>
#include <sstream>

#include "platform/linux/private_bus.h"
#include "platform/simulated/simulated_host.h"
#include "protection/enforcement_agent.h"
#include "store/settings_keys.h"

namespace lunevra {
namespace {

namespace fs = std::filesystem;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr const char* agentName = "com.lunevra.enforcer.plist";
constexpr const char* daemonName = "com.lunevra.firewall.plist";

/// A systemd of its own, as each login has one. Its bus forbids what `policy` says.
class UserManager {
 public:
  explicit UserManager(const std::string& policy = "") {
    std::error_code error;  // without this folder systemd believes that the computer runs another
    fs::create_directories("/run/systemd/system", error);
    fs::create_directories(units());
    fs::create_directory(folder_ / "run");
    fs::permissions(folder_ / "run", fs::perms::owner_all);
    writeFile(folder_ / "bus.conf",
              "<busconfig><type>session</type><listen>systemd:</listen>"
              "<policy context='default'><allow send_destination='*' eavesdrop='true'/>"
              "<allow eavesdrop='true'/><allow own='*'/>" +
                  policy + "</policy></busconfig>");
    writeFile(units() / "dbus.service",
              "[Service]\nExecStart=/usr/bin/dbus-daemon --nofork --nopidfile --config-file=" +
                  (folder_ / "bus.conf").string() + "\n");
    process_.emplace(
        std::vector<std::string>{"env", "-i", "PATH=" + std::string(::getenv("PATH")),
                                 "HOME=" + folder_.path().string(),
                                 "XDG_RUNTIME_DIR=" + (folder_ / "run").string(),
                                 "/lib/systemd/systemd", "--user", "--unit=basic.target"},
        std::vector<std::string>{});
  }
  ~UserManager() {
    process_->signal(SIGTERM);  // it ends what it has started
    static_cast<void>(process_->exitStatus());
  }
  UserManager(const UserManager&) = delete;
  UserManager& operator=(const UserManager&) = delete;

  [[nodiscard]] bool isUp() {
    return eventually([&] { return !process_->isRunning() || hasBus(); }) && hasBus();
  }
  [[nodiscard]] bool hasBus() const {
    try {
      ManagerBus bus("unix:path=" + (folder_ / "run/bus").string());
      ManagerBus::Conversation manager(bus, std::chrono::seconds(2));
      manager.ask(
          "GetDefaultTarget", [](sd_bus_message*) { return 0; }, [](sd_bus_message*) { return 0; });
      return true;
    } catch (const BusError&) {
      return false;
    }
  }

  /// The packaged unit with a stand-in for the program.
  void installAgent() const {
    fs::copy_file(LUNEVRA_AGENT_UNIT, units() / "com.lunevra.enforcer.service");
    const auto additions = units() / "com.lunevra.enforcer.service.d";
    fs::create_directory(additions);
    writeFile(additions / "stand-in.conf",
              "[Unit]\nConditionFileIsExecutable=\n[Service]\nExecStart=\nExecStart=" +
                  std::string(LUNEVRA_AGENT_STAND_IN) + " " + home().string() + "\n");
  }
  void installDaemon(const std::string& program) const {
    writeFile(units() / "com.lunevra.firewall.service",
              "[Service]\nExecStart=" + program + " 1000\n[Install]\nWantedBy=default.target\n");
  }
  [[nodiscard]] fs::path units() const { return folder_ / ".config/systemd/user"; }
  [[nodiscard]] fs::path home() const { return folder_.path(); }
  [[nodiscard]] LinuxPaths paths() const {
    LinuxPaths paths;
    paths.dataFolder = folder_ / "data";
    paths.userBus = paths.systemBus = "unix:path=" + (folder_ / "run/bus").string();
    paths.autostartFolder = folder_ / ".config/autostart";
    paths.program = "/opt/Lunevra 100%/bin/lunevra";
    return paths;
  }

 private:
  TemporaryFolder folder_;
  std::optional<host_test::ChildProcess> process_;
};

#define SKIP_WITHOUT_SYSTEMD(manager) \
  if (!(manager).isUp()) GTEST_SKIP() << "no systemd --user can be run here"

int number(const fs::path& file) {
  int value = 0;
  std::ifstream(file) >> value;
  return value;
}

std::string contents(const fs::path& file) {
  std::ifstream stream(file);
  return {std::istreambuf_iterator<char>(stream), {}};
}

/// A manager that is kept busy by others may let a question time out, and is left alone for a
/// while.
bool becomes(const Service& service, ServiceStatus status) {
  return eventually([&] { return service.status() == status; }, std::chrono::seconds(30));
}

/// The process that holds the lock, once it is not `previous`.
int nextHolder(const UserManager& manager, int previous) {
  eventually([&] {
    const int holder = number(manager.home() / "holder");
    return holder != 0 && holder != previous && ::kill(holder, 0) == 0;
  });
  const int holder = number(manager.home() / "holder");
  return holder == previous ? 0 : holder;
}

TEST(SystemdServicesTest, TheAgentIsRegisteredOnceAndComesBackHoweverOftenItIsKilled) {
  UserManager manager;
  SKIP_WITHOUT_SYSTEMD(manager);
  SystemdServices services(manager.paths());
  auto& agent = services.agent(agentName);
  EXPECT_EQ(agent.status(), ServiceStatus::notFound);
  EXPECT_THROW(agent.registerService(), LocalizedError);
  manager.installAgent();
  EXPECT_TRUE(becomes(agent, ServiceStatus::notRegistered));
  agent.registerService();
  EXPECT_TRUE(becomes(agent, ServiceStatus::enabled));
  int holder = nextHolder(manager, 0);
  for (int round = 0; round < 20; ++round) {
    ASSERT_NE(holder, 0) << "not back after " << round << " kills";
    ::kill(holder, SIGKILL);
    holder = nextHolder(manager, holder);
  }
  EXPECT_TRUE(becomes(agent, ServiceStatus::enabled));
  ::kill(holder, SIGTERM);
  EXPECT_TRUE(becomes(agent, ServiceStatus::notRegistered))
      << "brought back after an accepted quit";
  agent.registerService();  // as the next start by hand does
  EXPECT_TRUE(becomes(agent, ServiceStatus::enabled));
  EXPECT_NE(nextHolder(manager, holder), 0);
  agent.unregisterService();
  EXPECT_TRUE(becomes(agent, ServiceStatus::notRegistered));
  EXPECT_FALSE(fs::exists(manager.units() / "graphical-session.target.wants/"
                                            "com.lunevra.enforcer.service"));
}

TEST(SystemdServicesTest, TheAgentWaitsForACopyStartedByHandAndTakesOver) {
  UserManager manager;
  SKIP_WITHOUT_SYSTEMD(manager);
  manager.installAgent();
  SystemdServices services(manager.paths());
  auto& agent = services.agent(agentName);
  for (const int end : {SIGKILL, SIGTERM}) {
    fs::remove(manager.home() / "starts");
    host_test::ChildProcess byHand({LUNEVRA_AGENT_STAND_IN, manager.home()}, {});
    const int first = nextHolder(manager, number(manager.home() / "holder"));
    agent.registerService();
    EXPECT_TRUE(eventually([&] { return contents(manager.home() / "starts") == "hand\nagent\n"; }));
    EXPECT_TRUE(becomes(agent, ServiceStatus::enabled));
    byHand.signal(end);
    // A person who has quit the one copy is not given another.
    if (end == SIGKILL) ::kill(nextHolder(manager, first), SIGTERM);
    EXPECT_TRUE(becomes(agent, ServiceStatus::notRegistered));
    EXPECT_EQ(contents(manager.home() / "starts"), "hand\nagent\n") << "it was started in a loop";
  }
}

TEST(SystemdServicesTest, LaunchRegistersTheAgentAndDropsThePlainLoginItem) {
  UserManager manager;
  SKIP_WITHOUT_SYSTEMD(manager);
  manager.installAgent();
  SystemdServices services(manager.paths());
  SimulatedHost computer;
  const auto host = computer.host();
  const Host real{host.clock,     host.calendar, host.runLoop, host.notificationCenter,
                  host.defaults,  host.cloud,    host.log,     host.random,
                  host.keychain,  host.volumes,  services,     host.helperConnector,
                  host.openPanels};
  services.mainApp().registerService();
  ASSERT_EQ(services.mainApp().status(), ServiceStatus::enabled);
  EXPECT_NE(contents(manager.paths().autostartFolder / "lunevra.desktop")
                .find("Exec=\"/opt/Lunevra 100%%/bin/lunevra\"\n"),
            std::string::npos);
  for (const auto& [unit, status] : std::vector<std::pair<std::string, std::int64_t>>{
           {"good", 1}, {"unreadable", 3}, {"masked", 0}}) {
    const auto file = manager.units() / "com.lunevra.enforcer.service";
    if (unit != "good") fs::remove(file);
    if (unit == "masked") fs::create_symlink("/dev/null", file);
    if (unit == "unreadable") fs::create_directory(file);
    EnforcementAgent(real).registerAtLaunch();
    EXPECT_EQ(computer.defaults.standard().integer(settings_key::enforcementAgentStatus), status)
        << unit;
    const auto error =
        computer.defaults.standard().object(settings_key::enforcementRegistrationError);
    EXPECT_EQ(error.has_value(), unit != "good") << unit << computer.log.lines().front();
    EXPECT_EQ(services.mainApp().status(), ServiceStatus::notRegistered);
    if (unit == "unreadable") fs::remove(file);
  }
}

TEST(SystemdServicesTest, ADaemonWaitsForItsProgramAndForApproval) {
  for (const bool isAdministrator : {true, false}) {
    UserManager manager(isAdministrator ? ""
                                        : "<deny send_interface='org.freedesktop.systemd1.Manager' "
                                          "send_member='EnableUnitFiles'/>");
    SKIP_WITHOUT_SYSTEMD(manager);
    const auto open = [&] { return std::make_unique<SystemdServices>(manager.paths()); };
    auto services = open();
    EXPECT_EQ(services->daemon(daemonName).status(), ServiceStatus::notFound);
    const auto program = manager.home() / "helper";
    manager.installDaemon(program);
    EXPECT_EQ(services->daemon(daemonName).status(), ServiceStatus::notFound);
    EXPECT_THROW(services->daemon(daemonName).registerService(), LocalizedError);
    fs::create_symlink("/bin/sleep", program);
    EXPECT_TRUE(becomes(services->daemon(daemonName), ServiceStatus::notRegistered));
    services->daemon(daemonName).registerService();
    services = open();  // the state outlives the program
    EXPECT_TRUE(becomes(services->daemon(daemonName), isAdministrator
                                                          ? ServiceStatus::enabled
                                                          : ServiceStatus::requiresApproval));
    services->daemon(daemonName).unregisterService();
    EXPECT_TRUE(becomes(services->daemon(daemonName), ServiceStatus::notRegistered));
  }
}

TEST(SystemdServicesTest, WithoutAWorkingBusALaunchGoesOn) {
  const HungBus hung;
  PrivateBus nobody;
  const std::vector<std::pair<std::string, milliseconds>> cases{
      {"", milliseconds(500)},
      {"unix:path=/nowhere", milliseconds(500)},
      {nobody.address(), milliseconds(2000)},
      {hung.address(), milliseconds(2000)}};
  for (const auto& [address, limit] : cases) {
    LinuxPaths paths;
    paths.userBus = paths.systemBus = address;
    SystemdServices services(paths);
    SimulatedHost computer;
    const auto host = computer.host();
    const Host real{host.clock,     host.calendar, host.runLoop, host.notificationCenter,
                    host.defaults,  host.cloud,    host.log,     host.random,
                    host.keychain,  host.volumes,  services,     host.helperConnector,
                    host.openPanels};
    const auto begin = steady_clock::now();
    EnforcementAgent(real).registerAtLaunch();
    EXPECT_LT(steady_clock::now() - begin, limit) << address;
    EXPECT_EQ(computer.log.lines().back(), "Lunevra enforcement agent status: 3");
    EXPECT_TRUE(computer.log.lines().front().starts_with(
        "Lunevra could not register its enforcement agent: "));
  }
}

TEST(SettingsPageTest, OpensThePageOfTheDesktopThatIsThere) {
  TemporaryFolder folder;
  const auto tool = folder / "xfce4-session-settings";
  writeFile(tool, "#!/bin/sh\necho opened > '" + (folder / "trace").string() + "'\n");
  fs::permissions(tool, fs::perms::owner_all);
  EXPECT_FALSE(SettingsPage("KDE", folder.path()).open());
  EXPECT_FALSE(SettingsPage("XFCE", "/nowhere").open());
  EXPECT_FALSE(SettingsPage("", "").open());
  EXPECT_TRUE(SettingsPage("ubuntu:XFCE", "/nowhere:" + folder.path().string()).open());
  EXPECT_TRUE(eventually([&] { return contents(folder / "trace") == "opened\n"; }));
}

}  // namespace
}  // namespace lunevra
