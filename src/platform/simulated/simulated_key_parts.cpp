#include "platform/simulated/simulated_key_parts.h"

#include <algorithm>
#include <utility>

namespace lunevra {

std::optional<Bytes> SimulatedKeychain::find(std::string_view /*service*/,
                                             std::string_view /*account*/) const {
  return item_;
}

std::int32_t SimulatedKeychain::remove(std::string_view /*service*/, std::string_view /*account*/) {
  item_.reset();
  return 0;
}

std::int32_t SimulatedKeychain::add(std::string_view /*service*/, std::string_view /*account*/,
                                    const Bytes& value) {
  if (addStatus_ == 0) item_ = value;
  return addStatus_;
}

void SimulatedVolumes::attach(const Volume& volume) {
  const auto same = std::find_if(attached_.begin(), attached_.end(),
                                 [&](const auto& other) { return other.name == volume.name; });
  if (same == attached_.end())
    attached_.push_back(volume);
  else
    *same = volume;
  indexPaths();
}

void SimulatedVolumes::eject(const std::string& name) {
  std::erase_if(attached_, [&](const auto& volume) { return volume.name == name; });
  indexPaths();
}

void SimulatedVolumes::indexPaths() {
  byPath_.clear();
  for (std::size_t index = 0; index < attached_.size(); ++index)
    byPath_.emplace(attached_[index].path, index);
}

void SimulatedVolumes::putFile(const std::string& volumeName, const std::string& relativePath,
                               std::string contents) {
  files_[volumeName][relativePath] = std::move(contents);
}

std::vector<std::string> SimulatedVolumes::mountedVolumes() const {
  std::vector<std::string> paths;
  for (const auto& volume : attached_) paths.push_back(volume.path);
  return paths;
}

const SimulatedVolumes::Volume* SimulatedVolumes::at(const std::string& path) const {
  const auto found = byPath_.find(path);
  return found == byPath_.end() ? nullptr : &attached_[found->second];
}

std::optional<VolumeTraits> SimulatedVolumes::traits(const std::string& volume) const {
  const auto* const found = at(volume);
  return found != nullptr && found->isReadable ? std::optional(found->traits) : std::nullopt;
}

std::optional<bool> SimulatedVolumes::isReadOnly(const std::string& volume) const {
  const auto* const found = at(volume);
  if (found == nullptr) return std::nullopt;
  if (found->readOnlyFlagError) throw LocalizedError(*found->readOnlyFlagError);
  return found->isReadOnly;
}

std::optional<std::string> SimulatedVolumes::localizedName(const std::string& volume) const {
  const auto* const found = at(volume);
  return found != nullptr && found->isNamed ? std::optional(found->name) : std::nullopt;
}

std::optional<SimulatedVolumes::Location> SimulatedVolumes::locate(const std::string& path) const {
  for (auto slash = path.rfind('/'); slash != std::string::npos;
       slash = path.rfind('/', slash - 1)) {
    const auto* const volume = at(path.substr(0, std::max<std::size_t>(slash, 1)));
    if (volume != nullptr) return Location{volume, path.substr(slash + 1)};
    if (slash == 0) break;
  }
  return std::nullopt;
}

std::optional<std::string> SimulatedVolumes::readFile(const std::string& path) const {
  const auto location = locate(path);
  if (!location) return std::nullopt;
  const auto files = files_.find(location->volume->name);
  if (files == files_.end()) return std::nullopt;
  const auto file = files->second.find(location->relativePath);
  return file == files->second.end() ? std::nullopt : std::optional(file->second);
}

void SimulatedVolumes::writeFileAtomically(const std::string& path, const std::string& contents) {
  const auto location = locate(path);
  if (!location) throw LocalizedError("No such file or directory");
  if (location->volume->writeError) throw LocalizedError(*location->volume->writeError);
  files_[location->volume->name][location->relativePath] = contents;
}

void SimulatedOpenPanels::chooseFolder(const FolderPanelRequest& /*request*/,
                                       std::function<void(std::optional<std::string>)> completion) {
  wasShown_ = true;
  runLoop_.async([completion = std::move(completion), answer = answer_] { completion(answer); });
}

void SimulatedOpenPanels::answerNextWith(std::optional<std::string> folder) {
  answer_ = std::move(folder);
  wasShown_ = false;
}

}  // namespace lunevra
