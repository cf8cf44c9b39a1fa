// A real player is shown on the dock, paused by the tile's own button, and driven in the panel by keys.
#include <linux/input-event-codes.h>

#include <QApplication>

#include "desktop/ShellTest.h"
#include "support/RealPlayer.h"
#include "views/families/media/PlaybackTiles.h"
#include "widgets/catalog/Kinds.h"

namespace tarnwick::testing {
namespace {

using namespace Qt::StringLiterals;

class MediaScenario : public ShellTest {
 protected:
  ~MediaScenario() override { end(); }
  bool becomes(const QString& status) {
    // The tile takes the next command once it shows what came of the one before.
    const bool isPaused = status == u"Paused"_s;
    return inTime([&] {
      return RealPlayer::status(QDBusConnection::sessionBus()) == status &&
             view().itemText(0).value.contains(u"paused"_s) == isPaused;
    });
  }
  static QWidget* named(const QString& name) {
    for (QWidget* each : QApplication::allWidgets())
      if (each->isVisible() && (each->accessibleName() == name || each->property("text").toString() == name))
        return each;
    return nullptr;
  }
};

TEST_F(MediaScenario, APlayerIsShownAndDriven) {
  RealPlayer player;
  ASSERT_TRUE(comesTrue([] { return RealPlayer::status(QDBusConnection::sessionBus()) == u"Paused"_s; }));
  DockConfiguration config;
  config.profiles[0].widgets = {{QUuid::createUuid(), QString(kind::nowPlayingExpanded), {}, {}}};
  startShown(config);
  const QRect place = tile(0);
  // The button in the middle of three; before the player is known it is not there, and a click opens the panel.
  constexpr double kFromRight = 42;
  ASSERT_TRUE(inTime([&] { return view().itemText(0).value.contains(u"Still Water"_s); }));
  const double scale = place.height() / 64.0;
  const QPoint button(place.right() - static_cast<int>(kFromRight * scale), place.center().y());
  desk.click(button);
  EXPECT_TRUE(becomes(u"Playing"_s));
  desk.click(button);
  EXPECT_TRUE(becomes(u"Paused"_s));
  EXPECT_FALSE(isOpen());

  dock().focus();
  ASSERT_TRUE(inTime([&] { return view().hasFocus() && view().focusedItem() == 0; }));
  desk.tap(KEY_ENTER);
  ASSERT_TRUE(inTime([&] { return named(u"Still Water"_s) && named(u"Play"_s) && named(u"Play"_s)->hasFocus(); }));
  desk.tap(KEY_SPACE);
  EXPECT_TRUE(becomes(u"Playing"_s));
  player.kill();
  EXPECT_TRUE(inTime([&] { return named(u"Nothing playing"_s); })) << "one that has gone is not shown any more";
}

}  // namespace
}  // namespace tarnwick::testing
