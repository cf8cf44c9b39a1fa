// What painting a dock of forty tiles costs, all of them in sight. Promise in a release build, at one device pixel a
// point: the whole dock anew within 8 ms.
//
//   bench_dock                      one device pixel a point
//   QT_SCALE_FACTOR=2 bench_dock    two

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QImage>

#include "base/Scheduler.h"
#include "views/dock/DockView.h"
#include "views/snapshot/SnapshotFixture.h"
#include "views/theme/Theme.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

/// Kinds whose data is on this machine.
const QString kKinds =
    u"digitalClock analogClassicLight analogClassicDark analogMinimal timeOnly timeSeconds flipClock "
    u"pixelClock overlapClock ringClock worldClockCity worldClockList dateOnly dayNumber todayClock calendar "
    u"calendarWeek calendarDayProgress calendarMonthProgress calendarYearProgress cpu ram storage "
    u"systemQuickToggles trash fileShelf downloads recentFiles pomodoro timer stopwatch drinkWater "
    u"habitTracker quickTodo scratchNote battery cpuChart ramChart network processTopApps"_s;

/// A dock as wide as its row, and the picture that it is painted into.
struct Dock {
  Dock() {
    DockRow row;
    for (const QString& kind : kKinds.split(u' ')) row.widgets.append(SnapshotFixture::widgetOf(kind));
    view.setRow(row);
    view.refresh(SnapshotFixture::sources());
    const QSize slot(static_cast<int>(view.idealRowWidth()), static_cast<int>(theme::kDockHeight));
    view.resize(slot.grownBy(view.margins()));
    view.show();
    QApplication::processEvents();
    picture = QImage(view.size() * view.devicePixelRatioF(), QImage::Format_ARGB32_Premultiplied);
    picture.setDevicePixelRatio(view.devicePixelRatioF());
  }
  void paint() { view.render(&picture, {}, {}, QWidget::DrawChildren); }

  SystemScheduler scheduler;
  DockView view{scheduler};
  QImage picture;
};

void report(benchmark::State& state, const Dock& dock) {
  state.counters["tiles"] = static_cast<double>(dock.view.itemCount());
  state.counters["ratio"] = dock.view.devicePixelRatioF();
}

// Another style leaves nothing that was painted before.
void redrawOfANewLook(benchmark::State& state) {
  Dock dock;
  DockRow row = dock.view.row();
  for (auto _ : state) {
    state.PauseTiming();
    row.style = row.style == DockStyle::DarkGlass ? DockStyle::LightGlass : DockStyle::DarkGlass;
    dock.view.setRow(row);
    state.ResumeTiming();
    dock.paint();
  }
  report(state, dock);
}
BENCHMARK(redrawOfANewLook)->Unit(benchmark::kMillisecond);

void redraw(benchmark::State& state) {
  Dock dock;
  for (auto _ : state) dock.paint();
  report(state, dock);
}
BENCHMARK(redraw)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tarnwick

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
