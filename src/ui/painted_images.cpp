#include "ui/painted_images.h"

#include <QtQml/qqmlengine.h>

namespace lunevra {

PaintedImages& PaintedImages::of(QQmlEngine& engine) {
  if (auto* const images = engine.findChild<PaintedImages*>({}, Qt::FindDirectChildrenOnly))
    return *images;
  return *std::make_unique<PaintedImages>(&engine).release();  // now the engine's
}

std::shared_ptr<const QImage> PaintedImages::image(const QString& name,
                                                   const std::function<QImage()>& paint) {
  if (auto shown = images_[name].lock()) return shown;
  std::erase_if(images_, [](const auto& entry) { return entry.second.expired(); });
  auto painted = std::make_shared<const QImage>(paint());
  images_[name] = painted;
  return painted;
}

}  // namespace lunevra
