#pragma once

#include <QtCore/qsize.h>
#include <QtCore/qstring.h>
#include <QtGui/qimage.h>

#include "ui/typefaces.h"

namespace lunevra {

/// How a text is set.
struct TextStyle {
  TypeDesign design = TypeDesign::standard;
  double size = 16.0;
  QFont::Weight weight = QFont::Normal;
  bool italic = false;
  bool hasEqualDigits = false;  // one line, every digit in a cell of the same width
  double maximumWidth = 0.0;    // 0: never wraps
  double lineSpacing = 0.0;     // between the lines of a wrapped text
};

/// A text set in lines: its size, and its picture in white. Lines are centred, and wrapped so that
/// they come out about equally long.
class TextShape {
 public:
  TextShape(QString text, const TextStyle& style);

  /// In points, whole ones.
  [[nodiscard]] QSize size() const { return size_; }
  /// Draws the text in white at the painter's origin, on a transparent picture.
  void draw(QPainter& painter) const;

 private:
  void measureLines();
  [[nodiscard]] QSizeF flow(double width, QPainter* painter) const;
  void drawDigits(QPainter& painter) const;
  [[nodiscard]] double cellWidth(QChar character) const;

  QString text_;
  TextStyle style_;
  Typeface typeface_;
  double lineWidth_ = 0.0;
  QSize size_;
};

}  // namespace lunevra
