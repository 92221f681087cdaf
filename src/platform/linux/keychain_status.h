#pragma once

#include <cstdint>

namespace lunevra::keychain_status {

// The numbers that a person who looks them up finds explained.
inline constexpr std::int32_t success = 0;
inline constexpr std::int32_t inputOutput = -36;        // the disk failed or is full
inline constexpr std::int32_t noWritePermission = -61;  // the folder is not ours to write to
inline constexpr std::int32_t notAvailable = -25291;    // the service does not answer, or failed
inline constexpr std::int32_t itemNotFound = -25300;    // there was nothing to remove
inline constexpr std::int32_t interactionNotAllowed = -25308;  // locked, and we never ask

}  // namespace lunevra::keychain_status
