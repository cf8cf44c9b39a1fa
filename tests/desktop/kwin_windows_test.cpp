// What KWin does with windows of others for the program: pictures of them, and moving them beside the dock and back.
#include <gtest/gtest.h>
#include <signal.h>

#include <QFile>
#include <QTemporaryDir>

#include "config/Persistence.h"
#include "desktop/ForeignProgram.h"
#include "desktop/Program.h"
#include "desktop/TestDesk.h"
#include "platform/kwin/KWinWindowFrames.h"
#include "platform/kwin/KWinWindowPictures.h"
#include "platform/kwin/RowShrinker.h"
#include "platform/linux/ProcessLaunch.h"
#include "platform/wayland/PlasmaClientWindows.h"
#include "store/NoDesktop.h"
#include "support/TestScheduler.h"
#include "windows/WindowKeeper.h"
#include "windows/WindowService.h"

namespace tarnwick::testing {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class KWinWindows : public ::testing::Test {
 protected:
  static bool comesTrue(const std::function<bool()>& predicate) { return VirtualDisplay::waitUntil(predicate); }

  /// A window of another program, in front.
  std::unique_ptr<ForeignProgram> open() {
    desk_.moveTo(desk_.away());
    auto program = std::make_unique<ForeignProgram>(u"Loose"_s, QRect());
    EXPECT_TRUE(comesTrue([&] {
      for (const auto& each : frames_.all(1s).value_or(QList<WindowFrames::Window>()))
        if (each.active && each.pid != QCoreApplication::applicationPid()) window_ = each;
      return window_.number != 0;
    }));
    return program;
  }
  QRectF frame() { return frames_.frame(window_.number, 1s).value_or(QRectF()); }
  bool comesTo(const QRectF& place) {
    return comesTrue([&] { return frame() == place; });
  }
  bool moves(const QRectF& place) { return frames_.setFrame(window_.number, place, 2s) && frame() == place; }

  TestDesk& desk_ = TestDesk::current();
  KWinWindowFrames frames_;
  WindowFrames::Window window_;
};

TEST_F(KWinWindows, PreviewsShowWhatAWindowShows) {
  const WaylandSession session;
  WaylandScreens screens(session);
  const WaylandPanels panels(session, screens);
  const auto listed = PlasmaClientWindows::make(session, screens, panels);
  ASSERT_TRUE(listed);
  PlasmaClientWindows& windows = *listed;
  test::TestScheduler time;
  NoDesktop nothing(time);
  WindowService service({.windows = windows,
                         .applications =
                             [&] {
                               RunningApp app;
                               for (const ClientWindow& each : windows.all()) app.windows.append(each.id);
                               return QList{app};
                             },
                         .session = nothing.session,
                         .pictures = [&] { return std::make_unique<KWinWindowPictures>(windows.table()); }});
  auto program = open();
  ASSERT_TRUE(comesTrue([&] { return windows.pictures().available; })) << qPrintable(windows.pictures().reason);
  ASSERT_TRUE(comesTrue([&] {
    service.refresh();
    return service.windows().size() == 1;
  }));
  const quint64 id = service.windows().first().id;
  KWinWindowPictures pictures(windows.table());
  ASSERT_TRUE(comesTrue([&] {
    const QImage picture = pictures.take(id);
    return !picture.isNull() && picture.pixel(180, 150) == 0xFFFFFF00;
  })) << "it has painted itself";
  service.loadPreviews();
  ASSERT_TRUE(comesTrue([&] { return !service.preview(id).isNull(); }));
  EXPECT_EQ(service.preview(id).pixel(180, 150), 0xFFFFFF00);
  EXPECT_EQ(service.preview(id).pixel(5, 150), 0xFF000000);
  EXPECT_EQ(service.preview(id).size(), WindowPictures::sizeFor(window_.frame.size().toSize()));
  service.stopPreviews();
  // What looks the same twice is left alone for a while.
  for (int again = 0; again < 2; ++again) EXPECT_FALSE(pictures.take(id).isNull());
  EXPECT_FALSE(pictures.hasChanged(id));
  program.reset();
  EXPECT_TRUE(comesTrue([&] { return pictures.take(id).isNull(); })) << "gone";
}

TEST_F(KWinWindows, AWindowIsMovedWithWhatKWinDrawsAroundIt) {
  ASSERT_TRUE(frames_.capability());
  auto program = open();
  const QRectF before = frame();
  EXPECT_EQ(before, window_.frame);
  for (const QRectF& place : {before.translated(30, 40), before.adjusted(0, 0, -100, -80), before}) {
    EXPECT_EQ(frames_.accepted(window_.number, place), place);
    EXPECT_TRUE(moves(place));
  }
  EXPECT_FALSE(frames_.setFrame(window_.number, QRectF(1e9, 0, 100, 100), 1s));
  frames_.rest();
  EXPECT_EQ(frame(), before) << "a new conversation";
  KWinWindowFrames other;
  ASSERT_TRUE(other.all(1s));
  EXPECT_EQ(other.frame(window_.number, 1s), before) << "another process knows it by the same number";
  program.reset();
  EXPECT_TRUE(comesTrue([&] { return !frames_.frame(window_.number, 1s); }));
  EXPECT_FALSE(frames_.setFrame(window_.number, before, 1s));
}

TEST_F(KWinWindows, AWindowUnderTheDockIsMovedAndComesBackWhateverEndsTheDock) {
  const QTemporaryDir folder;
  DockConfiguration config;
  config.onboardingComplete = true;
  config.desktop.reserveSpace = true;
  Persistence::save(config, folder.filePath(u"Tarnwick/config.json"_s));
  const auto program = open();
  const QRect display = desk_.display(0);
  const QRectF before(display.left() + 300, display.bottom() - 330, 420, 320);
  ASSERT_TRUE(moves(before));
  frames_.rest();
  const auto journal = [&folder] {
    QFile file(folder.filePath(u"Tarnwick/window-recovery.json"_s));
    return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed() : QByteArray();
  };
  // KWin itself moves it as soon as the dock takes its place, which is known to nobody else then.
  const auto isAside = [&] {
    const QRectF now = frame();
    return journal().contains("original") && now.bottom() < before.bottom() - 70 && now.size() == before.size() &&
           now.left() == before.left();
  };
  for (const int end : {SIGTERM, SIGKILL, SIGSEGV}) {
    Program dock(folder.path());
    EXPECT_TRUE(comesTrue(isAside)) << qPrintable(dock.standardError());
    dock.signal(end);
    dock.end();
    EXPECT_TRUE(comesTo(before)) << "after signal " << end;
    EXPECT_TRUE(comesTrue([&] { return journal() == "[]"; })) << journal().toStdString();
  }
  // What its user moves meanwhile stays there.
  Program dock(folder.path());
  ASSERT_TRUE(comesTrue(isAside));
  const QRectF chosen = frame().translated(40, -60);
  ASSERT_TRUE(moves(chosen));
  dock.signal(SIGTERM);
  EXPECT_EQ(dock.end(), 0);
  EXPECT_EQ(frame(), chosen);
}

TEST(RowShrinker, EachPixelIsTheMeanOfThoseThatItStandsFor) {
  struct Case {
    QSize from;
    QSize to;
    QList<int> reds;  ///< Of what is made, by rows.
  };
  // The red of a pixel is its place in the first, and each row is 100 more than the one above.
  for (const Case& each : {Case{{4, 2}, {2, 1}, {50, 52}}, Case{{2, 2}, {2, 2}, {0, 1, 100, 101}},
                           Case{{1, 2}, {2, 4}, {0, 0, 0, 0, 100, 100, 100, 100}}, Case{{3, 1}, {2, 1}, {0, 1}}}) {
    RowShrinker shrinker(each.from, each.to, QImage::Format_ARGB32);
    for (int y = 0; y < each.from.height(); ++y) {
      EXPECT_TRUE(shrinker.picture().isNull());
      QList<QRgb> row;
      for (int x = 0; x < each.from.width(); ++x) row.append(qRgb(100 * y + x, 7, 200));
      shrinker.add(reinterpret_cast<const uchar*>(row.constData()));
    }
    const QImage made = shrinker.picture();
    ASSERT_EQ(made.size(), each.to);
    QList<int> reds;
    for (int at = 0; at < each.reds.size(); ++at) {
      const QRgb pixel = made.pixel(at % each.to.width(), at / each.to.width());
      reds.append(qRed(pixel));
      EXPECT_EQ(pixel | 0xFF0000U, qRgb(255, 7, 200));
    }
    EXPECT_EQ(reds, each.reds);
  }
}

}  // namespace
}  // namespace tarnwick::testing
