#include "physical_key/physical_key_manager.h"

#include <algorithm>
#include <array>
#include <filesystem>

#include "platform/foundation/base64.h"
#include "platform/foundation/digest.h"
#include "platform/foundation/key_payload_json.h"
#include "platform/foundation/uuid.h"

namespace lunevra {
namespace {

constexpr std::int64_t payloadVersion = 1;
constexpr std::size_t secretLength = 32;

std::string keyFilePath(const std::string& volume) {
  return (std::filesystem::path(volume) / PhysicalKeyManager::keyFileName).string();
}

std::string lastPathComponent(const std::string& path) {
  const auto name = std::filesystem::path(path).filename().string();
  return name.empty() ? path : name;
}

std::string standardised(const std::string& path) {
  auto normal = std::filesystem::path(path).lexically_normal().string();
  while (normal.size() > 1 && normal.ends_with('/')) normal.pop_back();
  return normal;
}

// Paths are compared by the characters a person sees, not by the bytes that encode them.
std::ptrdiff_t characterCount(const std::string& utf8) {
  return std::count_if(utf8.begin(), utf8.end(),
                       [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; });
}

}  // namespace

PhysicalKeyManager::PhysicalKeyManager(const Host& host)
    : keychain_(host.keychain), volumes_(host.volumes), random_(host.random) {}

std::optional<Bytes> PhysicalKeyManager::loadFingerprint() const {
  return keychain_.find(keychainService, keychainAccount);
}

void PhysicalKeyManager::storeFingerprint(const Bytes& digest) {
  keychain_.remove(keychainService, keychainAccount);  // a missing item is normal
  const auto status = keychain_.add(keychainService, keychainAccount, digest);
  if (status != 0) throw PhysicalKeyError::keychainFailure(status);
}

std::string PhysicalKeyManager::createKey(const std::string& chosenFolder) {
  if (findMountedMatchingKey()) throw PhysicalKeyError::matchingKeyMounted();
  const auto root = resolveVolumeRoot(chosenFolder, true);

  Bytes secret(secretLength);
  std::array<std::uint8_t, 16> identifier{};
  if (!random_.fill(secret) || !random_.fill(identifier))
    throw PhysicalKeyError::randomGenerationFailed();
  const auto json =
      encodeKeyPayload({payloadVersion, randomUuidText(identifier), base64Encode(secret)});

  const auto file = keyFilePath(root);
  try {
    volumes_.writeFileAtomically(file, json);
  } catch (const LocalizedError& error) {
    throw PhysicalKeyError::couldNotWrite(lastPathComponent(root), error);
  }
  volumes_.setHidden(file);
  storeFingerprint(sha256(secret));
  return volumeDisplayName(root);
}

std::optional<std::string> PhysicalKeyManager::findMountedMatchingKey() const {
  const auto fingerprint = loadFingerprint();
  if (!fingerprint) return std::nullopt;
  for (const auto& volume : volumes_.mountedVolumes()) {
    if (!isEligibleKeyVolume(volume)) continue;
    const auto contents = volumes_.readFile(keyFilePath(volume));
    if (contents && verifyKeyFile(*contents, *fingerprint)) return volumeDisplayName(volume);
  }
  return std::nullopt;
}

bool PhysicalKeyManager::verifyKeyFile(std::string_view contents, const Bytes& fingerprint) {
  const auto payload = decodeKeyPayload(contents);
  if (!payload || payload->version != payloadVersion) return false;
  const auto secret = base64Decode(payload->secret);
  return secret && sha256(*secret) == fingerprint;
}

bool PhysicalKeyManager::isEligibleKeyVolume(const std::string& volume) const {
  const auto traits = volumes_.traits(volume);
  return traits && traits->isInternal == false && traits->isLocal == true &&
         traits->isRootFileSystem != true;
}

std::string PhysicalKeyManager::resolveVolumeRoot(const std::string& path,
                                                  bool requireWritable) const {
  const auto target = standardised(path);
  auto candidates = volumes_.mountedVolumes();
  std::erase_if(candidates, [&](const std::string& volume) {
    return target != volume && !target.starts_with(volume + "/");
  });
  std::stable_sort(candidates.begin(), candidates.end(), [](const auto& left, const auto& right) {
    return characterCount(left) > characterCount(right);
  });
  if (candidates.empty() || !isEligibleKeyVolume(candidates.front()))
    throw PhysicalKeyError::externalDriveRequired();
  const auto& root = candidates.front();
  if (requireWritable && volumes_.isReadOnly(root) == true)
    throw PhysicalKeyError::driveIsReadOnly();
  return root;
}

std::string PhysicalKeyManager::volumeDisplayName(const std::string& volume) const {
  return volumes_.localizedName(volume).value_or(lastPathComponent(volume));
}

}  // namespace lunevra
