#include "windows/ReservationService.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace tarnwick {

/// What the thread works with; made there, at the first piece of work.
class ReservationService::Keeping {
 public:
  explicit Keeping(const Setup& setup) : setup_(setup) {}

  WindowKeeper::Plan plan(const QList<ReservedSpace>& spaces) { return keeper().plan(spaces); }
  Outcome carryOut(const QList<WindowKeeper::Move>& windows) { return outcome(keeper().carryOut(windows)); }
  Outcome restore() { return outcome(keeper().restore()); }

 private:
  WindowKeeper& keeper() {
    if (!keeper_) {
      frames_ = setup_.frames();
      journal_.emplace(setup_.directory, kPatience);
      keeper_.emplace(*frames_, *journal_, setup_.launchOf, QCoreApplication::applicationPid());
    }
    return *keeper_;
  }
  Outcome outcome(const QString& message) const { return {message, !journal_->records().isEmpty()}; }

  const Setup& setup_;
  std::unique_ptr<WindowFrames> frames_;
  std::optional<WindowReservationJournal> journal_;
  std::optional<WindowKeeper> keeper_;
};

ReservationService::ReservationService(Setup setup)
    : setup_(std::move(setup)), keeping_(std::make_shared<Keeping>(setup_)) {}

ReservationService::~ReservationService() = default;

void ReservationService::reserve(const QList<ReservingDock>& docks) {
  if (!setup_.windows.moves()) return;
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
  hasBegun_ = true;
  QList<ReservedSpace> spaces;
  for (const ReservingDock& dock : docks_) spaces.append(setup_.inPixels(dock));
  work_.start([keeping = keeping_, spaces] { return keeping->plan(spaces); },
              [this](const WindowKeeper::Plan& plan) { carryOut(plan); });
}

void ReservationService::carryOut(const WindowKeeper::Plan& plan) {
  say(plan.message);
  if (plan.windows.isEmpty()) return;
  // Somebody stands by before the first window moves, and until the last one is back.
  setup_.guard(true);
  ++underWay_;
  work_.start([keeping = keeping_, windows = plan.windows] { return keeping->carryOut(windows); },
              [this](const Outcome& outcome) { ended(outcome); });
}

void ReservationService::ended(const Outcome& outcome) {
  --underWay_;
  if (!outcome.isMoved && underWay_ == 0) setup_.guard(false);
  say(outcome.message);
}

void ReservationService::restore() {
  settling_.reset();
  last_ = {};
  const QFileInfo journal(setup_.directory + u'/' + WindowReservationJournal::kFileName);
  if (!hasBegun_ && journal.size() <= WindowReservationJournal::kEmptyBytes) return;
  ++underWay_;
  work_.start([keeping = keeping_] { return keeping->restore(); }, [this](const Outcome& outcome) { ended(outcome); });
}

void ReservationService::finish() { work_.finish(); }

/// The same is not said again and again.
void ReservationService::say(const QString& message) {
  if (std::exchange(said_, message) != message && !message.isEmpty() && failed) failed(message);
}

}  // namespace tarnwick
