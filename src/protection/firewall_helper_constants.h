#pragma once

#include <string_view>

/// What the program and the privileged firewall helper agree on.
namespace lunevra::firewall_helper {

inline constexpr std::string_view machServiceName = "com.lunevra.firewall";
inline constexpr std::string_view identifierPrefix = "com.lunevra";
/// Written and read by the helper only.
inline constexpr std::string_view stateFilePath = "/var/db/Lunevra/firewall-state.json";
inline constexpr std::string_view daemonPropertyListName = "com.lunevra.firewall.plist";

}  // namespace lunevra::firewall_helper
