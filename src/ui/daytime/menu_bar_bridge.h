#pragma once

#include <QtCore/qobject.h>
#include <QtCore/qstring.h>
#include <QtGui/qcolor.h>
#include <QtQml/qqmlregistration.h>

#include "ui/menu_bar/menu_bar_model.h"

namespace lunevra {

/// A row of the menu as the views read it.
struct MenuRowValue {
  Q_GADGET
  QML_ANONYMOUS
  Q_PROPERTY(QString text MEMBER text)
  Q_PROPERTY(QString detail MEMBER detail)
  Q_PROPERTY(QString symbol MEMBER symbol)
  Q_PROPERTY(QColor color MEMBER color)
  Q_PROPERTY(bool shown MEMBER shown)
  Q_PROPERTY(bool enabled MEMBER enabled)
  Q_PROPERTY(bool checked MEMBER checked)
  Q_PROPERTY(bool button MEMBER button)

 public:
  QString text;
  QString detail;
  QString symbol;
  QColor color;
  bool shown = true;
  bool enabled = true;
  bool checked = false;
  bool button = false;
};

/// The menu's model as the views read it.
class MenuBarBridge : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("made for its window")
  Q_PROPERTY(lunevra::MenuRowValue header READ header NOTIFY changed)
  Q_PROPERTY(lunevra::MenuRowValue bedtime READ bedtime NOTIFY changed)
  Q_PROPERTY(lunevra::MenuRowValue release READ release NOTIFY changed)
  Q_PROPERTY(lunevra::MenuRowValue escapeKey READ escapeKey NOTIFY changed)
  Q_PROPERTY(lunevra::MenuRowValue commitment READ commitment NOTIFY changed)
  Q_PROPERTY(lunevra::MenuRowValue nightlySwitch READ nightlySwitch NOTIFY changed)
  Q_PROPERTY(lunevra::MenuRowValue settings READ settings NOTIFY changed)
  Q_PROPERTY(lunevra::MenuRowValue quitRow READ quitRow NOTIFY changed)

 public:
  MenuBarBridge(RunLoop& runLoop, ShutdownManager& engine, MenuBarModel::Actions actions);

  [[nodiscard]] MenuBarModel& model() { return model_; }

  [[nodiscard]] MenuRowValue header() const { return value(MenuItem::header); }
  [[nodiscard]] MenuRowValue bedtime() const { return value(MenuItem::bedtime); }
  [[nodiscard]] MenuRowValue release() const { return value(MenuItem::release); }
  [[nodiscard]] MenuRowValue escapeKey() const { return value(MenuItem::escapeKey); }
  [[nodiscard]] MenuRowValue commitment() const { return value(MenuItem::commitment); }
  [[nodiscard]] MenuRowValue nightlySwitch() const { return value(MenuItem::nightlySwitch); }
  [[nodiscard]] MenuRowValue settings() const { return value(MenuItem::settings); }
  [[nodiscard]] MenuRowValue quitRow() const { return value(MenuItem::quit); }

  Q_INVOKABLE void setEnabled(bool isEnabled);
  Q_INVOKABLE void openSettings();
  Q_INVOKABLE void quit();
  /// The person is done with the menu.
  Q_INVOKABLE void close() { emit closed(); }

 signals:
  void changed();
  void closed();

 private:
  [[nodiscard]] MenuRowValue value(MenuItem item) const;

  MenuBarModel model_;
  Registration observation_;
};

}  // namespace lunevra
