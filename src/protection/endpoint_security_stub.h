#pragma once

#include <string_view>

/// Protection against being uninstalled: a layer that this version does not provide.
namespace lunevra::endpoint_security_stub {

inline constexpr std::string_view statusText =
    "Endpoint Security uninstall-protection: not enabled (requires Apple entitlement approval — "
    "v2).";
inline constexpr std::string_view purpose = "Prevent app removal during latched night";
inline constexpr std::string_view entitlement = "com.apple.developer.endpoint-security.client";

}  // namespace lunevra::endpoint_security_stub
