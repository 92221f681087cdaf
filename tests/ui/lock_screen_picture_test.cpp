// Measures the pixels and the places of what a display of 1440x900 points shows.

#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <vector>

#include <QtQml/qqmlcomponent.h>
#include <QtQml/qqmlengine.h>
#include <QtQuick/qquickitem.h>

#include "ui/lock_screen_stage.h"
#include "ui/qt_color.h"

namespace lunevra {
namespace {

constexpr int width = 1440;
constexpr int height = 900;

using Rgb = std::array<double, 3>;

Rgb rgb(QRgb color) {
  return {static_cast<double>(qRed(color)), static_cast<double>(qGreen(color)),
          static_cast<double>(qBlue(color))};
}

Rgb hex(std::string_view color) {
  return rgb(qtColor(color).rgb());
}

Rgb mix(const Rgb& from, const Rgb& to, double part) {
  return {std::lerp(from[0], to[0], part), std::lerp(from[1], to[1], part),
          std::lerp(from[2], to[2], part)};
}

/// A ground that runs along the diagonal, to the middle colour and back.
Rgb ground(std::string_view edge, std::string_view middle, QPointF at) {
  const double along =
      (at.x() * width + at.y() * height) / (1.0 * width * width + 1.0 * height * height);
  return mix(hex(edge), hex(middle), 1.0 - std::abs(2.0 * along - 1.0));
}

Rgb night(QPointF at) {
  return ground("0a0a12", "0f0f1a", at);
}

/// What is left at its centre of a disc that is blurred.
double blurredCentre(double radius, double sigma) {
  return 1.0 - std::exp(-radius * radius / (2.0 * sigma * sigma));
}

/// The mean of the few pixels around a point, which evens out the grain.
Rgb pixelAt(const QImage& image, QPointF at, int reach = 2) {
  Rgb sum{};
  const int count = (2 * reach + 1) * (2 * reach + 1);
  for (int y = -reach; y <= reach; ++y)
    for (int x = -reach; x <= reach; ++x) {
      const auto pixel =
          rgb(image.pixel(static_cast<int>(at.x()) + x, static_cast<int>(at.y()) + y));
      for (std::size_t c = 0; c < sum.size(); ++c) sum[c] += pixel[c] / count;
    }
  return sum;
}

/// The lightest pixel: the colour of what is drawn there, without its soft edges.
Rgb lightestIn(const QImage& image, const QRectF& part) {
  QRgb lightest = 0;
  const QRect pixels = part.toRect() & image.rect();
  for (int y = pixels.top(); y <= pixels.bottom(); ++y)
    for (int x = pixels.left(); x <= pixels.right(); ++x)
      if (qGray(image.pixel(x, y)) > qGray(lightest)) lightest = image.pixel(x, y);
  return rgb(lightest);
}

void expectColor(const Rgb& seen, const Rgb& meant, const char* what, double tolerance = 1.5) {
  for (std::size_t c = 0; c < seen.size(); ++c)
    EXPECT_NEAR(seen[c], meant[c], tolerance) << what << ", component " << c;
}

QRectF placeOf(const QQuickItem& item) {
  return item.mapRectToScene(item.boundingRect());
}

/// What the column of a screen holds, without the gaps.
std::vector<QQuickItem*> blocksIn(const QQuickItem& item) {
  for (auto* child : item.childItems()) {
    if (child->inherits("QQuickColumn")) {
      std::vector<QQuickItem*> blocks;
      for (auto* block : child->childItems())
        if (block->width() > 1.0) blocks.push_back(block);
      return blocks;
    }
    if (auto blocks = blocksIn(*child); !blocks.empty()) return blocks;
  }
  return {};
}

void expectGaps(const std::vector<QQuickItem*>& blocks, const std::vector<double>& gaps) {
  ASSERT_EQ(blocks.size(), gaps.size() + 1);
  for (std::size_t i = 0; i < blocks.size(); ++i) {
    EXPECT_NEAR(placeOf(*blocks[i]).center().x(), width / 2.0, 1.0) << i;
    if (i == gaps.size()) break;
    EXPECT_NEAR(placeOf(*blocks[i + 1]).top() - placeOf(*blocks[i]).bottom(), gaps[i], 1.0) << i;
  }
}

using LockScreenPictureTest = LockScreenStage;

TEST_F(LockScreenPictureTest, TheGroundBeforeTheCountdown) {
  show({width, height});
  const auto image = window->grabWindow();
  for (const QPointF at : {QPointF(4, 4), QPointF(1430, 890), QPointF(720, 450), QPointF(439, 890),
                           QPointF(300, 600), QPointF(1200, 200)})
    expectColor(pixelAt(image, at), ground("0a0a0f", "12121a", at), "ground", 1.0);
}

TEST_F(LockScreenPictureTest, TheNight) {
  computer.keychain.setItem(Bytes(32, 1));
  engine.refreshPhysicalKeyStatus();
  engine.activateCommitmentLock(*computer.calendar.instant({.year = 2026, .month = 3, .day = 20}));
  beginBlocking();
  show({width, height});
  const auto image = window->grabWindow();
  const auto blocks = blocksIn(*window->contentItem());
  expectGaps(blocks, {0.06 * height, 0.08 * height, 0.15 * height});
  const auto place = [&](std::size_t block) { return placeOf(*blocks[block]); };
  // Centred with its margins, of which the upper one is larger.
  EXPECT_NEAR(place(0).top() - 0.08 * height, height - 0.06 * height - place(3).bottom(), 1.5);

  for (const QPointF at :
       {QPointF(1430, 8), QPointF(10, 880), QPointF(1040, 40), QPointF(439, 890)})
    expectColor(pixelAt(image, at), night(at), "ground", 1.0);
  const QPointF upper(0.15 * width, 0.2 * height);
  expectColor(pixelAt(image, upper), mix(night(upper), hex("6366f1"), 0.3 * blurredCentre(100, 80)),
              "upper glow");
  const QPointF lower(0.85 * width, 0.75 * height);
  expectColor(pixelAt(image, lower), mix(night(lower), hex("8b5cf6"), 0.25 * blurredCentre(90, 70)),
              "lower glow");

  const auto clock = place(1);
  EXPECT_EQ(clock.size(), QSizeF(300, 300));
  const auto below = [&](double y) { return clock.center() + QPointF(0.0, y); };
  expectColor(pixelAt(image, below(100)), mix(night(below(100)), hex("6366f1"), 0.073), "light", 4);
  for (const double y : {-165.0, 165.0})
    expectColor(pixelAt(image, below(y)), night(below(y)), "beyond the light");

  const auto commitment = placeOf(*blocks[1]->childItems()[1]->childItems()[2]);
  expectColor(lightestIn(image, commitment), mix(night(commitment.center()), hex("ef4444"), 0.6),
              "commitment", 16.0);

  const auto footer = blocks[3]->childItems();
  const auto pill = placeOf(*footer[0]);
  const QPointF inPill(pill.left() + 20.5, pill.center().y());
  const auto veiled = mix(night(inPill), hex("ffffff"), 0.08);
  expectColor(pixelAt(image, inPill), veiled, "pill");
  const auto outlined = mix(veiled, hex("ffffff"), 0.1);
  for (const QPointF edge : {QPointF(pill.center().x(), pill.top() + 0.5),
                             QPointF(pill.center().x(), pill.bottom() - 0.5)})
    expectColor(pixelAt(image, edge, 0), outlined, "outline of the pill", 2.0);
  expectColor(pixelAt(image, pill.topLeft() + QPointF(3, 3)), night(pill.topLeft()), "corner");
  expectColor(lightestIn(image, pill), hex("ffffff"), "text in the pill");
  const auto hint = placeOf(*footer[1]);
  EXPECT_NEAR(hint.top() - pill.bottom(), 14.0, 1.0);
  expectColor(lightestIn(image, hint), mix(night(hint.center()), hex("ffffff"), 0.28), "hint");
}

class CountdownPictureTest : public LockScreenStage, public testing::WithParamInterface<int> {
 protected:
  void showCountdown(int value) {
    show();  // registers the types
    content.reset();
    window = std::make_unique<QQuickWindow>();
    window->setColor(Qt::black);
    window->resize(width, height);
    window->show();
    QQmlComponent component(
        &views, QUrl("qrc:/qt-project.org/imports/Lunevra/LockScreen/CountdownView.qml"));
    screen.reset(qobject_cast<QQuickItem*>(
        component.createWithInitialProperties({{"countdownValue", value}})));
    ASSERT_TRUE(screen) << component.errorString().toStdString();
    screen->setSize(QSizeF(width, height));
    screen->setParentItem(window->contentItem());
  }
  QQmlEngine views;
  std::unique_ptr<QQuickItem> screen;
};

TEST_P(CountdownPictureTest, RingAndNumber) {
  showCountdown(GetParam());
  const auto blocks = blocksIn(*screen);
  auto* const number = blocks.at(1)->childItems()[1];
  ASSERT_TRUE(eventually(
      [&] { return screen->opacity() == 1.0 && std::abs(number->scale() - 1.0) < 0.03; }));
  const auto image = window->grabWindow();
  constexpr double breath = 0.04 * 360 + 2.5;  // the footer is clear of it, and not further away
  expectGaps(blocks, {0.06 * height, breath});
  const auto ring = placeOf(*blocks[1]);
  EXPECT_EQ(ring.size(), QSizeF(360, 360));

  // Full, whatever the first value; its colours run along a diagonal that turns with it.
  const QPointF towards[] = {{0, -1}, {1, 0}, {0, 1}, {-1, 0}};
  const double parts[] = {0.75, 0.75, 0.25, 0.25};
  for (std::size_t i = 0; i < std::size(parts); ++i) {
    const auto on = [&](double radius) { return ring.center() + radius * towards[i]; };
    expectColor(pixelAt(image, on(162), 1), mix(hex("ef4444"), hex("f97316"), parts[i]), "arc", 3);
    expectColor(pixelAt(image, on(162 - 5), 0), {}, "inside of the arc");
    expectColor(pixelAt(image, on(162 + 5), 0), {}, "outside of the arc");
  }

  auto upper = placeOf(*number);
  const auto lower = upper.adjusted(0, 2 * upper.height() / 3, 0, 0);
  upper.setHeight(upper.height() / 3);
  const auto top = lightestIn(image, upper);
  const auto bottom = lightestIn(image, lower);
  if (GetParam() > 1) {
    EXPECT_GT(top[0], bottom[0] + 5.0) << "white, fading";
  } else {
    EXPECT_GT(bottom[1], top[1] + 5.0) << "red, turning orange";
    const QPointF beside = placeOf(*number).center() + QPointF(16, 20);
    EXPECT_GT(pixelAt(image, beside)[0], 3.0) << "glow";
  }

  const auto lightest = lightestIn(image, placeOf(*number));
  EXPECT_GT(lightest[0], 225.0);
  EXPECT_EQ(lightest[2] > 200.0, GetParam() > 1);  // white, or red on the last second
}
INSTANTIATE_TEST_SUITE_P(Values, CountdownPictureTest, testing::Values(7, 3, 2, 1, 0));

}  // namespace
}  // namespace lunevra
