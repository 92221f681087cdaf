#include <algorithm>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <memory>

#include <QtCore/qcoreapplication.h>
#include <QtCore/qdeadlinetimer.h>
#include <QtGui/qguiapplication.h>
#include <QtGui/qpainter.h>
#include <QtQuick/qquickwindow.h>

#include "engine/shutdown_manager.h"
#include "platform/simulated/simulated_host.h"
#include "ui/gaussian_blur.h"
#include "ui/lock_screen/lock_screen_content.h"
#include "ui/symbol_paths.h"
#include "ui/text_shape.h"

namespace lunevra {
namespace {

using std::chrono_literals::operator""s;

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

class LockScreenViewTest : public testing::Test {
 protected:
  void setTime(int hour) {
    computer.time.setWallClock(*computer.calendar.instant(
        {.year = 2026, .month = 3, .day = 14, .hour = hour, .minute = 0}));
  }
  void show() {
    window = std::make_unique<QQuickWindow>();
    window->resize(800, 600);
    window->show();
    content = lockScreenFactory(computer.host(), ticks)(engine);
    std::static_pointer_cast<QuickContent>(content)->attach(*window);
  }
  bool eventually(const std::function<bool(const QImage&)>& condition) {
    const QDeadlineTimer deadline(20000);
    while (!deadline.hasExpired()) {
      if (condition(window->grabWindow())) return true;
      QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
    }
    return false;
  }
  /// The mean lightness of a part of the picture, 0 to 255.
  static double lightness(const QImage& image, QRect part) {
    double sum = 0.0;
    for (int y = part.top(); y <= part.bottom(); ++y)
      for (int x = part.left(); x <= part.right(); ++x) sum += qGray(image.pixel(x, y));
    return sum / (part.width() * part.height());
  }
  static bool showsPill(const QImage& image) { return lightness(image, {310, 520, 180, 2}) > 25.0; }

  SimulatedHost computer;
  bool isAfternoon = (setTime(15), true);
  SyncedStore store{computer.host()};
  PhysicalKeyManager keyManager{computer.host()};
  FirewallHelperClient firewall{computer.host()};
  ShutdownManager engine{computer.host(), store, keyManager, firewall};
  SimulatedTime ticks;
  std::unique_ptr<QQuickWindow> window;
  std::shared_ptr<WindowContent> content;  // goes before its window
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
  setTime(22);
  engine.evaluateSchedule();
  computer.time.drainMainQueue();
  const QRect aboveTheNumber(396, 215, 8, 8);  // where the full ring passes
  EXPECT_TRUE(
      eventually([&](const QImage& image) { return lightness(image, aboveTheNumber) > 60.0; }));
  computer.time.pass(3s);
  EXPECT_TRUE(eventually([&](const QImage& image) {
    return showsPill(image) && lightness(image, aboveTheNumber) < 60.0;
  }));
}

TEST_F(LockScreenViewTest, NothingTicksOnceTheWindowIsGone) {
  setTime(22);
  engine.evaluateSchedule();
  computer.time.pass(3s);
  show();
  EXPECT_TRUE(eventually(showsPill));
  EXPECT_GT(ticks.repeatingTimers(), 0U);
  window->hide();
  EXPECT_EQ(ticks.repeatingTimers(), 0U);
  window->show();
  EXPECT_GT(ticks.repeatingTimers(), 0U);
  content.reset();
  EXPECT_EQ(ticks.repeatingTimers(), 0U);
}

}  // namespace
}  // namespace lunevra

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
  testing::InitGoogleTest(&argc, argv);
  const QGuiApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
