#include "ui/typefaces.h"

#include <algorithm>

#include <QtCore/qmath.h>
#include <QtCore/qstringlist.h>
#include <QtGui/qfontdatabase.h>

namespace lunevra {
namespace {

constexpr double ultraLightThinning = 0.009;  // of the size

QStringList familiesFor(TypeDesign design, QFont::Weight weight) {
  switch (design) {
    case TypeDesign::standard:
      return {"Inter", "Noto Sans", "DejaVu Sans"};
    case TypeDesign::rounded:
      // The family's weights are installed as families of their own.
      if (weight >= QFont::DemiBold) return {"Quicksand", "Inter", "Noto Sans"};
      if (weight <= QFont::Light) return {"Quicksand Light", "Quicksand", "Inter", "Noto Sans"};
      return {"Quicksand Medium", "Quicksand", "Inter", "Noto Sans"};
    case TypeDesign::serif:
      // The cut for text size; the family alone may give the one for captions, which is heavier.
      return {"EB Garamond 12", "EB Garamond", "Noto Serif", "P052", "DejaVu Serif"};
  }
  return {};
}

}  // namespace

Typeface typefaceFor(TypeDesign design, double size, QFont::Weight weight, bool italic) {
  const auto families = familiesFor(design, weight);
  Typeface typeface;
  auto& font = typeface.font;
  font.setFamilies(families);
  font.setPixelSize(std::max(1, qRound(size)));
  font.setItalic(italic);
  font.setStyleStrategy(QFont::StyleStrategy(QFont::PreferAntialias | QFont::NoSubpixelAntialias));
  font.setHintingPreference(QFont::PreferNoHinting);
  const bool hasFirst = QFontDatabase::hasFamily(families.front());
  if (design != TypeDesign::rounded || !hasFirst || weight >= QFont::DemiBold)
    font.setWeight(weight);
  if (design == TypeDesign::rounded && hasFirst && weight < QFont::Light)
    typeface.thinning = size * ultraLightThinning;
  return typeface;
}

}  // namespace lunevra
