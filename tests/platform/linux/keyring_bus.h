#pragma once

#include <array>
#include <csignal>
#include <cstdlib>

#include "platform/linux/private_bus.h"

namespace lunevra {

/// A session bus of this process alone, on which nobody is started unasked, and a keyring on it
/// that keeps its collections in a home of its own.
class KeyringBus {
 public:
  KeyringBus() {
    ::setenv("DBUS_SESSION_BUS_ADDRESS", bus_.address().c_str(), 1);
    ::setenv("HOME", folder_.path().c_str(), 1);
    ::setenv("XDG_DATA_HOME", folder_.path().c_str(), 1);
    ::setenv("XDG_RUNTIME_DIR", folder_.path().c_str(), 1);
  }

  /// Its default collection is unlocked, as after the person logged in.
  void startKeyring() {
    writeFile(folder_ / "password", "pw");
    keyring_.emplace(Command{"sh", "-c",
                             "exec gnome-keyring-daemon --foreground --unlock "
                             "--components=secrets <" +
                                 (folder_ / "password").string()},
                     Command{});
    EXPECT_TRUE(eventually([] { return asks("ReadAlias string:default | grep -q collection"); }));
  }
  static bool lockKeyring() {
    return asks("Lock array:objpath:/org/freedesktop/secrets/collection/login");
  }
  /// As the login does, over the keyring's own socket.
  [[nodiscard]] bool unlockKeyring() const {
    const UniqueDescriptor control(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
    (folder_ / "keyring/control").string().copy(address.sun_path, sizeof(address.sun_path) - 1);
    const std::string request(
        "\0"
        "\0\0\0\x0E"
        "\0\0\0\1"
        "\0\0\0\2"
        "pw",
        15);
    std::array<char, 8> answer{1, 1, 1, 1, 1, 1, 1, 1};
    const std::array<char, 8> success{0, 0, 0, 8, 0, 0, 0, 0};
    return ::connect(control.get(), reinterpret_cast<sockaddr*>(&address), sizeof(address)) == 0 &&
           ::write(control.get(), request.data(), request.size()) == 15 &&
           ::recv(control.get(), answer.data(), answer.size(), MSG_WAITALL) == 8 &&
           answer == success;
  }
  void signalKeyring(int number) { keyring_->signal(number); }
  void stopKeyring() { keyring_.reset(); }
  void stopBus() { bus_.kill(); }

  /// Whether another process did it.
  static bool succeeds(const std::string& command) {
    return std::system(("{ " + command + "; } >/dev/null 2>&1").c_str()) == 0;
  }

 private:
  static bool asks(const std::string& method) {
    return succeeds(
        "dbus-send --print-reply --dest=org.freedesktop.secrets /org/freedesktop/secrets "
        "org.freedesktop.Secret.Service." +
        method);
  }

  using Command = std::vector<std::string>;

  TemporaryFolder folder_;
  PrivateBus bus_;
  std::optional<host_test::ChildProcess> keyring_;
};

}  // namespace lunevra
