#pragma once

#include <QtCore/qobject.h>
#include <QtQml/qqmlregistration.h>

#include "ui/typefaces.h"

namespace lunevra {

/// The fonts of the views that are seen by day, for texts that Qt Quick sets.
class Faces : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_SINGLETON

 public:
  Q_INVOKABLE [[nodiscard]] QFont standard(qreal size, int weight = QFont::Normal) const {
    return typefaceFor(TypeDesign::standard, size, QFont::Weight(weight), false).font;
  }
  Q_INVOKABLE [[nodiscard]] QFont rounded(qreal size, int weight = QFont::Normal) const {
    return typefaceFor(TypeDesign::rounded, size, QFont::Weight(weight), false).font;
  }
};

}  // namespace lunevra
