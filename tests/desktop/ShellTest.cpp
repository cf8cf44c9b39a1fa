#include "desktop/ShellTest.h"

#include <QFileInfo>

#include "app/DockPresenter.h"
#include "config/Persistence.h"
#include "dock/DockContentContainer.h"
#include "support/VirtualDisplay.h"
#include "views/dock/LiveDock.h"

namespace tarnwick::testing {

ShellTest::ShellTest() { desk.moveTo(desk.away()); }

ShellTest::~ShellTest() {
  end();
  desk.moveTo(desk.away());
  desk.showOne();
}

void ShellTest::start(const DockConfiguration& given) {
  DockConfiguration config = given;
  config.onboardingComplete = true;  // No window covers the dock or takes the keyboard.
  desk.moveTo(desk.away());
  Persistence::save(config, file());
  adapters = std::make_unique<Adapters>(time, LaunchEnvironment::ofProcess(), QFileInfo(file()).path(), certificates,
                                        addresses);
  StoreSetup store = adapters->storeSetup();
  store.storage = file();
  DelegateSetup setup = adapters->delegateSetup();
  setup.guards = false;
  setup.replaces = replaces;
  zones = &adapters->services().zones;
  delegate = std::make_unique<AppDelegate>(std::move(store), adapters->services(), std::move(setup));
  delegate->didFinishLaunching();
  desk.settle();
}

void ShellTest::startShown(const DockConfiguration& config) {
  start(config);
  ASSERT_TRUE(comesTrue([&] { return takesClicks(glass().center()); }));
}

void ShellTest::end() {
  delegate.reset();
  adapters.reset();
}

DockView& ShellTest::view() { return static_cast<LiveDock*>(dock().content(id()))->view(); }

QRect ShellTest::tile(qsizetype widget) {
  const QRectF place = view().tileRect(store().widgets()[widget].id);
  return place.translated(dock().contentOrigin(id())).toRect();
}

QRect ShellTest::glass() { return view().glassRect().translated(dock().contentOrigin(id())).toRect(); }

bool ShellTest::takesClicks(QPoint place) { return desk.takesClicks(place, *dock().content(id())->window()); }

bool ShellTest::isIn() {
  return static_cast<DockContentContainer*>(dock().content(id())->parentWidget())->progress() == 1;
}

bool ShellTest::isOpen() {
  return dock().hasActivePanel(id()) && (!view().isHeld() || delegate->presenter().panelIsOpen(id()));
}

bool ShellTest::comesTrue(const std::function<bool()>& predicate) { return VirtualDisplay::waitUntil(predicate); }

bool ShellTest::inTime(const std::function<bool()>& predicate) {
  return VirtualDisplay::waitUntil([&] {
    time.advance(0.05);
    return predicate();
  });
}

void ShellTest::moveAndCount(QPoint place, bool counts) {
  const qsizetype before = time.waiting();
  desk.moveTo(place);
  EXPECT_TRUE(comesTrue([&] { return counts ? time.waiting() > before : time.waiting() < before; }));
}

QString ShellTest::idOn(int display) {
  for (const QString& each : dock().displays()) {
    if (QRectF(desk.display(display)).contains(dock().frame(each).center())) return each;
  }
  return {};
}

DockConfiguration twoProfiles() {
  DockConfiguration config;
  config.profiles.append(DockProfile::initial());
  config.profiles[1].id = QUuid::createUuid();
  config.profiles[1].name = QStringLiteral("Work");
  for (DockWidget& widget : config.profiles[1].widgets) widget.id = QUuid::createUuid();
  return config;
}

}  // namespace tarnwick::testing
