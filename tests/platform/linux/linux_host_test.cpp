#include "platform/linux/linux_host.h"

#include "platform/foundation/stored_value_json.h"
#include "platform/host_contract/host_contract.h"
#include "platform/linux/linux_test_support.h"

namespace lunevra {
namespace {

class LinuxComputer {
 public:
  LinuxComputer() {
    setZone("UTC");
    restart();
  }
  [[nodiscard]] Host host() { return host_->host(); }
  void restart() {
    host_.reset();
    host_ = std::make_unique<LinuxHost>(paths(), runLoop_, panels_);
  }
  void setZone(const std::string& zone) {
    std::filesystem::remove(folder_ / "localtime");
    std::filesystem::create_symlink("/usr/share/zoneinfo/" + zone, folder_ / "localtime");
  }
  void writeElsewhere(std::string_view key, const StoredValue& value) {
    const auto file = paths().cloudFolder / (std::string(key) + ".json");
    writeFile(folder_ / "incoming", encodeStoredValue(value));
    std::filesystem::rename(folder_ / "incoming", file);
  }
  bool until(const std::function<bool()>& condition) { return eventually(condition); }
  [[nodiscard]] LinuxPaths paths() const {
    return {.dataFolder = folder_ / "data",
            .cloudFolder = folder_ / "data/cloud",
            .lockFolders = {},
            .zone = {"", folder_ / "localtime", folder_ / "timezone"}};
  }

 private:
  TemporaryFolder folder_;
  ManualRunLoop runLoop_;
  NoPanels panels_;
  std::unique_ptr<LinuxHost> host_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Linux, HostContract, LinuxComputer);

TEST(LinuxHostTest, WorksWithoutAnyDisk) {
  ManualRunLoop runLoop;
  NoPanels panels;
  const std::filesystem::path nowhere = "/proc/nowhere";
  LinuxHost computer({nowhere, nowhere / "cloud", {nowhere}, {"", nowhere, nowhere}}, runLoop,
                     panels);
  auto host = computer.host();
  host.defaults.standard().set("key", true);
  host.cloud.set("key", true);
  host.cloud.synchronize();
  EXPECT_EQ(host.defaults.standard().flag("key"), true);
  EXPECT_EQ(host.cloud.object("key"), StoredValue(true));
  EXPECT_TRUE(host.calendar.components(host.clock.now()));
}

TEST(LinuxHostTest, WithoutABusServicesAreNotFoundAndSaySo) {
  LinuxComputer computer;
  auto host = computer.host();
  EXPECT_EQ(host.services.agent("agent").status(), ServiceStatus::notFound);
  EXPECT_THROW(host.services.agent("agent").registerService(), LocalizedError);
}

TEST(LinuxHostTest, LogLinesAreWholeWhateverTheTextHolds) {
  std::array<int, 2> channel{};
  ASSERT_EQ(::pipe(channel.data()), 0);
  expectChildSucceeds([&] {
    ::dup2(channel[1], STDERR_FILENO);
    StderrLog log;
    log.line("one\ntwo\r\x1b[2Jthree ü");
    log.line(std::string(10'000, 'x'));
  });
  ::close(channel[1]);
  std::string written(20'000, '\0');
  written.resize(static_cast<std::size_t>(::read(channel[0], written.data(), written.size())));
  ::close(channel[0]);
  EXPECT_EQ(written.substr(0, written.find('\n')), "one two  [2Jthree ü");
  EXPECT_EQ(std::count(written.begin(), written.end(), '\n'), 2);
}

}  // namespace
}  // namespace lunevra
