#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace lunevra {

/// Nobody's settings or key come near this size.
inline constexpr std::size_t largestPlausibleFile = 1024 * 1024;

/// The whole file at `path`. Nothing if it is missing, unreadable, larger than `largest`, or no
/// regular file; a symbolic link is not followed. Never waits for the other end of a pipe, but may
/// wait for a device that does not answer. Any thread.
[[nodiscard]] std::optional<std::string> readWholeFile(const std::filesystem::path& path,
                                                       std::size_t largest = largestPlausibleFile);
/// The same of a descriptor that is open for reading.
[[nodiscard]] std::optional<std::string> readWholeFile(int descriptor,
                                                       std::size_t largest = largestPlausibleFile);

/// Replaces the file in one step, seen whole or not at all by whoever reads the folder, and returns
/// once it is on the disk; for its owner's eyes where the file system knows owners. Answers an
/// empty text, or what went wrong. Any thread.
[[nodiscard]] std::string replaceFile(const std::filesystem::path& file, std::string_view contents);

}  // namespace lunevra
