#include "platform/linux/linux_keychain.h"

#include <functional>
#include <optional>
#include <sys/stat.h>

#include "platform/foundation/base64.h"
#include "platform/linux/keychain_status.h"
#include "platform/linux/keyring_bus.h"

namespace lunevra {
namespace {

using std::chrono::milliseconds;
using std::chrono_literals::operator""ms;

// Far more than is promised, far less than a service that hangs takes: tests share the computer.
constexpr auto patience = 8000ms;

constexpr auto service = "com.lunevra.physical-key";
constexpr auto account = "emergency-key-fingerprint";
const Bytes first{0, 1, 2, 0xFF};
const Bytes second(32, 7);

milliseconds timeTaken(const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration_cast<milliseconds>(std::chrono::steady_clock::now() - start);
}

class SecretServiceTest : public testing::Test {
 protected:
  LinuxKeychain& restart() {
    keychain_.reset();
    return keychain_.emplace(folder_ / "keychain", true);
  }
  [[nodiscard]] std::optional<Bytes> item() const { return keychain_->find(service, account); }
  [[nodiscard]] bool becomes(const std::optional<Bytes>& value) const {
    return eventually([&] { return item() == value; });
  }
  /// In the end: a busy computer may take longer than an attempt may.
  [[nodiscard]] bool keeps(const Bytes& value) {
    return eventually([&] {
      return keychain_->add(service, account, value) == keychain_status::success && item() == value;
    });
  }
  [[nodiscard]] bool hasFile() const {
    return std::filesystem::exists(folder_ / "keychain") &&
           !std::filesystem::is_empty(folder_ / "keychain");
  }
  static bool storeElsewhere(const Bytes& value) {
    return KeyringBus::succeeds("printf " + base64Encode(value) +
                                " | secret-tool store --label=x service " + service + " account " +
                                account);
  }
  static bool clearElsewhere() {
    return KeyringBus::succeeds(std::string("secret-tool clear service ") + service + " account " +
                                account);
  }

  KeyringBus bus_;
  TemporaryFolder folder_;
  std::optional<LinuxKeychain> keychain_;
};

TEST_F(SecretServiceTest, KeepsOneItemAcrossRestartsAndSeesWhatOthersDo) {
  bus_.startKeyring();
  auto& keychain = restart();
  EXPECT_EQ(item(), std::nullopt);
  EXPECT_NE(keychain.remove(service, account), keychain_status::success);
  EXPECT_TRUE(keeps(first));
  EXPECT_FALSE(hasFile());
  EXPECT_TRUE(KeyringBus::succeeds(std::string("test \"$(secret-tool lookup service ") + service +
                                   " account " + account + ")\" = " + base64Encode(first)));
  restart();
  EXPECT_TRUE(becomes(first));

  restart();
  EXPECT_TRUE(keeps(second));
  EXPECT_TRUE(clearElsewhere());
  EXPECT_TRUE(becomes(std::nullopt));
  EXPECT_TRUE(storeElsewhere(first));
  EXPECT_TRUE(becomes(first));
  static_cast<void>(keychain_->remove(service, account));
  EXPECT_TRUE(becomes(std::nullopt));
}

TEST_F(SecretServiceTest, ALockedCollectionHoldsAndTakesNothingAndAsksNobody) {
  bus_.startKeyring();
  restart();
  EXPECT_TRUE(keeps(first));
  ASSERT_TRUE(KeyringBus::lockKeyring());
  EXPECT_TRUE(becomes(std::nullopt));
  EXPECT_LT(timeTaken([&] {
              EXPECT_EQ(keychain_->add(service, account, second),
                        keychain_status::interactionNotAllowed);
            }),
            patience);
  EXPECT_FALSE(hasFile());
  restart();
  EXPECT_EQ(item(), std::nullopt);
  ASSERT_TRUE(bus_.unlockKeyring());
  EXPECT_TRUE(becomes(first)) << "the person has logged in";
}

TEST_F(SecretServiceTest, AServiceThatHangsHoldsNobodyUp) {
  bus_.startKeyring();
  restart();
  EXPECT_TRUE(keeps(first));
  bus_.signalKeyring(SIGSTOP);
  EXPECT_LT(timeTaken([&] { EXPECT_EQ(item(), first); }), patience) << "the last answer";
  EXPECT_LT(timeTaken([&] {
              EXPECT_EQ(keychain_->add(service, account, second), keychain_status::notAvailable);
            }),
            patience);
  EXPECT_FALSE(hasFile()) << "the old item would come back and count for nothing";
  EXPECT_LT(timeTaken([&] {
              restart();
              EXPECT_EQ(item(), std::nullopt);
            }),
            patience);
  EXPECT_LT(timeTaken([&] {
              for (int question = 0; question < 1000; ++question) EXPECT_EQ(item(), std::nullopt);
            }),
            patience);
  bus_.signalKeyring(SIGCONT);
  EXPECT_TRUE(eventually([&] { return item().has_value(); }));
}

TEST_F(SecretServiceTest, AKeyMadeWhileTheServiceIsDownStaysKnown) {
  bus_.startKeyring();
  restart();
  EXPECT_TRUE(keeps(first));
  bus_.stopKeyring();
  EXPECT_TRUE(becomes(std::nullopt));
  EXPECT_TRUE(keeps(second));
  EXPECT_TRUE(hasFile());
  bus_.startKeyring();
  EXPECT_EQ(restart().find(service, account), second);
  EXPECT_TRUE(keeps(first));
  EXPECT_FALSE(hasFile());
  EXPECT_EQ(item(), first);
}

TEST_F(SecretServiceTest, TheBusMayComeToAnEnd) {
  bus_.startKeyring();
  restart();
  EXPECT_TRUE(keeps(first));
  bus_.stopBus();
  EXPECT_TRUE(becomes(std::nullopt));
  EXPECT_TRUE(keeps(second));
  EXPECT_TRUE(hasFile());
}

TEST(FileKeychainTest, KeepsItemsForTheirOwnerOnly) {
  const TemporaryFolder folder;
  FileKeychain keychain(folder / "keychain");
  EXPECT_EQ(keychain.find(service, account), std::nullopt);
  EXPECT_EQ(keychain.remove(service, account), keychain_status::itemNotFound);
  for (const auto& value : {first, Bytes{}, second}) {
    EXPECT_EQ(keychain.add(service, account, value), keychain_status::success);
    EXPECT_EQ(FileKeychain(folder / "keychain").find(service, account), value);
  }
  EXPECT_EQ(keychain.find(service, "another"), std::nullopt);
  EXPECT_EQ(keychain.add("a/../b", "\n", first), keychain_status::success);
  EXPECT_EQ(keychain.find("a/../b", "\n"), first);
  struct stat status {};
  ASSERT_EQ(::stat((folder / "keychain").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777U, 0700U);
  EXPECT_EQ(keychain.remove(service, account), keychain_status::success);
  EXPECT_EQ(keychain.find(service, account), std::nullopt);
  EXPECT_EQ(FileKeychain("/proc/nowhere").add(service, account, first),
            keychain_status::noWritePermission);
}

TEST(FileKeychainTest, WhatSomebodyElseMayHaveWrittenIsNoItem) {
  struct Case {
    const char* what;
    std::function<void(const std::filesystem::path& folder, const std::filesystem::path& file)>
        spoil;
    bool canBeReplaced = true;
  };
  using std::filesystem::path;
  const Case cases[] = {
      {"open to the group", [](const path&, const path& file) { ::chmod(file.c_str(), 0640); }},
      {"writable folder", [](const path& folder, const path&) { ::chmod(folder.c_str(), 0777); }},
      {"too large", [](const path&, const path& file) { ::truncate(file.c_str(), 1'000'000'000); }},
      {"symbolic link",
       [](const path& folder, const path& file) {
         std::filesystem::rename(file, folder / "elsewhere");
         std::filesystem::create_symlink("elsewhere", file);
       }},
      {"pipe",
       [](const path&, const path& file) {
         std::filesystem::remove(file);
         ::mkfifo(file.c_str(), 0600);
       }},
      {"folder in its place",
       [](const path&, const path& file) {
         std::filesystem::remove(file);
         std::filesystem::create_directory(file);
         std::filesystem::permissions(file, std::filesystem::perms::owner_all);
       },
       false},
      {"linked folder",
       [](const path& folder, const path&) {
         std::filesystem::rename(folder, folder.parent_path() / "elsewhere");
         std::filesystem::create_symlink("elsewhere", folder);
       },
       false},
      {"another owner",
       [](const path&, const path& file) {
         if (::chown(file.c_str(), 1, 1) != 0) std::filesystem::remove(file);  // not root
       }},
  };
  for (const auto& [what, spoil, canBeReplaced] : cases) {
    const TemporaryFolder folder;
    FileKeychain keychain(folder / "keychain");
    ASSERT_EQ(keychain.add(service, account, first), keychain_status::success);
    spoil(folder / "keychain", std::filesystem::directory_iterator(folder / "keychain")->path());
    EXPECT_EQ(keychain.find(service, account), std::nullopt) << what;
    const auto status = keychain.add(service, account, second);
    EXPECT_EQ(status == keychain_status::success, canBeReplaced) << what << ' ' << status;
    EXPECT_EQ(keychain.find(service, account), canBeReplaced ? std::optional(second) : std::nullopt)
        << what;
  }
}

}  // namespace
}  // namespace lunevra
