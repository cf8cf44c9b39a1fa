#include "app/WindowPlaces.h"

#include <gtest/gtest.h>

#include <cmath>

#include "store/AppStore.h"
#include "store/NoDesktop.h"
#include "support/TestScheduler.h"
#include "views/window/AppWindow.h"

namespace tarnwick::test {
namespace {

using namespace Qt::StringLiterals;

struct PlacedScreens final : Screens {
  explicit PlacedScreens(bool areTheDesktops) : places(areTheDesktops) {}
  QList<Screen> all() const override {
    const QRectF whole(0, 0, 1000, 700);
    return {Screen{mainId(), {}, u"Display"_s, whole, whole, 1}};
  }
  QString mainId() const override { return u"display"_s; }
  bool placesWindows() const override { return places; }
  bool places;
};

struct PlacedWindow final : AppWindow {
  explicit PlacedWindow(AppStore& store) : AppWindow(store, u"Placed"_s) {
    setAttribute(Qt::WA_DeleteOnClose, false);
    setContent(nullptr, new QWidget);
    setGeometry(100, 100, 300, 200);
  }
};

TEST(WindowPlaces, AWindowIsInTheMiddleOfWhatTheDesktopLetsItHave) {
  TestScheduler scheduler;
  NoDesktop desktop(scheduler);
  AppStore store(desktop.diagnosticSetup());
  const QRect free(0, 0, 1000, 577);  // Above the dock, with a gap.
  const struct {
    const char* name;
    bool placesWindows;
    QRect bounds;
  } cases[] = {
      {"we place it", false, free},
      {"the desktop places it, so it is to be clear of the dock in the middle", true, free.adjusted(0, 123, 0, 0)},
  };
  for (const auto& each : cases) {
    const PlacedScreens screens(each.placesWindows);
    WindowPlaces places(screens, [](const Screen&) { return QRectF(0, 588, 1000, 112); });
    PlacedWindow window(store);
    places.settle(window, u"placed"_s, {nullptr, u"display"_s});
    window.present();
    const QRect place = window.geometry();
    constexpr int frame = 16;  // What half of a title bar moves it by at most.
    EXPECT_LE(std::abs(place.center().y() - each.bounds.center().y()), frame) << each.name;
    EXPECT_TRUE(each.bounds.contains(place)) << each.name;
  }
}

}  // namespace
}  // namespace tarnwick::test
