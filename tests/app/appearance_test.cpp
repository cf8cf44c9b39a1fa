#include "app/Appearance.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QPalette>
#include <QSignalSpy>

#include "desktop/Toggles.h"
#include "store/AppStore.h"
#include "store/NoDesktop.h"
#include "support/TestScheduler.h"
#include "support/TestServices.h"
#include "views/theme/DesktopLook.h"
#include "views/theme/WindowPalette.h"

namespace tarnwick::test {
namespace {

using namespace Qt::StringLiterals;

struct DarkSwitch : Toggles {
  bool isOn = false;
  ToggleState state(Toggle toggle) const override { return {toggle == Toggle::DarkMode && isOn, Capability::yes()}; }
  void set(Toggle, bool) override {}
  void start() override {}
};

class AppearanceTest : public ::testing::Test {
 protected:
  AppearanceTest() : palette_(QApplication::palette()) {
    DesktopLook::set({});
    store = std::make_unique<AppStore>(desktop.diagnosticSetup());
    appearance = std::make_unique<Appearance>(*store, toggles, contrast);
  }
  ~AppearanceTest() override {
    DesktopLook::set({});
    QApplication::setPalette(palette_);
  }
  void choose(const QString& light, const QString& contrastWord) {
    store->edit([&](DockConfiguration& config) {
      config.appAppearance = light;
      DeskOptions desk = config.desk();
      desk.contrast = contrastWord;
      config.setDesk(desk);
    });
  }
  void turn(bool on) {
    toggles.isOn = on;
    Q_EMIT toggles.changed();
  }

  TestScheduler scheduler;
  NoDesktop desktop{scheduler};
  DarkSwitch toggles;
  UsualContrast contrast;
  std::unique_ptr<AppStore> store;
  std::unique_ptr<Appearance> appearance;

 private:
  QPalette palette_;
};

TEST_F(AppearanceTest, TheUsersWishGoesBeforeTheDesktops) {
  const struct {
    QString wish;
    bool desktopIsDark;
    QString contrastWish;
    bool desktopWantsContrast;
    bool isDark;
    bool isHighContrast;
  } cases[] = {
      {u"auto"_s, false, u"auto"_s, false, false, false}, {u"auto"_s, true, u"auto"_s, true, true, true},
      {u"light"_s, true, u"off"_s, true, false, false},   {u"dark"_s, false, u"on"_s, false, true, true},
      {u"later"_s, true, u"later"_s, true, true, true},   {u"dark"_s, true, u"off"_s, true, true, false},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(qPrintable(each.wish + u' ' + each.contrastWish));
    choose(each.wish, each.contrastWish);
    contrast.wants = each.desktopWantsContrast;
    toggles.isOn = each.desktopIsDark;
    appearance->apply();
    EXPECT_EQ(appearance->isDark(), each.isDark);
    EXPECT_EQ(DesktopLook::now().highContrast, each.isHighContrast);
    // Made anew for the contrast as well.
    EXPECT_EQ(QApplication::palette().color(QPalette::WindowText),
              windowPalette(each.isDark).color(QPalette::WindowText));
  }
}

TEST_F(AppearanceTest, ASwitchThatHasNotAnsweredIsNotTakenForLight) {
  const QSignalSpy looks(appearance.get(), &Appearance::lookChanged);
  turn(false);
  EXPECT_EQ(DesktopLook::now().dark, std::nullopt);
  scheduler.advance(0.6);
  EXPECT_EQ(DesktopLook::now().dark, false);
  turn(true);
  EXPECT_EQ(DesktopLook::now().dark, true);
  turn(true);
  EXPECT_EQ(looks.size(), 2);
  contrast.wants = true;
  Q_EMIT contrast.changed();
  EXPECT_TRUE(DesktopLook::now().highContrast);
  EXPECT_EQ(looks.size(), 3);
}

TEST_F(AppearanceTest, NothingFollowsOnceItStopped) {
  turn(false);
  appearance->stop();
  scheduler.advance(1);
  turn(true);
  EXPECT_EQ(DesktopLook::now(), DesktopLook());
}

}  // namespace
}  // namespace tarnwick::test
