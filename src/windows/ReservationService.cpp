#include "windows/ReservationService.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace tarnwick {

/// What the thread works with; made there, at the first piece of work.
class ReservationService::Keeping {
 public:
  Keeping(const Setup& setup, std::function<void(bool)> guard) : setup_(setup), guard_(std::move(guard)) {}

  WindowKeeper& keeper() {
    if (!keeper_) {
      frames_ = setup_.frames();
      journal_.emplace(setup_.directory, kPatience);
      journal_->written = [this](const QString&) { standBy(true); };
      journal_->emptied = [this] { standBy(false); };
      keeper_.emplace(*frames_, *journal_, setup_.launchOf, QCoreApplication::applicationPid());
      if (!journal_->records().isEmpty()) standBy(true);
    }
    return *keeper_;
  }

 private:
  void standBy(bool needed) {
    if (std::exchange(standsBy_, needed) != needed) guard_(needed);
  }

  const Setup& setup_;
  std::function<void(bool)> guard_;
  bool standsBy_ = false;
  std::unique_ptr<WindowFrames> frames_;
  std::optional<WindowReservationJournal> journal_;
  std::optional<WindowKeeper> keeper_;
};

ReservationService::ReservationService(Setup setup)
    : setup_(std::move(setup)), keeping_(std::make_shared<Keeping>(setup_, [this](bool needed) {
        QMetaObject::invokeMethod(
            this, [this, needed] { setup_.guard(needed); }, Qt::QueuedConnection);
      })) {}

ReservationService::~ReservationService() = default;

void ReservationService::reserve(const QList<ReservingDock>& docks) {
  docks_ = docks;
  if (settling_ || situation(docks) == last_) return;
  settling_ = setup_.scheduler.after(kSettle, [this] { begin(); });
}

ReservationService::Situation ReservationService::situation(const QList<ReservingDock>& docks) const {
  Situation now{docks, 0, {}};
  const QList<ClientWindow> windows = setup_.windows.all();
  for (const ClientWindow& window : windows)
    if (window.active) now.front = window.pid;
  for (const ClientWindow& window : windows)
    if (window.pid == now.front && !window.minimised && !window.maximised && !window.fullscreen)
      now.windows.append(window.id);
  return now;
}

void ReservationService::begin() {
  settling_.reset();
  last_ = situation(docks_);
  if (last_.front <= 0 || last_.windows.isEmpty()) return;
  QList<ReservedSpace> spaces;
  hasBegun_ = true;
  for (const ReservingDock& dock : docks_) spaces.append(setup_.inPixels(dock));
  work_.start([keeping = keeping_, spaces] { return keeping->keeper().reserve(spaces); },
              [this](const QString& message) { say(message); });
}

void ReservationService::restore() {
  settling_.reset();
  last_ = {};
  const QString journal = setup_.directory + u'/' + WindowReservationJournal::kFileName;
  if (!hasBegun_ && !QFileInfo::exists(journal)) return;
  work_.start([keeping = keeping_] { return keeping->keeper().restore(); },
              [this](const QString& message) { say(message); });
}

void ReservationService::finish() {
  work_.finish();
  QCoreApplication::sendPostedEvents(this, QEvent::MetaCall);
}

/// The same is not said again and again.
void ReservationService::say(const QString& message) {
  if (std::exchange(said_, message) != message && !message.isEmpty() && failed) failed(message);
}

}  // namespace tarnwick
