#pragma once

#include <initializer_list>

#include <QtGui/qpainterpath.h>
#include <QtGui/qpen.h>

namespace lunevra {

/// Places units of the symbols' common grid on the points of the screen.
class SymbolPen {
 public:
  static constexpr double grid = 24.0;
  static constexpr double gridOfTextSize = 1.2;  // a symbol stands a little higher than capitals

  SymbolPen(double textSize, double pixelRatio)
      : scale_(textSize * gridOfTextSize / grid), pixelRatio_(pixelRatio) {}

  [[nodiscard]] double free(double units) const { return units * scale_; }
  /// The nearest edge of a pixel.
  [[nodiscard]] double edge(double units) const;
  [[nodiscard]] QPointF point(double x, double y) const { return {free(x), free(y)}; }
  /// The common weight, never thinner than a pixel.
  [[nodiscard]] double stroke() const;

  [[nodiscard]] QPainterPath disc(double x, double y, double radius) const;
  [[nodiscard]] QPainterPath box(double left, double top, double right, double bottom,
                                 double radius) const;
  /// A line through these points, of the common weight or a part of it.
  [[nodiscard]] QPainterPath line(std::initializer_list<QPointF> units, double weight = 1.0,
                                  Qt::PenCapStyle cap = Qt::RoundCap) const;
  /// The outline of a shape, of the common weight.
  [[nodiscard]] QPainterPath outline(const QPainterPath& shape) const;

 private:
  double scale_;
  double pixelRatio_;
};

/// The area along a line, both in points.
[[nodiscard]] QPainterPath stroked(const QPainterPath& line, double width, Qt::PenCapStyle cap);

}  // namespace lunevra
