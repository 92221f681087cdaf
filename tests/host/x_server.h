#pragma once

#include <csignal>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "host/child_process.h"

namespace lunevra::host_test {

/// A folder of its own for one test, removed with it.
class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  [[nodiscard]] const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

/// A real X server without hardware: displays can be plugged in and out. It starts with one,
/// DUMMY0, of 1024x768.
class XServer {
 public:
  XServer();

  [[nodiscard]] const std::string& display() const { return display_; }
  void plugIn(const std::string& output, const std::string& mode, const std::string& position);
  void unplug(const std::string& output);
  void kill() { process_->signal(SIGKILL); }

 private:
  void randr(const std::string& arguments) const;

  TemporaryFolder folder_;
  std::string display_;
  std::optional<ChildProcess> process_;
};

}  // namespace lunevra::host_test
