#include "ui/lock_screen/backdrop_item.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <vector>

#include <QtCore/qdebug.h>

#include "ui/dither.h"
#include "ui/lock_screen/blurred_disc.h"

namespace lunevra {
namespace {

using Rgb = std::array<float, 3>;

Rgb rgb(const QColor& color) {
  return {color.redF(), color.greenF(), color.blueF()};
}

/// Computed in floating point throughout, so that dithering sees every shade.
class Canvas {
 public:
  explicit Canvas(QSize size)
      : width_(size.width()),
        height_(size.height()),
        row_(static_cast<std::size_t>(width_)),
        image_(size, QImage::Format_RGB32) {}

  struct Light {
    Rgb color;
    float strength;
    double x, y;  // pixels
    std::vector<double> profile;
  };

  QImage paint(const Rgb& edge, const Rgb& middle, const std::vector<Light>& lights) {
    for (int y = 0; y < height_; ++y) {
      fillRow(y, edge, middle);
      for (const auto& light : lights) addLight(y, light);
      writeRow(y);
    }
    return std::move(image_);
  }

 private:
  void fillRow(int y, const Rgb& edge, const Rgb& middle) {
    const auto w = static_cast<float>(width_);
    const auto h = static_cast<float>(height_);
    const float diagonal = w * w + h * h;
    for (int x = 0; x < width_; ++x) {
      const float along = (static_cast<float>(x) * w + static_cast<float>(y) * h) / diagonal;
      const float towardsMiddle = 1.0F - std::abs(2.0F * along - 1.0F);
      auto& pixel = row_[static_cast<std::size_t>(x)];
      for (std::size_t c = 0; c < pixel.size(); ++c)
        pixel[c] = edge[c] + (middle[c] - edge[c]) * towardsMiddle;
    }
  }

  void addLight(int y, const Light& light) {
    const double reach = static_cast<double>(light.profile.size()) - 2.0;
    const double dy = y - light.y;
    if (std::abs(dy) >= reach) return;
    const double half = std::sqrt(reach * reach - dy * dy);
    const int first = std::max(0, static_cast<int>(std::ceil(light.x - half)));
    const int last = std::min(width_ - 1, static_cast<int>(std::floor(light.x + half)));
    for (int x = first; x <= last; ++x) {
      const double distance = std::sqrt((x - light.x) * (x - light.x) + dy * dy);
      const auto index = static_cast<std::size_t>(distance);
      const double part = distance - static_cast<double>(index);
      const double bright = light.profile[index] * (1.0 - part) + light.profile[index + 1] * part;
      const float alpha = static_cast<float>(bright) * light.strength;
      auto& pixel = row_[static_cast<std::size_t>(x)];
      for (std::size_t c = 0; c < pixel.size(); ++c)
        pixel[c] += (light.color[c] - pixel[c]) * alpha;
    }
  }

  void writeRow(int y) {
    auto* line = reinterpret_cast<QRgb*>(image_.scanLine(y));
    for (int x = 0; x < width_; ++x) {
      const auto& pixel = row_[static_cast<std::size_t>(x)];
      const float noise = noise_(x, y);
      line[x] =
          qRgb(dithered(pixel[0], noise), dithered(pixel[1], noise), dithered(pixel[2], noise));
    }
  }

  int width_;
  int height_;
  std::vector<Rgb> row_;
  QImage image_;
  DitherNoise noise_;
};

}  // namespace

BackdropItem::BackdropItem(QQuickItem* parent) : ImageItem(parent) {
  connect(this, &BackdropItem::changed, this, &BackdropItem::invalidateImage);
}

QQmlListProperty<SoftGlow> BackdropItem::glows() {
  return {this, &glows_};
}

QImage BackdropItem::paintImage(double pixelRatio) const {
  std::vector<Canvas::Light> lights;
  for (const auto* glow : glows_)
    lights.push_back(
        {rgb(glow->color), static_cast<float>(glow->strength),
         glow->centre.x() * width() * pixelRatio, glow->centre.y() * height() * pixelRatio,
         blurredDiscProfile(glow->diameter / 2.0 * pixelRatio, glow->blurRadius * pixelRatio)});
  const QSize pixels = (QSizeF(width(), height()) * pixelRatio).toSize();
  auto image = Canvas(pixels).paint(rgb(edgeColor_), rgb(middleColor_), lights);
  image.setDevicePixelRatio(pixelRatio);
  return image;
}

QString BackdropItem::imageName(double pixelRatio) const {
  QString name;
  QDebug parts(&name);
  parts << size() << pixelRatio << edgeColor_ << middleColor_;
  for (const auto* glow : glows_)
    parts << glow->color << glow->diameter << glow->blurRadius << glow->strength << glow->centre;
  return name;
}

}  // namespace lunevra
