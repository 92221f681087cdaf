#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

#include <QtCore/qstringlist.h>
#include <QtGui/qaccessible.h>
#include <QtGui/qpainter.h>

#include "ui/gaussian_blur.h"
#include "ui/lock_screen_stage.h"
#include "ui/symbol_paths.h"
#include "ui/text_shape.h"

namespace lunevra {
namespace {

using std::chrono_literals::operator""s;
using std::chrono_literals::operator""ms;

QImage transparent(QSize size) {
  QImage image(size, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  return image;
}

/// The rectangle of everything drawn.
QRect inkOf(const QImage& image) {
  QRect ink;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x)
      if (qAlpha(image.pixel(x, y)) > 20) ink |= QRect(x, y, 1, 1);
  return ink;
}

QImage drawn(const TextShape& shape) {
  auto image = transparent(shape.size() + QSize(80, 200));
  QPainter painter(&image);
  painter.translate(40, 40);
  shape.draw(painter);
  painter.end();
  return image;
}

TEST(TextShape, NoLineIsLostAtAnyWidth) {
  const QString quote =
      "Grace is not opposed to effort, it is opposed to earning. You've done enough.";
  for (int width = 90; width <= 900; width += 27) {
    SCOPED_TRACE(width);
    const TextShape shape(quote, {.design = TypeDesign::serif,
                                  .size = 18.0,
                                  .maximumWidth = static_cast<double>(width),
                                  .lineSpacing = 5.0});
    EXPECT_LE(shape.size().width(), width + 1);
    const QRect frame(QPoint(38, 38), shape.size() + QSize(4, 4));
    EXPECT_TRUE(frame.contains(inkOf(drawn(shape))));
  }
}

TEST(TextShape, TheClockKeepsItsWidthWhateverTheTime) {
  const TextStyle style{.design = TypeDesign::rounded,
                        .size = 90.0,
                        .weight = QFont::ExtraLight,
                        .hasEqualDigits = true};
  EXPECT_EQ(TextShape("11:11", style).size(), TextShape("20:48", style).size());
}

TEST(GaussianBlur, SpreadsLightEvenlyAndLosesNone) {
  for (const double sigma : {2.0, 12.0}) {
    auto image = transparent({160, 160});
    QPainter painter(&image);
    painter.fillRect(60, 60, 40, 40, Qt::white);
    painter.end();
    const auto blurred = gaussianBlurred(image, sigma);
    ASSERT_EQ(blurred.size(), image.size());
    double sum = 0.0;
    for (int y = 0; y < 160; ++y)
      for (int x = 0; x < 160; ++x) sum += qAlpha(blurred.pixel(x, y));
    EXPECT_NEAR(sum / (40.0 * 40.0 * 255.0), 1.0, 0.03) << sigma;
    EXPECT_NEAR(qAlpha(blurred.pixel(59, 80)), qAlpha(blurred.pixel(100, 80)), 6) << sigma;
    const auto below = [&](double x) { return 0.5 * std::erfc(-x / sigma / std::sqrt(2.0)); };
    const double expected = 255.0 * (below(39.5) - below(-0.5)) * (below(20.0) - below(-20.0));
    EXPECT_NEAR(qAlpha(blurred.pixel(60, 80)), expected, 6) << sigma;
  }
}

TEST(Symbols, StayInTheirSquareAndFillIt) {
  for (const auto symbol : symbolNames()) {
    SCOPED_TRACE(symbol);
    for (const double size : {10.0, 11.0, 15.0, 28.0, 64.0}) {
      const double side = symbolSide(size);
      const auto bounds = symbolPath(symbol, size, 1.0).boundingRect();
      EXPECT_TRUE(QRectF(-0.5, -0.5, side + 1.0, side + 1.0).contains(bounds)) << size;
      EXPECT_GT(std::max(bounds.width(), bounds.height()), 0.75 * side) << size;
    }
  }
}

class LockScreenViewTest : public LockScreenStage {
 protected:
  [[nodiscard]] bool showsPill() const {
    return lightness(window->grabWindow(), {310, 513, 180, 2}) > 25.0;
  }
  /// What assistive technology finds in the window, from top to bottom.
  [[nodiscard]] QStringList readAloud() const {
    QStringList texts;
    collectTexts(*QAccessible::queryAccessibleInterface(window.get()), texts);
    return texts;
  }

 private:
  static void collectTexts(const QAccessibleInterface& parent, QStringList& texts) {
    for (int i = 0; i < parent.childCount(); ++i) {
      const auto& child = *parent.child(i);
      if (child.role() == QAccessible::StaticText && !child.state().invisible)
        texts.append(child.text(QAccessible::Name));
      collectTexts(child, texts);
    }
  }
};

TEST_F(LockScreenViewTest, ItsFirstPictureIsDark) {
  show();
  const auto image = window->grabWindow();
  EXPECT_TRUE(computer.log.lines().empty()) << computer.log.lines().front();
  EXPECT_LT(lightness(image, image.rect()), 20.0);
  EXPECT_GT(lightness(image, image.rect()), 8.0);
}

TEST_F(LockScreenViewTest, GoesFromTheCountdownToTheNight) {
  show();
  beginNight();
  const auto ringIsDrawn = [this] {  // where it passes above the number
    return lightness(window->grabWindow(), {396, 230, 8, 8}) > 60.0;
  };
  EXPECT_TRUE(eventually(ringIsDrawn));
  computer.time.pass(3s);
  EXPECT_TRUE(eventually([&] { return showsPill() && !ringIsDrawn(); }));
}

TEST_F(LockScreenViewTest, DotsDriftUntilTheNightCoversThem) {
  show();
  beginNight();
  ASSERT_EQ(ticks.repeatingTimers(), 1U);
  const QRect margin(0, 0, 200, 600);  // where nothing breathes
  const auto before = window->grabWindow().copy(margin);
  ticks.pass(2s);
  EXPECT_NE(window->grabWindow().copy(margin), before);
  computer.time.pass(3s);
  EXPECT_EQ(ticks.repeatingTimers(), 3U);  // through the cross-fade
  EXPECT_TRUE(eventually([this] { return ticks.repeatingTimers() == 2U; }));  // clock and quote
  const auto covered = window->grabWindow().copy(margin);
  ticks.pass(500ms);
  EXPECT_EQ(window->grabWindow().copy(margin), covered);
}

TEST_F(LockScreenViewTest, NothingTicksOnceTheWindowIsGone) {
  beginBlocking();
  show();
  EXPECT_TRUE(eventually([this] { return showsPill(); }));
  EXPECT_GT(ticks.repeatingTimers(), 0U);
  window->hide();
  EXPECT_EQ(ticks.repeatingTimers(), 0U);
  window->show();
  EXPECT_GT(ticks.repeatingTimers(), 0U);
  content.reset();
  EXPECT_EQ(ticks.repeatingTimers(), 0U);
}

TEST_F(LockScreenViewTest, IsReadAloudWithoutTheQuoteThatHasGone) {
  beginBlocking();
  show();
  ticks.pass(12s);
  ASSERT_TRUE(eventually([this] { return readAloud().size() == 7; }))
      << readAloud().join('|').toStdString();
  const auto texts = readAloud();
  EXPECT_EQ(texts.mid(0, 3), QStringList({"Lunevra", "22:00", "Time to rest"}));
  EXPECT_TRUE(texts[4].startsWith("\u2014 "));
  EXPECT_EQ(texts.mid(5), QStringList({"Locked until 6:00 AM", "No early release is configured"}));
}

}  // namespace
}  // namespace lunevra
