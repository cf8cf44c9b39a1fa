#pragma once

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <functional>
#include <memory>

#include "app/Adapters.h"
#include "app/AppDelegate.h"
#include "desktop/TestDesk.h"
#include "support/TestScheduler.h"
#include "views/dock/DockView.h"

namespace tarnwick::testing {

/// The whole program within the test's process, on the real desktop, with a clock that the test sets.
class ShellTest : public ::testing::Test {
 protected:
  ShellTest();
  ~ShellTest() override;

  QString file() const { return folder.filePath(QStringLiteral("Tarnwick/config.json")); }
  void start(const DockConfiguration& config);
  /// The same, and waits until the dock can be clicked on.
  void startShown(const DockConfiguration& config);
  void end();

  AppStore& store() { return delegate->store(); }
  DockController& dock() { return delegate->dock(); }
  QString id() { return dock().displays().value(0); }
  DockView& view();
  QRect tile(qsizetype widget);
  QRect glass();
  /// A place of the dock on the first display, halfway between its edge and what it leaves.
  QPoint middle() { return dock().frame(id()).center().toPoint(); }
  bool takesClicks(QPoint place);
  bool isPainted(QPoint place) { return desk.isPainted(place); }
  bool comesTrue(const std::function<bool()>& predicate);
  /// Lets the clock run until something is so.
  bool inTime(const std::function<bool()>& predicate);
  /// Whether the dock has come all the way.
  bool isIn();
  /// Whether a panel or a menu of the dock is open. That a button is down on the dock, which also holds it, is not
  /// enough: what it opens comes when it goes up, and by the clock of that moment.
  bool isOpen();
  /// Moves the pointer, and waits until that has set a delay going or stopped it.
  void moveAndCount(QPoint place, bool counts);
  /// The identity of the dock on a display; empty while there is none.
  QString idOn(int display);

  /// Certificates that the next start trusts besides those of the system, as PEM.
  QByteArray certificates;
  /// Where services are, for the next start.
  BaseAddresses addresses = BaseAddresses::shipped();
  /// Whether the next start takes the place of another run.
  bool replaces = false;
  TestDesk& desk = TestDesk::current();
  QTemporaryDir folder;
  test::TestScheduler time;
  std::unique_ptr<Adapters> adapters;
  std::unique_ptr<AppDelegate> delegate;
  ZoneSensor* zones = nullptr;
};

DockConfiguration twoProfiles();

}  // namespace tarnwick::testing
