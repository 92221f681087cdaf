#pragma once

#include <functional>
#include <memory>
#include <optional>

#include <QList>
#include <QString>

namespace lunevra {

/// A menu on the session bus (com.canonical.dbusmenu) that a tray draws itself, for trays that show
/// menus and nothing else. Its entries keep their places for good; what they show changes. Without
/// a bus nothing happens. Main thread only.
class TrayMenu {
 public:
  struct Entry {
    QString label;  ///< none for a line between entries
    bool isShown = true;
    bool isEnabled = true;
    std::optional<bool> isChecked = {};  ///< of an entry with a check mark

    friend bool operator==(const Entry&, const Entry&) = default;
  };

  static QString objectPath();

  /// Needs the application object.
  TrayMenu();
  ~TrayMenu();
  TrayMenu(const TrayMenu&) = delete;
  TrayMenu& operator=(const TrayMenu&) = delete;

  /// As many as the last time.
  void setEntries(const QList<Entry>& entries);

  /// The tray is about to show it.
  std::function<void()> onOpening;
  /// The person chose the entry at this place, which may have changed since it was drawn.
  std::function<void(int place)> onChosen;

 private:
  class Server;
  std::unique_ptr<Server> server_;
};

}  // namespace lunevra
