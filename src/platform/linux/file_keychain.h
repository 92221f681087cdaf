#pragma once

#include <filesystem>

#include "platform/keychain.h"
#include "platform/linux/unique_descriptor.h"

namespace lunevra {

/// A keychain of files, one an item, in a folder for its owner's eyes only. An item counts only if
/// nobody else can have put it there: file and folder are no symbolic links, belong to this person
/// and are closed to everybody else, and the file is a small regular one. Anything else is no item.
/// Adding puts the folder's permissions right and replaces whatever file is in the way.
///
/// Answers a keychain_status.
class FileKeychain : public Keychain {
 public:
  /// The folder's parent exists, or is made with it.
  explicit FileKeychain(std::filesystem::path folder) : folder_(std::move(folder)) {}

  [[nodiscard]] std::optional<Bytes> find(std::string_view service,
                                          std::string_view account) const override;
  std::int32_t remove(std::string_view service, std::string_view account) override;
  std::int32_t add(std::string_view service, std::string_view account, const Bytes& value) override;

 private:
  /// Invalid unless the folder is this person's own.
  [[nodiscard]] UniqueDescriptor openFolder() const;

  std::filesystem::path folder_;
};

}  // namespace lunevra
