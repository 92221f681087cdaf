#include "platform/linux/unavailable_services.h"

namespace lunevra {
namespace {

constexpr std::int32_t notAvailable = -1;

[[noreturn]] void refuse(const char* what) {
  throw LocalizedError(std::string(what) + " not available in this build.");
}

}  // namespace

std::optional<Bytes> UnavailableKeychain::find(std::string_view, std::string_view) const {
  return std::nullopt;
}
std::int32_t UnavailableKeychain::remove(std::string_view, std::string_view) {
  return notAvailable;
}
std::int32_t UnavailableKeychain::add(std::string_view, std::string_view, const Bytes&) {
  return notAvailable;
}

std::vector<std::string> UnavailableVolumes::mountedVolumes() const {
  return {};
}
std::optional<VolumeTraits> UnavailableVolumes::traits(const std::string&) const {
  return std::nullopt;
}
std::optional<bool> UnavailableVolumes::isReadOnly(const std::string&) const {
  refuse("Drives are");
}
std::optional<std::string> UnavailableVolumes::localizedName(const std::string&) const {
  return std::nullopt;
}
std::optional<std::string> UnavailableVolumes::readFile(const std::string&) const {
  return std::nullopt;
}
void UnavailableVolumes::writeFileAtomically(const std::string&, const std::string&) {
  refuse("Drives are");
}
void UnavailableVolumes::setHidden(const std::string&) {}

void UnavailableOpenPanels::chooseFolder(
    const FolderPanelRequest& /*request*/,
    std::function<void(std::optional<std::string>)> completion) {
  runLoop_.async([completion = std::move(completion)] { completion(std::nullopt); });
}

}  // namespace lunevra
