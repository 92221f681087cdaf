#include "platform/linux/settings_page.h"

#include <array>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <spawn.h>
#include <sstream>
#include <string_view>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace lunevra {
namespace {

struct Page {
  std::string_view desktop;
  const char* program;
  const char* argument;  // may be null
};

constexpr std::array pages{
    Page{"GNOME", "gnome-tweaks", nullptr},
    Page{"GNOME", "gnome-session-properties", nullptr},
    Page{"GNOME", "gnome-control-center", "applications"},
    Page{"Unity", "gnome-session-properties", nullptr},
    Page{"Budgie", "budgie-desktop-settings", nullptr},
    Page{"KDE", "systemsettings", "kcm_autostart"},
    Page{"KDE", "systemsettings5", "kcm_autostart"},
    Page{"XFCE", "xfce4-session-settings", nullptr},
    Page{"X-Cinnamon", "cinnamon-settings", "startup"},
    Page{"MATE", "mate-session-properties", nullptr},
    Page{"LXQt", "lxqt-config-session", nullptr},
    Page{"LXDE", "lxsession-edit", nullptr},
};

bool lists(const std::string& names, std::string_view wanted) {
  std::istringstream list(names);
  for (std::string name; std::getline(list, name, ':');)
    if (name == wanted) return true;
  return false;
}

/// A program of its own session, with signals as programs expect them: this one blocks some.
bool launch(const std::vector<std::string>& command) {
  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  sigset_t signals;
  sigemptyset(&signals);
  posix_spawnattr_setsigmask(&attributes, &signals);
  sigaddset(&signals, SIGPIPE);
  posix_spawnattr_setsigdefault(&attributes, &signals);
  posix_spawnattr_setflags(
      &attributes,
      static_cast<short>(POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSID));
  std::vector<char*> arguments;
  for (const auto& word : command) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  pid_t child = 0;
  const int result = ::posix_spawn(&child, command.front().c_str(), nullptr, &attributes,
                                   arguments.data(), environ);
  posix_spawnattr_destroy(&attributes);
  if (result != 0) return false;
  // Somebody has to take note of its end, whenever that is.
  std::thread([child] { ::waitpid(child, nullptr, 0); }).detach();
  return true;
}

}  // namespace

SettingsPage::SettingsPage(std::string desktops, std::string searchPath)
    : desktops_(std::move(desktops)), searchPath_(std::move(searchPath)) {}

bool SettingsPage::open() const {
  const auto words = command();
  return !words.empty() && launch(words);
}

std::vector<std::string> SettingsPage::command() const {
  for (const auto& page : pages) {
    if (!lists(desktops_, page.desktop)) continue;
    std::vector<std::string> words{find(page.program)};
    if (words.front().empty()) continue;
    if (page.argument != nullptr) words.emplace_back(page.argument);
    return words;
  }
  return {};
}

std::string SettingsPage::find(const std::string& program) const {
  std::istringstream folders(searchPath_);
  for (std::string folder; std::getline(folders, folder, ':');) {
    auto path = (std::filesystem::path(folder) / program).string();
    if (::access(path.c_str(), X_OK) == 0) return path;
  }
  return "";
}

}  // namespace lunevra
