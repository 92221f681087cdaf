#pragma once

#include <QtGui/qfont.h>

namespace lunevra {

enum class TypeDesign { standard, rounded, serif };

/// A font as the views draw it.
struct Typeface {
  QFont font;
  /// Pixels to take off each side of every stroke: the rounded family has nothing lighter than its
  /// light weight, and the large digits are to be thinner.
  double thinning = 0.0;
};

/// The best face the computer has for this design; sizes in points of the screen.
[[nodiscard]] Typeface typefaceFor(TypeDesign design, double size, QFont::Weight weight,
                                   bool italic);

}  // namespace lunevra
