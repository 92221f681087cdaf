#pragma once

#include <string_view>

namespace lunevra {

/// Posted on the workspace's notification centre.
namespace workspace_notification {
inline constexpr std::string_view didWake = "NSWorkspaceDidWakeNotification";
inline constexpr std::string_view sessionDidBecomeActive =
    "NSWorkspaceSessionDidBecomeActiveNotification";
inline constexpr std::string_view activeSpaceDidChange =
    "NSWorkspaceActiveSpaceDidChangeNotification";
inline constexpr std::string_view willPowerOff = "NSWorkspaceWillPowerOffNotification";
}  // namespace workspace_notification

/// Posted on the default notification centre when displays come, go, move or change size.
inline constexpr std::string_view didChangeScreenParametersNotification =
    "NSApplicationDidChangeScreenParametersNotification";

}  // namespace lunevra
