#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/keychain.h"
#include "platform/open_panel.h"
#include "platform/run_loop.h"
#include "platform/volume_source.h"

namespace lunevra {

/// A keychain with room for one item, which may refuse to store it.
class SimulatedKeychain final : public Keychain {
 public:
  [[nodiscard]] std::optional<Bytes> find(std::string_view service,
                                          std::string_view account) const override;
  std::int32_t remove(std::string_view service, std::string_view account) override;
  std::int32_t add(std::string_view service, std::string_view account, const Bytes& value) override;

  void setItem(std::optional<Bytes> item) { item_ = std::move(item); }
  void refuse(std::int32_t status) { addStatus_ = status; }

 private:
  std::optional<Bytes> item_;
  std::int32_t addStatus_ = 0;
};

/// Drives that can be attached and ejected; what is on them stays on them.
class SimulatedVolumes final : public VolumeSource {
 public:
  struct Volume {
    std::string name;
    std::string path;
    VolumeTraits traits{.isInternal = false, .isLocal = true, .isRootFileSystem = false};
    std::optional<bool> isReadOnly = false;
    bool isNamed = true;
    bool isReadable = true;
    std::optional<std::string> readOnlyFlagError;
    std::optional<std::string> writeError;
  };

  /// In place of the attached volume of that name, or after all others.
  void attach(const Volume& volume);
  void eject(const std::string& name);
  void putFile(const std::string& volumeName, const std::string& relativePath,
               std::string contents);

  [[nodiscard]] std::vector<std::string> mountedVolumes() const override;
  [[nodiscard]] std::optional<VolumeTraits> traits(const std::string& volume) const override;
  [[nodiscard]] std::optional<bool> isReadOnly(const std::string& volume) const override;
  [[nodiscard]] std::optional<std::string> localizedName(const std::string& volume) const override;
  [[nodiscard]] std::optional<std::string> readFile(const std::string& path) const override;
  void writeFileAtomically(const std::string& path, const std::string& contents) override;
  void setHidden(const std::string& /*path*/) override {}

 private:
  struct Location {
    const Volume* volume;
    std::string relativePath;
  };
  void indexPaths();
  [[nodiscard]] const Volume* at(const std::string& path) const;
  [[nodiscard]] std::optional<Location> locate(const std::string& path) const;

  std::vector<Volume> attached_;
  std::map<std::string, std::size_t> byPath_;                        // into attached_
  std::map<std::string, std::map<std::string, std::string>> files_;  // by volume name, then path
};

/// A folder chooser whose answer is known beforehand.
class SimulatedOpenPanels final : public OpenPanels {
 public:
  explicit SimulatedOpenPanels(RunLoop& runLoop) : runLoop_(runLoop) {}

  void chooseFolder(const FolderPanelRequest& request,
                    std::function<void(std::optional<std::string>)> completion) override;

  void answerNextWith(std::optional<std::string> folder);
  /// Whether a panel was shown since its answer was set.
  [[nodiscard]] bool wasShown() const { return wasShown_; }

 private:
  RunLoop& runLoop_;
  std::optional<std::string> answer_;
  bool wasShown_ = false;
};

}  // namespace lunevra
