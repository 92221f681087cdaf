#pragma once

#include <string_view>

/// The texts of the lock screens that never change.
namespace lunevra::lock_screen_text {

inline constexpr std::string_view blockingIn = "Blocking screen in";
inline constexpr std::string_view lockingUntilMorning = "Locking until morning";
inline constexpr std::string_view onlyTheKey =
    "Only the trusted physical USB key can release the computer early";

inline constexpr std::string_view title = "Lunevra";
inline constexpr std::string_view timeToRest = "Time to rest";

}  // namespace lunevra::lock_screen_text
