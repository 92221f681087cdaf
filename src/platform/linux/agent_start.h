#pragma once

namespace lunevra {

/// The status with which the program ends after an accepted quit under the agent, which then does
/// not bring it back (`RestartPreventExitStatus` of its unit).
inline constexpr int acceptedQuitStatus = 80;

/// Whether this process was started by the enforcement agent: its unit sets a variable, which is
/// taken out of the environment so that no child process inherits it. Call it once, before there
/// are threads.
[[nodiscard]] bool takeAgentStart();

}  // namespace lunevra
