#pragma once

#include "platform/keychain.h"
#include "platform/open_panel.h"
#include "platform/run_loop.h"
#include "platform/volume_source.h"

namespace lunevra {

// This build has no keychain, sees no drives and has no file panel. The parts below
// say so honestly to whoever asks.

/// Holds no items and takes none.
class UnavailableKeychain : public Keychain {
 public:
  [[nodiscard]] std::optional<Bytes> find(std::string_view service,
                                          std::string_view account) const override;
  std::int32_t remove(std::string_view service, std::string_view account) override;
  std::int32_t add(std::string_view service, std::string_view account, const Bytes& value) override;
};

/// A computer with no volume mounted.
class UnavailableVolumes : public VolumeSource {
 public:
  [[nodiscard]] std::vector<std::string> mountedVolumes() const override;
  [[nodiscard]] std::optional<VolumeTraits> traits(const std::string& volume) const override;
  [[nodiscard]] std::optional<bool> isReadOnly(const std::string& volume) const override;
  [[nodiscard]] std::optional<std::string> localizedName(const std::string& volume) const override;
  [[nodiscard]] std::optional<std::string> readFile(const std::string& path) const override;
  void writeFileAtomically(const std::string& path, const std::string& contents) override;
  void setHidden(const std::string& path) override;
};

/// Every panel is cancelled on a later turn of the run loop, which outlives this.
class UnavailableOpenPanels : public OpenPanels {
 public:
  explicit UnavailableOpenPanels(RunLoop& runLoop) : runLoop_(runLoop) {}
  void chooseFolder(const FolderPanelRequest& request,
                    std::function<void(std::optional<std::string>)> completion) override;

 private:
  RunLoop& runLoop_;
};

}  // namespace lunevra
