#pragma once

#include <filesystem>

#include "platform/service_manager.h"

namespace lunevra {

/// The program as an entry in the desktop's list of what starts at login. Enabled while the entry
/// is there and nobody has switched it off, otherwise not registered.
class LoginItem : public Service {
 public:
  LoginItem(const std::filesystem::path& autostartFolder, std::filesystem::path program);

  [[nodiscard]] ServiceStatus status() const override;
  void registerService() override;
  void unregisterService() override;

 private:
  std::filesystem::path entry_;
  std::filesystem::path program_;
};

}  // namespace lunevra
