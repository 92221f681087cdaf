#pragma once

#include <cstdint>
#include <string>

#include "platform/localized_error.h"

namespace lunevra {

/// Why a key could not be created; the description is the person's text.
class PhysicalKeyError : public LocalizedError {
 public:
  enum class Kind {
    couldNotWrite,
    keychainFailure,
    externalDriveRequired,
    driveIsReadOnly,
    randomGenerationFailed,
    matchingKeyMounted,
  };

  static PhysicalKeyError couldNotWrite(const std::string& volumeName,
                                        const LocalizedError& underlying);
  static PhysicalKeyError keychainFailure(std::int32_t status);
  static PhysicalKeyError externalDriveRequired();
  static PhysicalKeyError driveIsReadOnly();
  static PhysicalKeyError randomGenerationFailed();
  static PhysicalKeyError matchingKeyMounted();

  [[nodiscard]] Kind kind() const { return kind_; }

 private:
  PhysicalKeyError(Kind kind, const std::string& text) : LocalizedError(text), kind_(kind) {}

  Kind kind_;
};

}  // namespace lunevra
