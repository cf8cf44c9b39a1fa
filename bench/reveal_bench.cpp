// What one frame of the dock's reveal costs, from the beat of the clock to the flushed window, and what taking the
// picture costs that is moved. Promise in a release build: a frame takes below a tenth of what a display with 60 of
// them a second leaves, at every size.
//
//   bench_reveal                      one device pixel a point
//   QT_SCALE_FACTOR=2 bench_reveal    two

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QPainter>

#include "desktop/FrameClock.h"
#include "dock/DockContentContainer.h"

namespace tarnwick {
namespace {

class BenchClock final : public FrameClock {
 public:
  void start() override { isRunning_ = true; }
  void stop() override { isRunning_ = false; }
  bool isRunning() const override { return isRunning_; }
  void beat() {
    now_ += kFrame;
    Q_EMIT frame(now_, kFrame);
  }

 private:
  static constexpr double kFrame = 1.0 / 144;
  bool isRunning_ = false;
  double now_ = 1;
};

/// Ten translucent tiles on a pane, about as many pixels as a dock paints.
class PaneContent final : public DockContent {
 public:
  void configure(const DockGeometry&) override {}
  QMargins margins() const override { return {24, 24, 24, 24}; }
  QRegion outline() const override { return rect().marginsRemoved(margins()); }
  QRegion inputRegion() const override { return outline(); }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const QRectF pane = QRectF(rect()).marginsRemoved(margins());
    painter.setBrush(QColor(20, 22, 26, 190));
    painter.drawRoundedRect(pane, 24, 24);
    painter.setBrush(QColor(255, 255, 255, 30));
    const double width = pane.width() / 10;
    for (int tile = 0; tile < 10; ++tile) {
      painter.drawRoundedRect(QRectF(pane.left() + tile * width + 5, pane.top() + 10, width - 10, 64), 14, 14);
    }
  }
};

struct Reveal {
  Reveal(int width, int height) : container(std::make_unique<PaneContent>(), std::unique_ptr<FrameClock>(clock)) {
    container.setAttribute(Qt::WA_TranslucentBackground);
    container.resize(QSize(width, height).grownBy(container.margins()));
    container.setTravel(height, true);
    container.show();
    QApplication::processEvents();
    turn();
  }
  void turn() { container.animate(to = 1 - to, true); }

  BenchClock* clock = new BenchClock;
  double to = 0;
  DockContentContainer container;
};

// Mirroring back before it slows down, so that each frame moves the whole picture.
void frame(benchmark::State& state) {
  Reveal reveal(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
  for (auto _ : state) {
    reveal.clock->beat();
    const double progress = reveal.container.progress();
    if (reveal.to > 0.5 ? progress > 0.8 : progress < 0.2) reveal.turn();
  }
  state.counters["ratio"] = reveal.container.devicePixelRatioF();
}
BENCHMARK(frame)->Args({900, 110})->Args({1600, 110})->Unit(benchmark::kMicrosecond);

void frameWithANewPicture(benchmark::State& state) {
  Reveal reveal(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
  for (int i = 0; i < 20; ++i) reveal.clock->beat();
  for (auto _ : state) {
    reveal.container.content().update();
    QApplication::processEvents();
  }
}
BENCHMARK(frameWithANewPicture)->Args({900, 110})->Args({1600, 110})->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace tarnwick

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
