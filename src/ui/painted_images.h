#pragma once

#include <functional>
#include <map>
#include <memory>

#include <QtCore/qobject.h>
#include <QtCore/qstring.h>
#include <QtGui/qimage.h>

class QQmlEngine;

namespace lunevra {

/// The large pictures that the items of one engine show, so that displays of the same size have one
/// between them. It keeps none: a picture goes with the last item that shows it.
class PaintedImages : public QObject {
  Q_OBJECT

 public:
  using QObject::QObject;
  /// Made on first use; goes with the engine.
  [[nodiscard]] static PaintedImages& of(QQmlEngine& engine);

  /// The picture of this name, painted if nothing shows it yet.
  [[nodiscard]] std::shared_ptr<const QImage> image(const QString& name,
                                                    const std::function<QImage()>& paint);

 private:
  std::map<QString, std::weak_ptr<const QImage>> images_;
};

}  // namespace lunevra
