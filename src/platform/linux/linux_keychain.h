#pragma once

#include <filesystem>
#include <memory>

#include "platform/linux/file_keychain.h"

namespace lunevra {

class SecretServiceKeychain;

/// The person's Secret Service, and a folder of files where there is none. Which of the two holds
/// an item: what is added goes to the service if there is one, else to a file; and it leaves no
/// file behind in the first case. So a file is always newer than what the service may hold, and
/// counts first; a key that was made while the service was down stays known.
///
/// Answers a keychain_status. A service that is locked or silent takes and gives nothing, and the
/// file is not tried in its place: what it held would come back later.
class LinuxKeychain : public Keychain {
 public:
  /// Without a bus there is no service to ask.
  LinuxKeychain(std::filesystem::path folder, bool hasSessionBus);
  ~LinuxKeychain() override;
  LinuxKeychain(const LinuxKeychain&) = delete;
  LinuxKeychain& operator=(const LinuxKeychain&) = delete;

  [[nodiscard]] std::optional<Bytes> find(std::string_view service,
                                          std::string_view account) const override;
  std::int32_t remove(std::string_view service, std::string_view account) override;
  std::int32_t add(std::string_view service, std::string_view account, const Bytes& value) override;

 private:
  FileKeychain files_;
  std::unique_ptr<SecretServiceKeychain> secretService_;  // none without a bus
};

}  // namespace lunevra
