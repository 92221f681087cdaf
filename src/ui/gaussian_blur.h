#pragma once

#include <QtGui/qimage.h>

namespace lunevra {

/// The image blurred with a Gaussian whose standard deviation is `sigma` pixels. The picture keeps
/// its size: whatever the blur carries beyond the edge is lost, so leave room for three sigma.
/// Takes and gives premultiplied ARGB.
[[nodiscard]] QImage gaussianBlurred(const QImage& image, double sigma);

}  // namespace lunevra
