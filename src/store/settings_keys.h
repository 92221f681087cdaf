#pragma once

#include <string_view>

/// Every key under which the program keeps a setting.
namespace lunevra::settings_key {

inline constexpr std::string_view appGroup = "group.com.lunevra.shared";

// Mirrored: in the cloud store and in the app-group defaults. The first four are also kept in the
// standard defaults, where the engine's schedule preferences follow the store.
inline constexpr std::string_view blockStartHour = "blockStartHour";
inline constexpr std::string_view blockStartMinute = "blockStartMinute";
inline constexpr std::string_view wakeHour = "wakeHour";
inline constexpr std::string_view wakeMinute = "wakeMinute";
inline constexpr std::string_view activeUnlockGeneration = "activeUnlockGeneration";
inline constexpr std::string_view scheduleEnabled = "scheduleEnabled";
inline constexpr std::string_view lockEnabled = "lockEnabled";
inline constexpr std::string_view lockEndDate = "lockEndDate";
inline constexpr std::string_view activeUnlockUntil = "activeUnlockUntil";

// In both stores, but read from the app-group defaults only.
inline constexpr std::string_view scheduleSeeded = "scheduleSeeded";

// In the app-group defaults only: seconds since 1970, 0 or less means none.
inline constexpr std::string_view activeMacNightLockUntil = "activeMacNightLockUntil";

// In the standard defaults only.
inline constexpr std::string_view shutdownEnabled = "shutdownEnabled";
inline constexpr std::string_view activeNightLockUntil = "Lunevra.activeNightLockUntil";
inline constexpr std::string_view physicalOverrideUntil = "Lunevra.physicalOverrideUntil";
inline constexpr std::string_view firewallEnabled = "Lunevra.firewallEnabled";
inline constexpr std::string_view firewallDomains = "Lunevra.firewallDomains";
inline constexpr std::string_view enforcementAgentStatus = "Lunevra.enforcementAgentStatus";
inline constexpr std::string_view enforcementRegistrationError =
    "Lunevra.enforcementRegistrationError";

}  // namespace lunevra::settings_key
