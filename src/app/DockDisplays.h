#pragma once

#include <QObject>

#include "base/Scheduler.h"

namespace tarnwick {

class AppStore;
class DockController;
class Screens;

/// Reports to the store which displays have a dock, each time once the docks stand. Main thread only.
class DockDisplays final : public QObject {
  Q_OBJECT
 public:
  /// All must outlive it.
  DockDisplays(AppStore& store, const Screens& screens, const DockController& dock);

  /// Nothing is reported any more.
  void stop();

 private:
  void look();

  AppStore& store_;
  const DockController& dock_;
  JobHandle docksStand_;
  bool stopped_ = false;
};

}  // namespace tarnwick
