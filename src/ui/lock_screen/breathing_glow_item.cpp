#include "ui/lock_screen/breathing_glow_item.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <vector>

#include "ui/lock_screen/ease_in_out.h"

namespace lunevra {
namespace {

constexpr double breathSeconds = 4.0;  // in; as long again out
constexpr double greatestScale = 1.08;
constexpr int stepsOfBreath = 8;  // none changes a pixel by more than half a shade

constexpr double startRadius = 40.0;
constexpr double endRadius = 150.0;
constexpr double innerStrength = 0.2;
constexpr double middleStrength = 0.08;

double strengthAt(double radius) {
  const double progress = std::clamp((radius - startRadius) / (endRadius - startRadius), 0.0, 1.0);
  return progress < 0.5 ? std::lerp(innerStrength, middleStrength, 2.0 * progress)
                        : std::lerp(middleStrength, 0.0, 2.0 * progress - 1.0);
}

constexpr float samplesPerPixel = 4.0F;

/// From the centre to where the light ends, enlarged by the scale.
std::vector<float> strengthsAlongRadius(double scale) {
  std::vector<float> strengths(static_cast<std::size_t>(endRadius * scale * samplesPerPixel) + 1);
  for (std::size_t i = 0; i < strengths.size(); ++i)
    strengths[i] = static_cast<float>(strengthAt(static_cast<double>(i) / samplesPerPixel / scale));
  return strengths;
}

int stepAt(qint64 milliseconds) {
  const double phase = std::fmod(static_cast<double>(milliseconds) / 1000.0 / breathSeconds, 2.0);
  return static_cast<int>(
      std::lround(easeInOut(phase < 1.0 ? phase : 2.0 - phase) * stepsOfBreath));
}

}  // namespace

BreathingGlowItem::BreathingGlowItem(QQuickItem* parent) : ImageItem(parent) {
  setImplicitSize(2.0 * endRadius, 2.0 * endRadius);
  timer_.setSingleShot(true);
  connect(&timer_, &QTimer::timeout, this, &BreathingGlowItem::step);
  connect(this, &BreathingGlowItem::changed, this, &BreathingGlowItem::invalidateImage);
}

void BreathingGlowItem::setBreathing(bool isBreathing) {
  if (timer_.isActive() == isBreathing) return;
  if (isBreathing) {
    elapsed_.start();
    step();
  } else {
    timer_.stop();
  }
  emit breathingChanged();
}

// Wakes only for the next step, not at every tick of a clock.
void BreathingGlowItem::step() {
  constexpr int lookAhead = 20;  // milliseconds
  const auto now = elapsed_.elapsed();
  const int step = stepAt(now);
  size_ = 1.0 + (greatestScale - 1.0) * step / stepsOfBreath;
  invalidateImage();  // cheaper than one picture, smoothly scaled
  int wait = lookAhead;
  while (stepAt(now + wait) == step) wait += lookAhead;
  timer_.start(wait);
}

QRectF BreathingGlowItem::imageRect() const {
  constexpr double beyond = endRadius * (greatestScale - 1.0);
  return boundingRect().adjusted(-beyond, -beyond, beyond, beyond);
}

QImage BreathingGlowItem::paintImage(double pixelRatio) const {
  auto image = emptyImage(pixelRatio);
  const std::array<float, 3> rgb{color_.redF(), color_.greenF(), color_.blueF()};
  const auto strengths = strengthsAlongRadius(size_ * pixelRatio);
  const auto reach = static_cast<float>(strengths.size()) / samplesPerPixel;
  const auto centre = static_cast<float>(endRadius * greatestScale * pixelRatio - 0.5);
  for (int y = 0; y < image.height(); ++y) {
    auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
    const float dy = static_cast<float>(y) - centre;
    const float half = std::sqrt(std::max(0.0F, reach * reach - dy * dy));
    const int end = std::min(image.width(), static_cast<int>(centre + half));
    for (int x = std::max(0, static_cast<int>(centre - half) + 1); x < end; ++x) {
      const float dx = static_cast<float>(x) - centre;
      const auto sample = static_cast<std::size_t>(std::sqrt(dx * dx + dy * dy) * samplesPerPixel);
      const float alpha = strengths[std::min(sample, strengths.size() - 1)];
      const float noise = ditherNoise_(x, y);
      line[x] = qRgba(dithered(rgb[0] * alpha, noise), dithered(rgb[1] * alpha, noise),
                      dithered(rgb[2] * alpha, noise), dithered(alpha, noise));
    }
  }
  return image;
}

}  // namespace lunevra
