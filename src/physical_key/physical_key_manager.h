#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "physical_key/physical_key_error.h"
#include "platform/host.h"

namespace lunevra {

/// Makes the USB key, keeps its fingerprint, and finds it among the mounted volumes. Stateless: the
/// durable state is the keychain item and the key files on drives. Main thread only.
class PhysicalKeyManager {
 public:
  static constexpr std::string_view keychainService = "com.lunevra.physical-key";
  static constexpr std::string_view keychainAccount = "emergency-key-fingerprint";
  static constexpr std::string_view keyFileName = ".lunevra-emergency-key";

  explicit PhysicalKeyManager(const Host& host);

  /// The stored fingerprint; every problem of the keychain yields none.
  [[nodiscard]] std::optional<Bytes> loadFingerprint() const;
  /// Replaces the stored fingerprint. Throws PhysicalKeyError (keychainFailure).
  void storeFingerprint(const Bytes& digest);

  /// Writes a new key to the root of the volume that holds `chosenFolder` and stores its
  /// fingerprint, which invalidates every key made before. Answers the volume's display name;
  /// throws PhysicalKeyError, or the LocalizedError of reading the volume's read-only flag.
  std::string createKey(const std::string& chosenFolder);

  /// Display name of the first mounted volume whose key file matches the stored fingerprint. Cheap
  /// enough for every second; without a fingerprint it asks the keychain once and nothing else.
  [[nodiscard]] std::optional<std::string> findMountedMatchingKey() const;

  [[nodiscard]] static bool verifyKeyFile(std::string_view contents, const Bytes& fingerprint);

 private:
  [[nodiscard]] bool isEligibleKeyVolume(const std::string& volume) const;
  [[nodiscard]] std::string resolveVolumeRoot(const std::string& path, bool requireWritable) const;
  [[nodiscard]] std::string volumeDisplayName(const std::string& volume) const;

  Keychain& keychain_;
  VolumeSource& volumes_;
  RandomSource& random_;
};

}  // namespace lunevra
