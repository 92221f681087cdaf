#include "platform/linux/login_item.h"

#include <fstream>
#include <string>
#include <utility>

#include "platform/linux/folder_lock.h"

namespace lunevra {
namespace {

/// As a desktop entry's `Exec` wants a path: quoted, and every character that means something twice
/// escaped, because the value is read once as a text and once as a command.
std::string quotedForExec(const std::string& path) {
  std::string quoted = "\"";
  for (const char character : path) {
    if (character == '\\') quoted += "\\\\\\";
    if (character == '"' || character == '`' || character == '$') quoted += "\\\\";
    if (character == '%') quoted += '%';
    quoted += character;
  }
  return quoted + "\"";
}

}  // namespace

LoginItem::LoginItem(const std::filesystem::path& autostartFolder, std::filesystem::path program)
    : entry_(autostartFolder / "lunevra.desktop"), program_(std::move(program)) {}

ServiceStatus LoginItem::status() const {
  std::ifstream entry(entry_);
  if (!entry) return ServiceStatus::notRegistered;
  for (std::string line; std::getline(entry, line);)
    if (line == "Hidden=true" || line == "X-GNOME-Autostart-enabled=false")
      return ServiceStatus::notRegistered;
  return ServiceStatus::enabled;
}

void LoginItem::registerService() {
  makePrivateFolder(entry_.parent_path());
  std::ofstream entry(entry_, std::ios::trunc);
  entry << "[Desktop Entry]\nType=Application\nName=Lunevra\nIcon=lunevra\nExec="
        << quotedForExec(program_.string()) << "\n";
  if (!entry.flush())
    throw LocalizedError("The login item " + entry_.string() + " cannot be written.");
}

void LoginItem::unregisterService() {
  std::error_code error;
  std::filesystem::remove(entry_, error);
  if (error) throw LocalizedError(entry_.string() + ": " + error.message());
}

}  // namespace lunevra
