#pragma once

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <mutex>
#include <sched.h>
#include <sqlite3.h>
#include <string>
#include <sys/mount.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "host/eventually.h"
#include "host/temporary_folder.h"
#include "platform/log.h"
#include "platform/open_panel.h"
#include "platform/run_loop.h"

namespace lunevra {

using host_test::eventually;

/// How long a test that can go on for ever should; zero in an ordinary run.
inline std::chrono::seconds soakTime() {
  const char* seconds = std::getenv("LUNEVRA_SOAK_SECONDS");
  return std::chrono::seconds{seconds != nullptr ? std::atoi(seconds) : 0};
}

/// In memory where possible: these tests sync hundreds of times.
class TemporaryFolder : public host_test::TemporaryFolder {
 public:
  TemporaryFolder()
      : host_test::TemporaryFolder(::access("/dev/shm", W_OK) == 0
                                       ? std::filesystem::path("/dev/shm")
                                       : std::filesystem::temp_directory_path()) {}
};

class RecordingLog : public Log {
 public:
  void line(std::string_view text) override {
    const std::lock_guard lock(mutex_);
    lines_.emplace_back(text);
  }
  [[nodiscard]] std::vector<std::string> lines() const {
    const std::lock_guard lock(mutex_);
    return lines_;
  }

 private:
  mutable std::mutex mutex_;
  std::vector<std::string> lines_;
};

/// Runs what was put on the main queue when told to.
class ManualRunLoop : public RunLoop {
 public:
  [[nodiscard]] Registration scheduleRepeating(std::chrono::milliseconds, std::chrono::milliseconds,
                                               std::function<void()>) override {
    return {};
  }
  void after(std::chrono::milliseconds, std::function<void()>) override {}
  void async(std::function<void()> work) override { queue_.push_back(std::move(work)); }
  void runOnce() {
    for (auto& work : std::exchange(queue_, {})) work();
  }

 private:
  std::vector<std::function<void()>> queue_;
};

/// A computer without a screen to show a panel on.
class NoPanels : public OpenPanels {
 public:
  void chooseFolder(const FolderPanelRequest&,
                    std::function<void(std::optional<std::string>)>) override {}
};

inline void writeFile(const std::filesystem::path& path, const std::string& contents) {
  std::ofstream(path, std::ios::binary | std::ios::trunc) << contents;
}

/// What the sqlite3 program would do with the file, as another process's connection.
class OtherConnection {
 public:
  explicit OtherConnection(const std::filesystem::path& file) {
    EXPECT_EQ(sqlite3_open(file.c_str(), &database_), SQLITE_OK);
    sqlite3_busy_timeout(database_, 2000);
  }
  ~OtherConnection() { sqlite3_close(database_); }
  OtherConnection(const OtherConnection&) = delete;
  OtherConnection& operator=(const OtherConnection&) = delete;

  void run(const std::string& sql) {
    EXPECT_EQ(sqlite3_exec(database_, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
        << sql << ": " << sqlite3_errmsg(database_);
  }
  [[nodiscard]] std::string answer(const std::string& sql) {
    std::string first;
    const auto keep = [](void* to, int, char** values, char**) {
      *static_cast<std::string*>(to) = values[0] != nullptr ? values[0] : "";
      return 0;
    };
    EXPECT_EQ(sqlite3_exec(database_, sql.c_str(), keep, &first, nullptr), SQLITE_OK) << sql;
    return first;
  }

 private:
  sqlite3* database_ = nullptr;
};

/// With this status a child says that the computer does not let it try.
inline constexpr int notAllowed = 77;

inline void expectChildSucceeds(const std::function<void()>& body) {
  const auto child = ::fork();
  if (child == 0) {
    body();
    ::_exit(::testing::Test::HasFailure() ? 1 : 0);
  }
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  if (WIFEXITED(status) && WEXITSTATUS(status) == notAllowed)
    GTEST_SKIP() << "a plain user may not mount anything here";
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "see above";
}

/// Runs `body` in a child process that has a small file system of its own at `folder`; works for
/// root and for a plain user alike.
inline void onSmallDisk(const std::filesystem::path& folder, const std::function<void()>& body) {
  expectChildSucceeds([&] {
    const auto user = std::to_string(::getuid());
    const auto group = std::to_string(::getgid());
    if (::unshare(CLONE_NEWNS) != 0) {
      if (::unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) ::_exit(notAllowed);
      writeFile("/proc/self/uid_map", "0 " + user + " 1");
      writeFile("/proc/self/setgroups", "deny");
      writeFile("/proc/self/gid_map", "0 " + group + " 1");
    }
    ASSERT_EQ(::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr), 0);
    ASSERT_EQ(::mount("tmpfs", folder.c_str(), "tmpfs", 0, "size=256k"), 0) << errno;
    body();
  });
}

inline void remount(const std::filesystem::path& folder, bool isReadOnly) {
  ASSERT_EQ(::mount("none", folder.c_str(), nullptr,
                    isReadOnly ? MS_REMOUNT | MS_RDONLY : MS_REMOUNT, "size=256k"),
            0)
      << errno;
}

}  // namespace lunevra
