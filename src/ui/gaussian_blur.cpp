#include "ui/gaussian_blur.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <vector>

#include <QtCore/qmath.h>

namespace lunevra {
namespace {

using Pixel = std::array<float, 4>;

std::vector<float> kernelFor(double sigma) {
  const int reach = std::max(1, qCeil(3.0 * sigma));
  std::vector<float> weights;
  double sum = 0.0;
  for (int i = -reach; i <= reach; ++i) {
    const double weight = std::exp(-0.5 * (i / sigma) * (i / sigma));
    weights.push_back(static_cast<float>(weight));
    sum += weight;
  }
  for (auto& weight : weights) weight = static_cast<float>(weight / sum);
  return weights;
}

/// Blurs rows and turns the picture on its side, so that doing it twice blurs both ways.
std::vector<Pixel> blurredAndTransposed(const std::vector<Pixel>& pixels, int width, int height,
                                        const std::vector<float>& kernel) {
  const int reach = static_cast<int>(kernel.size()) / 2;
  const auto at = [](int x, int y, int stride) {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(stride) +
           static_cast<std::size_t>(x);
  };
  std::vector<Pixel> result(pixels.size());
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      Pixel sum{};
      for (int i = std::max(0, x - reach); i <= std::min(width - 1, x + reach); ++i) {
        const float weight = kernel[static_cast<std::size_t>(i - x + reach)];
        const auto& pixel = pixels[at(i, y, width)];
        for (std::size_t c = 0; c < sum.size(); ++c) sum[c] += weight * pixel[c];
      }
      result[at(y, x, height)] = sum;
    }
  }
  return result;
}

QImage blurredExactly(const QImage& image, double sigma) {
  const int width = image.width();
  const int height = image.height();
  std::vector<Pixel> pixels;
  pixels.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
  for (int y = 0; y < height; ++y) {
    const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
    for (int x = 0; x < width; ++x)
      pixels.push_back({static_cast<float>(qAlpha(line[x])), static_cast<float>(qRed(line[x])),
                        static_cast<float>(qGreen(line[x])), static_cast<float>(qBlue(line[x]))});
  }
  const auto kernel = kernelFor(sigma);
  pixels = blurredAndTransposed(pixels, width, height, kernel);
  pixels = blurredAndTransposed(pixels, height, width, kernel);

  QImage result(image.size(), QImage::Format_ARGB32_Premultiplied);
  auto pixel = pixels.cbegin();
  const auto rounded = [](float value) { return static_cast<int>(std::lround(value)); };
  for (int y = 0; y < height; ++y) {
    auto* line = reinterpret_cast<QRgb*>(result.scanLine(y));
    for (int x = 0; x < width; ++x, ++pixel)
      line[x] = qRgba(rounded((*pixel)[1]), rounded((*pixel)[2]), rounded((*pixel)[3]),
                      rounded((*pixel)[0]));
  }
  return result;
}

}  // namespace

QImage gaussianBlurred(const QImage& image, double sigma) {
  const auto source = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
  if (sigma < 0.1 || source.isNull()) return source;
  // A wide blur leaves no detail, so a smaller picture holds all of it, at a fraction of the work.
  const int reduction = std::max(1, static_cast<int>(sigma / 4.0));
  if (reduction == 1) return blurredExactly(source, sigma);
  const QSize small((source.width() + reduction - 1) / reduction,
                    (source.height() + reduction - 1) / reduction);
  const auto reduced = source.scaled(small, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  return blurredExactly(reduced, sigma / reduction)
      .scaled(source.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

}  // namespace lunevra
