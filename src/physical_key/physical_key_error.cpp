#include "physical_key/physical_key_error.h"

namespace lunevra {

PhysicalKeyError PhysicalKeyError::couldNotWrite(const std::string& volumeName,
                                                 const LocalizedError& underlying) {
  return {Kind::couldNotWrite, "Lunevra could not write the key to " + volumeName + ": " +
                                   underlying.localizedDescription()};
}

PhysicalKeyError PhysicalKeyError::keychainFailure(std::int32_t status) {
  return {Kind::keychainFailure, "Lunevra could not save the key fingerprint in Keychain (" +
                                     std::to_string(status) + ")."};
}

PhysicalKeyError PhysicalKeyError::externalDriveRequired() {
  return {Kind::externalDriveRequired,
          "Choose a directly connected external USB drive. Internal, network, and disk-image "
          "volumes are not accepted."};
}

PhysicalKeyError PhysicalKeyError::driveIsReadOnly() {
  return {Kind::driveIsReadOnly, "That USB drive is read-only. Unlock it or choose another drive."};
}

PhysicalKeyError PhysicalKeyError::randomGenerationFailed() {
  return {Kind::randomGenerationFailed, "Lunevra could not generate a secure key."};
}

PhysicalKeyError PhysicalKeyError::matchingKeyMounted() {
  return {Kind::matchingKeyMounted,
          "Your current physical key is mounted. Eject it before creating a new one — otherwise "
          "the trusted friend's copy would silently be invalidated."};
}

}  // namespace lunevra
