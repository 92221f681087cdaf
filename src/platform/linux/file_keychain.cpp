#include "platform/linux/file_keychain.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>

#include "platform/linux/file_name.h"
#include "platform/linux/folder_lock.h"
#include "platform/linux/keychain_status.h"
#include "platform/linux/whole_file.h"

namespace lunevra {
namespace {

constexpr std::size_t largestItem = 4096;

std::string fileName(std::string_view service, std::string_view account) {
  return escapedFileName(service) + '@' + escapedFileName(account);
}

bool isOwn(int descriptor) {
  struct stat status {};
  return ::fstat(descriptor, &status) == 0 && status.st_uid == ::geteuid();
}

bool isClosedToOthers(int descriptor) {
  struct stat status {};
  return ::fstat(descriptor, &status) == 0 && (status.st_mode & 0077U) == 0;
}

std::int32_t statusOf(int error) {
  return error == EACCES || error == EPERM || error == EROFS ? keychain_status::noWritePermission
                                                             : keychain_status::inputOutput;
}

}  // namespace

UniqueDescriptor FileKeychain::openFolder() const {
  UniqueDescriptor folder(::open(folder_.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
  return folder && isOwn(folder.get()) ? std::move(folder) : UniqueDescriptor();
}

std::optional<Bytes> FileKeychain::find(std::string_view service, std::string_view account) const {
  const auto folder = openFolder();
  if (!folder || !isClosedToOthers(folder.get())) return std::nullopt;
  const UniqueDescriptor file(::openat(folder.get(), fileName(service, account).c_str(),
                                       O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY));
  if (!file || !isOwn(file.get()) || !isClosedToOthers(file.get())) return std::nullopt;
  const auto contents = readWholeFile(file.get(), largestItem);
  return contents ? std::optional(Bytes(contents->begin(), contents->end())) : std::nullopt;
}

std::int32_t FileKeychain::remove(std::string_view service, std::string_view account) {
  const auto folder = openFolder();
  if (!folder) return keychain_status::itemNotFound;
  if (::unlinkat(folder.get(), fileName(service, account).c_str(), 0) != 0)
    return errno == ENOENT ? keychain_status::itemNotFound : statusOf(errno);
  ::fsync(folder.get());  // a file that comes back after a crash is as good as one never removed
  return keychain_status::success;
}

std::int32_t FileKeychain::add(std::string_view service, std::string_view account,
                               const Bytes& value) {
  makePrivateFolder(folder_);  // if there is none after, opening says so
  const auto folder = openFolder();
  if (!folder || (!isClosedToOthers(folder.get()) && ::fchmod(folder.get(), 0700) != 0))
    return keychain_status::noWritePermission;
  const auto failure =
      replaceFile(folder_ / fileName(service, account), std::string(value.begin(), value.end()));
  if (failure.empty()) return keychain_status::success;
  return ::faccessat(folder.get(), ".", W_OK, AT_EACCESS) == 0 ? keychain_status::inputOutput
                                                               : statusOf(errno);
}

}  // namespace lunevra
