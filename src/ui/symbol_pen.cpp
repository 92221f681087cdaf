#include "ui/symbol_pen.h"

#include <algorithm>
#include <cmath>

namespace lunevra {
namespace {

constexpr double strokeWeight = 2.2;  // units

}  // namespace

double SymbolPen::edge(double units) const {
  return std::round(free(units) * pixelRatio_) / pixelRatio_;
}

double SymbolPen::stroke() const {
  return std::max(edge(strokeWeight), 1.0 / pixelRatio_);
}

QPainterPath SymbolPen::disc(double x, double y, double radius) const {
  QPainterPath path;
  path.addEllipse(point(x, y), free(radius), free(radius));
  return path;
}

QPainterPath SymbolPen::box(double left, double top, double right, double bottom,
                            double radius) const {
  QPainterPath path;
  path.addRoundedRect(QRectF(QPointF(edge(left), edge(top)), QPointF(edge(right), edge(bottom))),
                      free(radius), free(radius));
  return path;
}

QPainterPath SymbolPen::line(std::initializer_list<QPointF> units, double weight,
                             Qt::PenCapStyle cap) const {
  QPainterPath path;
  for (const auto& unit : units) {
    const auto place = point(unit.x(), unit.y());
    if (path.elementCount() == 0)
      path.moveTo(place);
    else
      path.lineTo(place);
  }
  return stroked(path, weight * stroke(), cap);
}

QPainterPath SymbolPen::outline(const QPainterPath& shape) const {
  return stroked(shape, stroke(), Qt::RoundCap);
}

QPainterPath stroked(const QPainterPath& line, double width, Qt::PenCapStyle cap) {
  QPainterPathStroker stroker;
  stroker.setWidth(width);
  stroker.setCapStyle(cap);
  stroker.setJoinStyle(Qt::RoundJoin);
  return stroker.createStroke(line).simplified();
}

}  // namespace lunevra
