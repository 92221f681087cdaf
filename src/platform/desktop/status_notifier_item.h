#pragma once

#include <functional>
#include <memory>

#include <QImage>
#include <QString>

namespace lunevra {

/// The program's item in the desktop's tray, as a StatusNotifierItem on the session bus. Registers
/// as soon as there is a tray, and again with each that takes its place; without a bus or a tray
/// nothing happens. Main thread only.
class StatusNotifierItem {
 public:
  /// `icon` in the sizes that it is good at. Needs the application object.
  StatusNotifierItem(const QString& title, const QList<QImage>& icon);
  ~StatusNotifierItem();
  StatusNotifierItem(const StatusNotifierItem&) = delete;
  StatusNotifierItem& operator=(const StatusNotifierItem&) = delete;

  void setToolTip(const QString& text);

  /// The person pressed the item, near this place on the desktop in the server's pixels.
  std::function<void(int x, int y)> onActivate;

 private:
  class Server;
  std::unique_ptr<Server> server_;
};

}  // namespace lunevra
