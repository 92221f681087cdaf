#include "platform/linux/linux_keychain.h"

#include <utility>

#include "platform/linux/keychain_status.h"
#include "platform/linux/secret_service_keychain.h"

namespace lunevra {
namespace {

KeychainItemName nameOf(std::string_view service, std::string_view account) {
  return {std::string(service), std::string(account)};
}

bool isGone(std::int32_t status) {
  return status == keychain_status::success || status == keychain_status::itemNotFound;
}

}  // namespace

LinuxKeychain::LinuxKeychain(std::filesystem::path folder, bool hasSessionBus)
    : files_(std::move(folder)) {
  if (hasSessionBus) secretService_ = std::make_unique<SecretServiceKeychain>();
}

LinuxKeychain::~LinuxKeychain() = default;

std::optional<Bytes> LinuxKeychain::find(std::string_view service, std::string_view account) const {
  if (auto value = files_.find(service, account)) return value;
  return secretService_ ? secretService_->find(nameOf(service, account)) : std::nullopt;
}

std::int32_t LinuxKeychain::remove(std::string_view service, std::string_view account) {
  const auto fileStatus = files_.remove(service, account);
  if (!isGone(fileStatus) || !secretService_) return fileStatus;
  const auto status = secretService_->remove(nameOf(service, account)).value_or(fileStatus);
  return status == keychain_status::itemNotFound ? fileStatus : status;
}

std::int32_t LinuxKeychain::add(std::string_view service, std::string_view account,
                                const Bytes& value) {
  // The service comes first, but while a file is left it would be what counts.
  if (secretService_) {
    const auto status = secretService_->add(nameOf(service, account), value);
    if (status && *status != keychain_status::success) return *status;
    if (status) {
      const auto fileStatus = files_.remove(service, account);
      return isGone(fileStatus) ? keychain_status::success : fileStatus;
    }
  }
  return files_.add(service, account, value);
}

}  // namespace lunevra
