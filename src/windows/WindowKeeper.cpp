#include "windows/WindowKeeper.h"

#include <QScopeGuard>
#include <algorithm>
#include <cstdlib>

#include "base/DomainError.h"

namespace tarnwick {
namespace {

/// The wall clock, from which the kernel counts back to the start, may have been set by whole seconds since.
bool isSameLaunch(qint64 now, qint64 recorded) {
  constexpr qint64 kSecond = 100;
  constexpr qint64 kMostSet = 60 * kSecond;
  return std::abs(now - recorded) <= kMostSet && (now - recorded) % kSecond == 0;
}

}  // namespace

WindowKeeper::WindowKeeper(WindowFrames& frames, WindowReservationJournal& journal, LaunchOf launchOf, qint64 self,
                           Now now)
    : frames_(frames), journal_(journal), launchOf_(std::move(launchOf)), self_(self), now_(std::move(now)) {}

WindowKeeper::Plan WindowKeeper::plan(const QList<ReservedSpace>& spaces) {
  Plan plan;
  if (!frames_.capability()) return plan;
  if (recoveryPending_) plan.message = restore();
  plan.windows = inTheWay(spaces);
  if (plan.windows.isEmpty()) frames_.rest();
  return plan;
}

QList<WindowKeeper::Move> WindowKeeper::inTheWay(const QList<ReservedSpace>& spaces) {
  QList<Move> found;
  const auto windows = frames_.all(kReservePatience);
  if (!windows) return found;
  const auto front = std::ranges::find(*windows, true, &WindowFrames::Window::active);
  if (front == windows->end() || front->pid <= 0 || front->pid == self_) return found;
  for (const WindowFrames::Window& window : *windows) {
    const bool isMoved = isToComeBack(window, spaces);
    if ((window.pid != front->pid && !isMoved) || window.pid <= 0 || window.pid == self_ || window.number == 0)
      continue;
    if (window.minimised || window.maximised || window.fullscreen || isGivenUp(window.number, window.frame)) continue;
    QRectF frame = window.frame;
    for (const ReservedSpace& space : spaces) {
      const auto clear = space.clear(frame);
      const QRectF accepted = clear ? frames_.accepted(window.number, *clear) : QRectF();
      if (!accepted.isEmpty()) frame = accepted;
    }
    const auto launch = frame != window.frame || isMoved ? launchOf_(window.pid) : std::nullopt;
    if (!launch) continue;
    const QRectF& original = isMoved ? window.before : window.frame;
    found.append(Move{{window.pid, *launch, window.number, original, frame}, window.frame});
  }
  return found;
}

/// A window that the window manager moved off the place that a dock takes comes back with the others. That needs to be
/// written down once.
bool WindowKeeper::isToComeBack(const WindowFrames::Window& window, const QList<ReservedSpace>& spaces) const {
  // A window manager moves it up or down.
  const bool isSideways = window.before.x() != window.frame.x() || window.before.width() != window.frame.width();
  if (window.before.isEmpty() || isSideways || WindowReservation::near(window.before, window.frame)) return false;
  const bool isKnown = std::ranges::any_of(journal_.records(), [&window](const WindowReservation& record) {
    return record.number == window.number && WindowReservation::near(record.original, window.before);
  });
  return !isKnown && std::ranges::any_of(spaces, [&window](const ReservedSpace& space) {
    const QRectF taken(space.visible.x(), space.dock.y(), space.visible.width(), space.dock.height());
    return window.before.intersects(taken);
  });
}

QString WindowKeeper::carryOut(const QList<Move>& windows) {
  if (windows.isEmpty()) return {};
  const auto rest = qScopeGuard([this] { frames_.rest(); });
  QList<WindowReservation> records;
  for (const Move& each : windows) records.append(each.record);
  try {
    // All at once: what costs is to wait for the disk.
    journal_.prepare(records);
  } catch (const DomainError& failure) {
    return tr("Could not preserve window recovery data: %1").arg(failure.message());
  }
  for (const auto& [record, from] : windows) {
    if (from == record.adjusted) continue;
    const auto before = frames_.frame(record.number, kReservePatience);
    if (!before || !WindowReservation::near(*before, from)) continue;
    moved_[record.number] = {from, now_(), false};
    if (move(record.number, record.adjusted, kReservePatience)) continue;
    frames_.setFrame(record.number, *before, kReservePatience);
    moved_[record.number].isGivenUp = true;
  }
  return {};
}

QString WindowKeeper::reserve(const QList<ReservedSpace>& spaces) {
  const Plan wanted = plan(spaces);
  const QString failure = carryOut(wanted.windows);
  return failure.isEmpty() ? wanted.message : failure;
}

/// A window that goes back where it was by itself would be moved for ever.
bool WindowKeeper::isGivenUp(quint32 number, const QRectF& frame) {
  const auto moved = moved_.find(number);
  if (moved == moved_.end() || !WindowReservation::near(moved->from, frame)) return false;
  if (now_() - moved->when < kOwnWill) moved->isGivenUp = true;
  return moved->isGivenUp;
}

bool WindowKeeper::move(quint32 number, const QRectF& to, std::chrono::milliseconds patience) {
  if (!frames_.setFrame(number, to, patience)) return false;
  const auto now = frames_.frame(number, patience);
  return now && WindowReservation::near(*now, to);
}

QString WindowKeeper::restore() {
  if (!frames_.capability()) return {};
  recoveryPending_ = false;
  moved_.clear();
  const auto rest = qScopeGuard([this] { frames_.rest(); });
  try {
    std::optional<std::optional<QList<WindowFrames::Window>>> windows;
    journal_.recover(
        [&](const WindowReservation& record) {
          if (!windows) windows = frames_.all(kRestorePatience);
          return stateOf(record, *windows);
        },
        [this](const WindowReservation& record) { return move(record.number, record.original, kRestorePatience); });
  } catch (const DomainError& failure) {
    return tr("Window recovery will be retried: %1").arg(failure.message());
  }
  return {};
}

ReservationWindowState WindowKeeper::stateOf(const WindowReservation& record,
                                             const std::optional<QList<WindowFrames::Window>>& windows) {
  using Known = ReservationWindowState::Known;
  const auto launch = launchOf_(record.pid);
  if (!launch || !isSameLaunch(*launch, record.launch)) return {Known::Gone, {}};
  if (!windows) return {Known::Unavailable, {}};
  const auto window = std::ranges::find_if(*windows, [&record](const WindowFrames::Window& each) {
    return each.number == record.number && each.pid == record.pid;
  });
  if (window != windows->end()) return {Known::Frame, window->frame};
  // One that is there all the same may be on its way into the list.
  return {frames_.frame(record.number, kRestorePatience) ? Known::Unavailable : Known::Gone, {}};
}

}  // namespace tarnwick
