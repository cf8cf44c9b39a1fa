#pragma once

#include <QObject>

namespace tarnwick {

class AppStore;
class RunningApplications;

/// Has the running applications followed, which has its price, only while something shows them. Main thread only.
class RunningAppsWatch final : public QObject {
  Q_OBJECT
 public:
  /// Both must outlive it.
  RunningAppsWatch(AppStore& store, RunningApplications& apps);

  /// Looks whether something shows them; a change of the layout does the same.
  void follow();

 private:
  AppStore& store_;
  RunningApplications& apps_;
};

}  // namespace tarnwick
