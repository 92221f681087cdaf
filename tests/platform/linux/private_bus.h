#pragma once

#include <sys/socket.h>
#include <sys/un.h>

#include "host/child_process.h"
#include "platform/linux/linux_test_support.h"
#include "platform/linux/unique_descriptor.h"

namespace lunevra {

/// A message bus of its own for one test; it starts the services described in `services()`.
class PrivateBus {
 public:
  explicit PrivateBus(const std::string& policy = "") {
    std::filesystem::create_directory(services());
    writeFile(folder_ / "bus.conf",
              "<busconfig><type>session</type><listen>" + address() + "</listen><servicedir>" +
                  services().string() +
                  "</servicedir><policy context='default'><allow send_destination='*'/>"
                  "<allow eavesdrop='false'/><allow own='*'/>" +
                  policy + "</policy></busconfig>");
    start();
  }

  void start() {
    std::filesystem::remove(folder_ / "socket");
    process_.emplace(std::vector<std::string>{"dbus-daemon", "--nofork", "--nopidfile",
                                              "--config-file=" + (folder_ / "bus.conf").string()},
                     std::vector<std::string>{});
    EXPECT_TRUE(eventually([this] { return std::filesystem::exists(folder_ / "socket"); }));
  }
  void kill() { process_.reset(); }

  [[nodiscard]] std::filesystem::path socket() const { return folder_ / "socket"; }
  [[nodiscard]] std::string address() const { return "unix:path=" + socket().string(); }
  [[nodiscard]] std::filesystem::path services() const { return folder_ / "services"; }

 private:
  TemporaryFolder folder_;
  std::optional<host_test::ChildProcess> process_;
};

/// A bus that takes connections and never says a word.
class HungBus {
 public:
  HungBus() {
    sockaddr_un name{};
    name.sun_family = AF_UNIX;
    const auto path = (folder_ / "socket").string();
    path.copy(name.sun_path, sizeof name.sun_path - 1);
    EXPECT_EQ(::bind(socket_.get(), reinterpret_cast<const sockaddr*>(&name), sizeof name), 0);
    EXPECT_EQ(::listen(socket_.get(), 100), 0);
  }
  [[nodiscard]] std::string address() const { return "unix:path=" + (folder_ / "socket").string(); }

 private:
  TemporaryFolder folder_;
  UniqueDescriptor socket_{::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)};
};

}  // namespace lunevra
