// The first run and the small window below the status item, under a keyboard and a pointer.
#include <gtest/gtest.h>

#include <QLabel>
#include <QPointer>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include "../support/TestFrameClock.h"
#include "apps/InstalledApps.h"
#include "services/Connections.h"
#include "store/NoDesktop.h"
#include "store/UndoStack.h"
#include "support/AccessibleWalk.h"
#include "support/RecordingCommands.h"
#include "support/TestScheduler.h"
#include "support/TestServices.h"
#include "views/controls/Rows.h"
#include "views/controls/Switch.h"
#include "views/onboarding/FirstRun.h"
#include "views/onboarding/HelpWindow.h"
#include "views/onboarding/MenuBarPanel.h"
#include "views/onboarding/OnboardingWindow.h"
#include "views/snapshot/SnapshotFixture.h"
#include "views/window/LayoutCard.h"
#include "views/window/LayoutPicture.h"
#include "widgets/catalog/Kinds.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

AppEnvironment environmentIn(const QString& folder) {
  AppEnvironment environment;
  environment.home = environment.dataHome = folder;
  return environment;
}

class OnboardingTest : public ::testing::Test {
 protected:
  AppStore& store() { return snapshot.store(); }

  WindowServices services(UndoableEdits& changes) {
    return {changes, commands, apps, screens, forms, connections, {}, [this] { return abilities; }};
  }
  OnboardingWindow* open(int page = 0) {
    auto* window = new OnboardingWindow(store(), services(edits), page);
    window->present();
    QCoreApplication::processEvents();
    return window;
  }
  template <class Widget>
  static Widget* find(const QWidget* in, const QString& name) {
    for (Widget* each : in->findChildren<Widget*>())
      if (each->isVisibleTo(in) && each->accessibleName() == name) return each;
    return nullptr;
  }
  static QPushButton* button(const QWidget* in, const QString& word) {
    for (QPushButton* each : in->findChildren<QPushButton*>())
      if (each->isVisibleTo(in) && each->text() == word) return each;
    return nullptr;
  }
  static LayoutCard* card(const QWidget* in, DockLayout layout) {
    for (LayoutCard* each : in->findChildren<LayoutCard*>())
      if (each->layout() == layout) return each;
    return nullptr;
  }
  static bool says(const QWidget* in, const QString& part) {
    for (const QLabel* each : in->findChildren<QLabel*>())
      if (each->isVisibleTo(in) && each->text().remove(QChar(0x2060)).contains(part)) return true;
    return false;
  }

  SnapshotStore snapshot;
  DesktopAbilities abilities;
  QTemporaryDir folder;
  test::TestScheduler scheduler;
  InstalledApps apps{environmentIn(folder.path()), scheduler};
  UndoStack undo;
  UndoableEdits edits{snapshot.store(), apps, undo};
  test::RecordingCommands commands;
  test::NoScreens screens;
  WidgetEditor::Hooks forms;
  Connections connections;
};

TEST_F(OnboardingTest, CanBeLeftAndContinuedAndOnlyItsEndCompletesIt) {
  store().edit([](DockConfiguration& config) { config.onboardingComplete = false; });
  QPointer<OnboardingWindow> window = open();
  EXPECT_EQ(window->windowTitle(), u"Welcome to Tarnwick"_s);
  EXPECT_EQ(button(window, u"Back"_s), nullptr);
  QTest::keyClick(window->focusWidget(), Qt::Key_Return);
  EXPECT_EQ(window->page(), 1);
  window->close();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(window.isNull());
  EXPECT_FALSE(store().config().onboardingComplete);

  window = open(1);
  button(window, u"Later"_s)->click();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(window.isNull());
  EXPECT_FALSE(store().config().onboardingComplete);

  window = open(1);
  for (int page = 2; page < OnboardingWindow::kPages; ++page) QTest::keyClick(window->focusWidget(), Qt::Key_Space);
  QTest::mouseClick(button(window, u"Back"_s), Qt::LeftButton);
  EXPECT_EQ(window->page(), 2);
  button(window, u"Continue"_s)->click();
  EXPECT_FALSE(store().config().onboardingComplete);
  button(window, u"Done"_s)->click();
  EXPECT_TRUE(store().config().onboardingComplete);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(window.isNull());
}

TEST_F(OnboardingTest, WhatANewUserExpectsHoldsHoweverTheFirstRunIsLeft) {
  const auto press = [](QWidget* in, const QString& word) { button(in, word)->click(); };
  const struct {
    const char* name;
    std::function<void(OnboardingWindow&)> leave;
    bool completes;
  } cases[] = {
      {"all pages",
       [&](OnboardingWindow& window) {
         while (window.page() + 1 < OnboardingWindow::kPages) press(&window, u"Continue"_s);
         press(&window, u"Done"_s);
       },
       true},
      {"later", [&](OnboardingWindow& window) { press(&window, u"Later"_s); }, false},
      {"the window is closed", [](OnboardingWindow& window) { window.close(); }, false},
      {"the program ends", [](OnboardingWindow&) {}, false},
  };
  NoDesktop desktop(scheduler);
  for (const auto& each : cases) {
    const QTemporaryDir home;
    const auto start = [&] {
      StoreSetup setup = desktop.storeSetup();
      setup.storage = home.filePath(u"config.json"_s);
      auto started = std::make_unique<AppStore>(std::move(setup));
      chooseForNewUser(*started);
      return started;
    };
    std::unique_ptr<AppStore> first = start();
    UndoableEdits changes{*first, apps, undo};
    auto window = std::make_unique<OnboardingWindow>(*first, services(changes));
    window->setAttribute(Qt::WA_DeleteOnClose, false);
    window->present();
    each.leave(*window);
    window.reset();
    EXPECT_TRUE(first->config().liveApps && first->config().desktop.reserveSpace) << each.name;
    EXPECT_EQ(first->config().onboardingComplete, each.completes) << each.name;
    first->shutdown();

    std::unique_ptr<AppStore> second = start();
    EXPECT_TRUE(second->config().liveApps && second->config().appAppearance == u"auto"_s) << each.name;
    second->edit([](DockConfiguration& config) { config.liveApps = false; });
    second->shutdown();
    EXPECT_FALSE(start()->config().liveApps) << each.name << ": what the user chose since stays";
  }
}

TEST_F(OnboardingTest, ALayoutIsChosenByPointerOrArrowsAndHoldsAtOnce) {
  store().edit([](DockConfiguration& config) { config.layout = DockLayout::Fixed; });
  OnboardingWindow* window = open(1);
  EXPECT_TRUE(card(window, DockLayout::Fixed)->isChecked());
  QTest::mouseClick(card(window, DockLayout::Replace), Qt::LeftButton);
  EXPECT_EQ(store().config().layout, DockLayout::Replace);
  card(window, DockLayout::Replace)->setFocus(Qt::TabFocusReason);
  QTest::keyClick(window->focusWidget(), Qt::Key_Right);
  EXPECT_EQ(store().config().layout, DockLayout::ReplaceAutoHide);
  EXPECT_EQ(undo.size(), 1) << "changes that follow each other closely are one step";
  // The window follows what another part of the program changes.
  store().edit([](DockConfiguration& config) { config.layout = DockLayout::Swap; });
  for (const DockLayout layout : kDockLayouts) EXPECT_EQ(card(window, layout)->isChecked(), layout == DockLayout::Swap);
  delete window;
}

TEST_F(OnboardingTest, ADockThatIsAlwaysThereKeepsItsPlaceFree) {
  using enum DockLayout;
  const QString label = u"Reserve Dock Space"_s;
  const struct {
    DockLayout before, clicked;
    bool keeps;
  } cases[] = {{Swap, Replace, false}, {Swap, Fixed, true}, {Fixed, Floating, false}};
  for (const auto& each : cases) {
    store().edit([&each](DockConfiguration& config) {
      config.layout = each.before;
      config.desktop.reserveSpace = false;
    });
    const std::unique_ptr<OnboardingWindow> window(open(1));
    EXPECT_EQ(find<Switch>(window.get(), label) != nullptr, each.before == Fixed);
    card(window.get(), each.clicked)->click();
    EXPECT_EQ(store().config().desktop.reserveSpace, each.keeps) << static_cast<int>(each.before);
    auto* shown = find<Switch>(window.get(), label);
    ASSERT_EQ(shown != nullptr, each.clicked == Fixed);
    if (!shown) continue;
    EXPECT_TRUE(shown->isChecked());
    shown->click();
    EXPECT_FALSE(store().config().desktop.reserveSpace);
    button(window.get(), u"Continue"_s)->click();
    EXPECT_FALSE(store().config().desktop.reserveSpace) << "who turned it off has chosen";
  }
}

/// What pressing one of the buttons of a window led to.
struct Outcome {
  DockConfiguration config;
  qsizetype undos = 0;
  QStringList asked;
  QList<DockLayout> layouts;
  int page = -1;  ///< Of the first run; none when it was closed, or of another window.
  bool operator==(const Outcome&) const = default;
};

/// The ways to press a button, in the order of the outcomes that are compared.
const std::function<void(QAbstractButton&)> kInputMethods[] = {
    [](QAbstractButton& pressed) { QTest::mouseClick(&pressed, Qt::LeftButton); },
    [](QAbstractButton& pressed) { QTest::keyClick(&pressed, Qt::Key_Space); },
    [](QAbstractButton& pressed) { EXPECT_TRUE(test::pressOrToggle(pressed)); },
};

QList<QAbstractButton*> usable(const QWidget& window) {
  QList<QAbstractButton*> found;
  for (QAbstractButton* each : window.findChildren<QAbstractButton*>())
    if (each->isVisibleTo(&window) && each->isEnabled() && each->focusPolicy() != Qt::NoFocus) found << each;
  return found;
}

class OnboardingInput : public OnboardingTest {
 protected:
  using Opener = std::function<QWidget*(UndoableEdits& edits)>;

  Outcome outcome(const Opener& opener, qsizetype index, const std::function<void(QAbstractButton&)>& press) {
    const DockConfiguration before = store().config();
    commands.asked.clear();
    commands.layouts.clear();
    UndoStack steps;
    UndoableEdits changes{store(), apps, steps};
    const QPointer<QWidget> window = opener(changes);
    press(*usable(*window)[index]);
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    const auto* firstRun = qobject_cast<const OnboardingWindow*>(window.data());
    const Outcome made{store().config(), steps.size(), commands.asked, commands.layouts,
                       firstRun ? firstRun->page() : -1};
    delete window.data();
    store().edit([&before](DockConfiguration& config) { config = before; });
    return made;
  }
  /// Presses each button in each way; how many lead to something.
  qsizetype walk(const Opener& opener) {
    const std::unique_ptr<QWidget> window(opener(edits));
    EXPECT_EQ(test::outOfReach(*window), "");
    const qsizetype count = usable(*window).size();
    QList<Outcome> different;
    for (qsizetype i = 0; i < count; ++i) {
      SCOPED_TRACE(usable(*window)[i]->text().toStdString() + usable(*window)[i]->accessibleName().toStdString());
      const Outcome clicked = outcome(opener, i, kInputMethods[0]);
      EXPECT_EQ(outcome(opener, i, kInputMethods[1]), clicked) << "by keyboard";
      EXPECT_EQ(outcome(opener, i, kInputMethods[2]), clicked) << "by a screen reader";
      if (!different.contains(clicked)) different << clicked;
    }
    return different.size();
  }
};

TEST_F(OnboardingInput, EachControlOfTheFirstRunDoesTheSameByMouseKeyboardAndScreenReader) {
  store().edit([](DockConfiguration& config) {
    config.onboardingComplete = false;
    config.layout = DockLayout::Fixed;
  });
  // Later and Continue, before which are seven layouts, four switches, or Back and the library.
  const qsizetype leadSomewhere[] = {2, 10, 7, 3};
  for (int page = 0; page < OnboardingWindow::kPages; ++page) {
    SCOPED_TRACE(page);
    const Opener opener = [this, page](UndoableEdits& changes) {
      auto* window = new OnboardingWindow(store(), services(changes), page);
      window->present();
      QCoreApplication::processEvents();
      return window;
    };
    EXPECT_EQ(walk(opener), leadSomewhere[page]);
  }
}

TEST_F(OnboardingInput, SoDoesEachOfTheSmallWindow) {
  store().edit([](DockConfiguration& config) {
    config.profiles = {DockProfile::initial(), DockProfile::initial()};
    config.profiles[1].name = u"Work"_s;
    config.activeProfileID = config.profiles[0].id;
    config.layout = DockLayout::Fixed;
  });
  const Opener opener = [this](UndoableEdits&) {
    auto* panel = new MenuBarPanel(store(), commands, true);
    panel->show();
    QCoreApplication::processEvents();
    return panel;
  };
  EXPECT_EQ(walk(opener), 15) << "the dock, seven layouts, two profiles and five entries";
}

TEST_F(OnboardingTest, SaysWhatIsMissingAndWhyAlsoWhereTheDesktopAnswersLate) {
  OnboardingWindow* window = open(1);
  abilities.keys = Capability::no(u"This desktop keeps its keys."_s);
  abilities.systemDock = Capability::no(u"No dock was found."_s);
  abilities.commandBarKey = QString();
  abilities.keysAnswered = false;
  button(window, u"Continue"_s)->click();
  EXPECT_TRUE(says(window, u"No dock was found."_s));
  for (const QString& sentence : {u"This desktop keeps its keys."_s, u"hides and shows"_s, u"tarnwick --command-bar"_s})
    EXPECT_FALSE(says(window, sentence)) << qPrintable(sentence);
  abilities.keysAnswered = true;
  window->followKeys();
  for (const QString& sentence :
       {u"This desktop keeps its keys."_s, u"No dock was found."_s, u"tarnwick --command-bar"_s})
    EXPECT_TRUE(says(window, sentence)) << qPrintable(sentence);
  EXPECT_FALSE(says(window, u"Another app uses"_s)) << "nothing has the key";
  auto* login = find<Switch>(window, u"Launch at login"_s);
  ASSERT_NE(login, nullptr);
  login->click();
  EXPECT_TRUE(store().config().launchAtLogin);
  EXPECT_EQ(undo.size(), 1);
  store().edit([](DockConfiguration& config) { config.launchAtLogin = false; });
  EXPECT_FALSE(login->isChecked());
  delete window;
}

TEST_F(OnboardingTest, AsksAboutRunningAppsWhereWindowsAreTold) {
  constexpr int desktopPage = 2;
  const struct {
    Capability windows;
    bool set;
    bool asks;
  } rows[] = {{Capability::yes(), true, true},
              {Capability::yes(), false, true},
              {Capability::no(u"This desktop tells no windows."_s), true, false}};
  for (const auto& row : rows) {
    abilities.windows = row.windows;
    store().edit([&row](DockConfiguration& config) { config.liveApps = row.set; });
    const std::unique_ptr<OnboardingWindow> window(open(desktopPage));
    auto* asked = find<Switch>(window.get(), u"Show running apps"_s);
    ASSERT_EQ(asked != nullptr, row.asks);
    if (!asked) {
      EXPECT_TRUE(says(window.get(), row.windows.reason));
      continue;
    }
    EXPECT_EQ(asked->isChecked(), row.set) << "what is set, however often it is opened";
    asked->click();
    EXPECT_EQ(store().config().liveApps, !row.set);
    undo.undo();
    EXPECT_EQ(asked->isChecked(), row.set);
  }
}

TEST_F(OnboardingTest, TheClipboardHistoryComesWithTheWidgetThatRecords) {
  constexpr int desktopPage = 2;
  const QString added = u"add clipboard on "_s;
  for (const bool hasOne : {false, true}) {
    store().edit([hasOne](DockConfiguration& config) {
      config.clipboardEnabled = false;
      for (DockProfile& profile : config.profiles) {
        profile.widgets.removeIf([](const DockWidget& each) { return each.kind == kind::clipboard; });
        if (hasOne) profile.widgets.append({QUuid::createUuid(), QString(kind::clipboard), {}, {}});
      }
    });
    commands.asked.clear();
    const std::unique_ptr<OnboardingWindow> window(open(desktopPage));
    auto* history = find<Switch>(window.get(), u"Clipboard history"_s);
    ASSERT_TRUE(history);
    history->click();
    EXPECT_TRUE(store().config().clipboardEnabled);
    EXPECT_EQ(commands.asked.contains(added), !hasOne);
    commands.asked.clear();
    history->click();
    EXPECT_FALSE(store().config().clipboardEnabled || commands.asked.contains(added));
  }
}

TEST(LayoutPicture, MovesOnlyWhileItIsSeenAndWantedAndComesToRest) {
  LayoutPicture picture(DockLayout::Swap, LayoutPicture::kSmall);
  auto made = std::make_unique<test::TestFrameClock>();
  test::TestFrameClock& clock = *made;
  picture.setClock(std::move(made));
  picture.setMoving(true);
  EXPECT_FALSE(picture.isMoving());
  picture.show();
  EXPECT_TRUE(picture.isMoving());
  picture.hide();
  EXPECT_FALSE(picture.isMoving());
  picture.show();
  picture.setMoving(false);
  EXPECT_FALSE(picture.isMoving());
  picture.setReduceMotion(true);
  picture.setMoving(true);
  EXPECT_FALSE(picture.isMoving());
  picture.setReduceMotion(false);
  picture.setMoving(false);
  picture.setMoving(true);
  const QImage still = picture.grab().toImage();
  clock.beat(0.2);
  EXPECT_NE(picture.grab().toImage(), still);
  clock.beat(5);
  EXPECT_TRUE(picture.isMoving());
  clock.beat(5);
  EXPECT_FALSE(picture.isMoving());
  EXPECT_FALSE(clock.isRunning()) << "nothing beats for a picture that rests";
  EXPECT_EQ(picture.grab().toImage(), still);
}

TEST(LayoutPicture, ShowsAFixedDockAtItsEdgeAndLeavesItThere) {
  LayoutPicture picture(DockLayout::Fixed, LayoutPicture::kSmall);
  picture.setClock(std::make_unique<test::TestFrameClock>());
  picture.show();
  // How dark the picture is in the middle of where a dock can be.
  const auto darkness = [&](double y) {
    return 255 - qGray(picture.grab().toImage().pixel(picture.width() / 2, int(y * picture.height() / 76)));
  };
  for (const bool atTop : {false, true, false}) {
    picture.setAtTop(atTop);
    const double here = atTop ? 9.6 : 62.1;  // In the dock's own ground, above its tiles.
    EXPECT_GT(darkness(here), 200) << atTop;
    picture.setMoving(true);
    EXPECT_FALSE(picture.isMoving()) << atTop;
    EXPECT_GT(darkness(here), 200) << atTop;
    picture.setMoving(false);
  }
  picture.setAtTop(true);
  const QImage top = picture.grab().toImage();
  picture.setAtTop(false);
  EXPECT_NE(picture.grab().toImage(), top);
}

TEST_F(OnboardingTest, ThePanelOfTheStatusItemShowsTheDockAndLeadsOn) {
  store().edit([](DockConfiguration& config) {
    config.profiles = {DockProfile::initial(), DockProfile::initial()};
    config.profiles[1].name = u"Work"_s;
    config.activeProfileID = config.profiles[0].id;
  });
  MenuBarPanel panel(store(), commands, false);
  QSignalSpy closes(&panel, &MenuBarPanel::closeRequested);
  panel.show();
  for (const QString& word : {u"Work"_s, u"Settings…"_s}) {
    const QWidget* row = button(&panel, word);
    const int left = row->mapTo(&panel, QPoint()).x();
    EXPECT_EQ(left, panel.width() - left - row->width()) << "a row is not in line with its panel";
  }
  find<Switch>(&panel, u"Show Dock"_s)->click();
  EXPECT_EQ(commands.asked, QStringList{u"toggle"_s});
  button(&panel, u"Work"_s)->click();
  EXPECT_EQ(store().profile().name, u"Work"_s);
  QTest::mouseClick(card(&panel, DockLayout::Floating), Qt::LeftButton);
  EXPECT_EQ(commands.layouts, QList<DockLayout>{DockLayout::Floating});
  EXPECT_EQ(closes.count(), 0);
  button(&panel, u"Settings…"_s)->click();
  EXPECT_EQ(commands.asked.last(), u"settings"_s);
  EXPECT_EQ(closes.count(), 1);

  const int without = panel.sizeHint().height();
  store().setError(u"Something went wrong."_s);
  EXPECT_TRUE(says(&panel, u"Something went wrong."_s));
  EXPECT_GT(panel.sizeHint().height(), without);
  button(&panel, u"Dismiss"_s)->click();
  EXPECT_TRUE(store().error().isEmpty());
  EXPECT_EQ(panel.sizeHint().height(), without);
}

TEST_F(OnboardingTest, HelpSpeaksOfTheCommandBarWhereThereIsOne) {
  for (const std::optional<QString>& key :
       {std::optional<QString>(), std::optional(u""_s), std::optional(u"Alt+Space"_s)}) {
    SCOPED_TRACE(key ? qPrintable(*key) : "none");
    abilities.commandBarKey = key;
    HelpWindow help(store(), abilities);
    help.present();
    for (const QString& text : {u"tarnwick --command-bar"_s, u"Ctrl+R"_s, u"In the command bar"_s})
      EXPECT_EQ(says(&help, text), key.has_value()) << qPrintable(text);
  }
}

}  // namespace
}  // namespace tarnwick
