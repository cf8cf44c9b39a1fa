#include "views/tiles/RemoteState.h"

#include <QTimeZone>

#include "services/RemoteRules.h"
#include "views/theme/Glass.h"
#include "views/tiles/TileCanvas.h"
#include "widgets/ClockWords.h"
#include "widgets/FileWords.h"
#include "widgets/TileWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 kMinute = 60;
constexpr double kLoadingHeight = 2;
constexpr double kLoadingMiddle = 59.5;
constexpr double kFailureDot = 3.5;
constexpr double kFailureInset = 15;

bool isPaused(const RemoteReading& reading, const QDateTime& now) {
  return reading.pausedUntil && *reading.pausedUntil > now;
}

/// Of a value that was fetched a moment ago it says nothing.
bool showsAge(const RemoteReading& reading, const QDateTime& now) {
  if (!reading.goodAt || !reading.value.value || reading.goodAt->secsTo(now) < kMinute) return false;
  return reading.value.failed || reading.waitsFor || isPaused(reading, now) ||
         reading.goodAt->secsTo(now) > RemoteRules::kStale;
}

}  // namespace

RemoteState RemoteState::of(const RemoteReading& reading, const TileSources& sources) {
  RemoteState state;
  state.hasFailed = reading.value.failed;
  state.isLoading = reading.isLoading;
  if (state.hasFailed) state.problem = reading.value.subtitle;
  if (showsAge(reading, sources.now)) state.age = agoWord(*reading.goodAt, sources.now, sources.locale);
  if (!isPaused(reading, sources.now)) {
    state.isWaiting = reading.waitsFor.has_value();
    if (state.isWaiting && state.problem.isEmpty()) state.problem = RemoteRules::sentenceOf(*reading.waitsFor);
    return state;
  }
  const QTime time = reading.pausedUntil->toTimeZone(sources.now.timeZone()).time();
  state.until = ClockWords::time(time, sources.locale, sources.use24Hour).full();
  state.pause = TileWords::tr("Paused until %1").arg(state.until);
  // A service that gave the time has it in its sentence, as the user's language writes it.
  const QString plain = sources.locale.toString(time, QLocale::ShortFormat);
  if (state.problem.contains(state.until) || state.problem.contains(plain)) return state;
  const QString pause = TileWords::tr("Paused until %1.").arg(state.until);
  state.problem = state.problem.isEmpty() ? pause : state.problem + u' ' + pause;
  return state;
}

std::optional<RemoteReading> remoteOf(const TileSources& sources, const DockWidget& widget) {
  if (auto own = sources.remote.of(widget.id)) return own;
  const auto example = sources.remoteExamples.constFind(widget.kind);
  return example == sources.remoteExamples.constEnd() ? std::nullopt : std::optional(*example);
}

void paintLoading(TileCanvas& canvas) {
  const double width = canvas.width() - theme::kTextLeft - theme::kTextRight;
  const QRectF track(theme::kTextLeft, kLoadingMiddle - kLoadingHeight / 2, width, kLoadingHeight);
  drawRounded(canvas.painter(), track, kLoadingHeight / 2, canvas.colors().track);
  const double third = width / 3;
  const QRectF part(track.left() + third * 2 * canvas.loading(), track.top(), third, kLoadingHeight);
  drawRounded(canvas.painter(), part, kLoadingHeight / 2, canvas.accent());
}

void paintFailure(TileCanvas& canvas) {
  QPainter& painter = canvas.painter();
  painter.setPen(Qt::NoPen);
  painter.setBrush(canvas.colors().accent(Accent::Red));
  painter.drawEllipse(QPointF(canvas.width() - kFailureInset, kFailureInset), kFailureDot, kFailureDot);
}

}  // namespace tarnwick
