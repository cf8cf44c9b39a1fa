#include "dock/DockContentContainer.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QTest>
#include <QWindow>

#include "base/ProbeCounters.h"
#include "dock/MovingPicture.h"
#include "support/TestFrameClock.h"
#include "support/Wait.h"

namespace tarnwick {
namespace {

using test::TestFrameClock;

constexpr QRgb kClear = 0;
constexpr QRgb kFill = 0xffc02010;

/// A slot of one colour within margins that stay clear.
class PlainContent final : public DockContent {
 public:
  void configure(const DockGeometry&) override {}
  QMargins margins() const override { return {10, 10, 10, 10}; }
  QRegion outline() const override { return slot(); }
  QRegion inputRegion() const override { return slot(); }
  QRect slot() const { return rect().marginsRemoved(margins()); }

  void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(slot(), color); }
  void mousePressEvent(QMouseEvent* event) override { presses.append(event->position().toPoint()); }

  QColor color{kFill};
  QList<QPoint> presses;
  QWidget part{this};  ///< It paints nothing.
};

/// The painter rounds an opacity in its own way.
void expectOpacity(QRgb pixel, double progress) { EXPECT_NEAR(qAlpha(pixel), progress * 255, 1.6) << progress; }

/// Counts what is painted.
struct PaintCounter final : QObject {
  bool eventFilter(QObject*, QEvent* event) override {
    count += event->type() == QEvent::Paint;
    return false;
  }
  int count = 0;
};

struct DockContentContainerTest : ::testing::Test {
  static constexpr QRect kRest{20, 10, 120, 60};  // The slot in it is 30, 20, 100 by 40.
  static constexpr int kTravel = 80;

  DockContentContainerTest() {
    container.setAttribute(Qt::WA_TranslucentBackground);
    container.resize(160, 100);
    container.setRestingFrame(kRest);
    container.setTravel(kTravel, true);
    container.show();
    settle();
    QObject::connect(&container, &DockContent::shapeChanged, &container, [this] { ++shapes; });
    ProbeCounters::reset();
    ProbeCounters::setArmed(true);
    container.findChild<MovingPicture*>()->installEventFilter(&paints);
    content->installEventFilter(&contentPaints);
  }
  ~DockContentContainerTest() override { ProbeCounters::setArmed(false); }

  static void settle() { QApplication::processEvents(); }
  static qint64 pictures() { return ProbeCounters::snapshot().value(QStringLiteral("movingPicture")); }
  /// Stops the motion on its way, at the first frame at or beyond a progress.
  void moveTo(double progress) {
    container.animate(1, true);
    while (container.progress() < progress && clock->beat() > 0) continue;
  }
  /// What a picture of the window shows at a point of it, with everything settled.
  QRgb pixel(const QPointF& at) { return pixelOf(container, at); }
  static QRgb pixelOf(QWidget& window, const QPointF& at) {
    const QImage image = window.grab().toImage();
    const QPointF device = at * window.devicePixelRatioF();
    return image.pixel(static_cast<int>(device.x()), static_cast<int>(device.y()));
  }

  TestFrameClock* clock = new TestFrameClock;
  PlainContent* content = new PlainContent;
  DockContentContainer container{std::unique_ptr<DockContent>(content), std::unique_ptr<FrameClock>(clock)};
  PaintCounter paints, contentPaints;
  int shapes = 0;
};

TEST_F(DockContentContainerTest, ShowsNothingWhileHidden) {
  EXPECT_EQ(pixel({80, 40}), kClear);
  EXPECT_TRUE(container.inputRegion().isEmpty());
  EXPECT_TRUE(container.outline().isEmpty());
  content->update();
  settle();
  EXPECT_EQ(contentPaints.count, 0);
  EXPECT_EQ(pictures(), 0);
}

TEST_F(DockContentContainerTest, PaintsItsContentUnseenBeforeItIsFirstCalled) {
  auto* own = new TestFrameClock;
  auto* unseen = new PlainContent;
  DockContentContainer early{std::unique_ptr<DockContent>(unseen), std::unique_ptr<FrameClock>(own),
                             std::chrono::milliseconds()};
  unseen->installEventFilter(&contentPaints);
  early.setAttribute(Qt::WA_TranslucentBackground);
  early.resize(160, 100);
  early.setRestingFrame(kRest);
  early.show();
  EXPECT_TRUE(waitFor([this] { return contentPaints.count == 1; }));
  EXPECT_EQ(pixelOf(early, {80, 40}), kClear);
  EXPECT_EQ(pictures(), 0);
  early.animate(1, true);
  EXPECT_GT(own->beat(), 0);
  EXPECT_EQ(pictures(), 1);
}

TEST_F(DockContentContainerTest, IsOnlyTheContentWhenShown) {
  container.animate(1, false);
  settle();
  EXPECT_EQ(content->geometry(), kRest);
  EXPECT_EQ(container.inputRegion(), QRegion(30, 20, 100, 40));
  EXPECT_EQ(container.margins(), content->margins());
  EXPECT_EQ(shapes, 1);
  EXPECT_EQ(pixel({30.6, 20.6}), kFill);
  EXPECT_EQ(pixel({29.4, 20.6}), kClear);
  const int before = contentPaints.count;
  content->update();
  settle();
  EXPECT_EQ(contentPaints.count, before + 1);
  EXPECT_EQ(pictures(), 0);
  EXPECT_EQ(paints.count, 0);
}

TEST_F(DockContentContainerTest, SlidesAndFadesByWholePixels) {
  for (const bool slidesDown : {true, false}) {
    container.setTravel(15, slidesDown);
    for (const double progress : {0.1, 0.5, 0.9}) {
      moveTo(progress);
      const double ratio = container.devicePixelRatioF();
      const int shift = qRound((slidesDown ? 15 : -15) * (1 - container.progress()) * ratio);
      const double top = 20 + (shift + 0.5) / ratio;
      expectOpacity(pixel({80, top}), container.progress());
      expectOpacity(pixel({80, top + 40 - 1 / ratio}), container.progress());
      EXPECT_EQ(pixel({80, top - 1 / ratio}), kClear) << progress;
      EXPECT_EQ(pixel({80, top + 40}), kClear) << progress;
      EXPECT_EQ(container.inputRegion(), QRegion(30, 20 + qRound(shift / ratio), 100, 40)) << progress;
    }
    container.animate(0, false);
  }
}

TEST_F(DockContentContainerTest, DrawsAFrameOnlyWhenItLooksDifferent) {
  container.animate(1, true);
  const auto seen = [this] {
    const double progress = container.progress();
    return std::pair(qRound((1 - progress) * kTravel * container.devicePixelRatioF()), qRound(progress * 255));
  };
  int frames = 0, skipped = 0;
  for (auto last = seen(); clock->beat() > 0 && seen() != std::pair(0, 255); ++frames) {
    settle();
    EXPECT_EQ(paints.count, std::exchange(last, seen()) == seen() ? 0 : 1) << container.progress();
    skipped += paints.count == 0;
    paints.count = 0;
  }
  EXPECT_GT(frames, 20);
  EXPECT_GT(skipped, 0);
  EXPECT_EQ(pictures(), 1);
  EXPECT_EQ(contentPaints.count, 1) << "into the picture, never into the window";
  clock->beat(5);
  settle();
  EXPECT_EQ(pictures(), 1);
  EXPECT_EQ(contentPaints.count, 2);
  EXPECT_EQ(pixel({80, 40}), kFill);
}

TEST_F(DockContentContainerTest, TakesThePictureAgainWhenTheContentChanges) {
  moveTo(0.5);
  settle();
  const QPointF seen(80, 40 + container.offset());
  content->color = Qt::blue;
  content->update();
  settle();
  EXPECT_EQ(pictures(), 2);
  EXPECT_EQ(qRed(pixel(seen)), 0);

  content->color = kFill;
  content->update();
  clock->beat();
  settle();
  EXPECT_EQ(pictures(), 3) << "a change just before a frame is not lost";
  EXPECT_GT(qRed(pixel({80, 40 + container.offset()})), 0);
  clock->beat();
  settle();
  EXPECT_EQ(pictures(), 3);

  container.setRestingFrame(kRest.adjusted(0, 0, 10, 0));
  settle();
  expectOpacity(pixel({139, 40 + container.offset()}), container.progress());
  container.hide();
  container.resize(200, 90);
  container.show();
  settle();
  expectOpacity(pixel({80, 40 + container.offset()}), container.progress());
}

TEST_F(DockContentContainerTest, ClicksLandWhereTheContentIsSeen) {
  const auto click = [this](double y) {
    content->presses.clear();
    QTest::mouseClick(container.windowHandle(), Qt::LeftButton, {}, QPoint(80, qRound(y)));
    settle();
    return content->presses;
  };
  EXPECT_EQ(click(40), QList<QPoint>()) << "hidden";
  for (const double progress : {0.3, 0.6, 0.9}) {
    moveTo(progress);
    const QList<QPoint> presses = click(15 + container.offset());
    ASSERT_EQ(presses.size(), 1) << progress;
    EXPECT_EQ(presses[0].x(), 60);
    EXPECT_NEAR(presses[0].y(), 5, 1) << progress;
    if (container.offset() > 10) {
      EXPECT_EQ(click(15), QList<QPoint>()) << progress;
    }
  }
  clock->beat(5);
  EXPECT_EQ(click(40), QList<QPoint>({QPoint(60, 30)}));
}

TEST_F(DockContentContainerTest, PassesItsPlaceWithoutBreakingTheOpacity) {
  container.animate(2, true);
  while (container.progress() < 0.9) clock->beat();
  container.animate(1, true);
  while (container.progress() <= 1.1) ASSERT_EQ(clock->beat(), 1);
  EXPECT_LT(container.offset(), -5);
  EXPECT_EQ(pixel({80, 20.5 + qRound(container.offset())}), kFill);
  clock->beat(5);
  EXPECT_EQ(container.progress(), 1);
}

TEST_F(DockContentContainerTest, OnlyFadesWithReducedMotion) {
  container.setReduceMotion(true);
  moveTo(0.4);
  EXPECT_EQ(container.offset(), 0);
  expectOpacity(pixel({80, 20.5}), container.progress());
  EXPECT_EQ(container.inputRegion(), QRegion(30, 20, 100, 40));
}

TEST_F(DockContentContainerTest, MovesItsOutlineWhereNothingIsTranslucent) {
  DockGeometry geometry;
  geometry.composited = false;
  container.configure(geometry);
  container.animate(1, true);
  QRegion last;
  int changes = 0;
  const auto check = [&] {
    const int offset =
        qRound(qRound(container.offset() * container.devicePixelRatioF()) / container.devicePixelRatioF());
    // It is out of sight once it has gone the whole way, and cut at the window's edge before.
    const QRegion expected = offset >= kTravel ? QRegion() : QRegion(30, 20 + offset, 100, 40) & QRect(0, 0, 160, 100);
    changes += std::exchange(last, container.outline()) != container.outline();
    if (offset < kTravel - 1) {
      EXPECT_EQ(container.outline(), expected);
      EXPECT_EQ(qAlpha(pixel({80, std::min(99.0, 21.0 + offset)})), 255) << offset;
    }
  };
  while (clock->beat() > 0) check();
  EXPECT_EQ(last, QRegion(30, 20, 100, 40));
  container.animate(0, true);
  while (clock->beat() > 0) check();
  EXPECT_TRUE(container.outline().isEmpty());
  EXPECT_GE(shapes, changes);
  EXPECT_LE(shapes, 2 * kTravel);

  container.setTravel(0, true);
  moveTo(0.4);
  EXPECT_TRUE(container.outline().isEmpty()) << "neither way nor fading: it comes half-way through";
  moveTo(0.6);
  EXPECT_FALSE(container.outline().isEmpty());
}

}  // namespace
}  // namespace tarnwick
