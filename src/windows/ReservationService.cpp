#include "windows/ReservationService.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace tarnwick {

/// What the thread works with; made there, at the first piece of work.
class ReservationService::Keeping {
 public:
  explicit Keeping(const Setup& setup) : setup_(setup) {}

  Outcome reserve(const QList<ReservedSpace>& spaces) { return outcome(keeper().reserve(spaces)); }
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
  start([spaces](Keeping& keeping) { return keeping.reserve(spaces); });
}

void ReservationService::start(const std::function<Outcome(Keeping&)>& work) {
  // Somebody stands by before the first window moves, and until the last one is back.
  setup_.guard(true);
  ++underWay_;
  work_.start([keeping = keeping_, work] { return work(*keeping); },
              [this](const Outcome& outcome) {
                --underWay_;
                if (!outcome.isMoved && underWay_ == 0) setup_.guard(false);
                say(outcome.message);
              });
}

void ReservationService::restore() {
  settling_.reset();
  last_ = {};
  const QString journal = setup_.directory + u'/' + WindowReservationJournal::kFileName;
  if (!hasBegun_ && !QFileInfo::exists(journal)) return;
  start([](Keeping& keeping) { return keeping.restore(); });
}

void ReservationService::finish() { work_.finish(); }

/// The same is not said again and again.
void ReservationService::say(const QString& message) {
  if (std::exchange(said_, message) != message && !message.isEmpty() && failed) failed(message);
}

}  // namespace tarnwick
