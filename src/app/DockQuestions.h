#pragma once

#include <QObject>
#include <QUuid>
#include <functional>

#include "app/LiveDocks.h"
#include "apps/TrustedEntries.h"
#include "base/Scheduler.h"
#include "config/KeptSettings.h"
#include "dock/DockController.h"
#include "views/panels/QuestionPane.h"

namespace tarnwick {

class DockMenuHost;
class PanelHost;

/// Asks something of the user beside a dock, which may have to come out for it. Main thread only.
class DockQuestions final : public QObject {
  Q_OBJECT
 public:
  /// All must outlive it.
  DockQuestions(AppStore& store, DockController& dock, const LiveDocks& docks, DockMenuHost& menus, PanelHost& panels);

  /// Beside the dock of `display`, or the first one where it has none, at the tile of a widget there. `answer` is
  /// called once with whether it was accepted; it is refused where no dock comes, and when another question comes
  /// first. One that is withdrawn has no answer.
  void ask(const Question& question, const QString& display, std::function<void(bool accepted)> answer,
           const QUuid& widget = {});
  void withdraw();

  /// Whether a desktop entry from outside the folders of applications may run, with what would run.
  static Question aboutEntry(const ForeignEntry& entry, const QString& action);
  /// Whether settings that were kept aside take the place of the present ones, with what is left out of them.
  static Question aboutKept(const KeptSettings& kept);
  /// Whether what is in the trash is deleted.
  static Question aboutTrash();

 private:
  void look(int times);

  AppStore& store_;
  DockController& dock_;
  const LiveDocks& docks_;
  DockMenuHost& menus_;
  PanelHost& panels_;
  struct {
    Question question;
    QString display;
    std::function<void(bool accepted)> answer;
    QUuid widget;
  } waiting_;               ///< For a dock to be asked beside.
  JobHandle dockComesOut_;  ///< Looks for it again.
};

}  // namespace tarnwick
