#include "views/families/services/ServiceTile.h"

#include <QTimeZone>
#include <algorithm>
#include <cmath>

#include "base/LocalFigures.h"
#include "base/Text.h"
#include "services/RemoteRules.h"
#include "services/UsageWords.h"
#include "views/tiles/GenericTile.h"
#include "widgets/TileWords.h"
#include "widgets/catalog/Kinds.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// What a tile has space for.
constexpr qsizetype kMostFigures = 3;
constexpr qsizetype kMostTileRows = 3;
constexpr qsizetype kMostBars = 2;
/// A curve of more cannot be told from one of these.
constexpr qsizetype kMostValues = 400;
/// Sums and differences of what is below it are numbers.
constexpr double kLargest = 1e150;

/// Space on a gauge is for the service's name alone.
QString gaugeName(const TileRequest& request) {
  if (!request.widget.title.isEmpty()) return request.widget.title;
  return request.definition.id == kind::claudePlanUsageGauge ? TileWords::tr("Claude") : TileWords::tr("Codex");
}

QString countdownOf(const UsageWindow& window, const TileSources& sources) {
  const QString left = UsageWords::countdown(window, sources.now, sources.locale);
  return left.isEmpty() ? QString() : TileWords::tr("%1 left").arg(left);
}

/// With its date as clocks show it here.
UsageWindow inZoneOf(UsageWindow window, const TileSources& sources) {
  if (window.resetsAt) window.resetsAt = window.resetsAt->toTimeZone(sources.now.timeZone());
  return window;
}

UsageBar barOf(const UsageWindow& window, const QLocale& locale) {
  return {UsageWords::shortLabel(window), LocalFigures::of(UsageWords::percent(window), locale),
          UsageWords::used(window) / 100, UsageWords::isAlarming(window)};
}

/// A share of a hundred that is the headline of an address of the user's own.
std::optional<UsageBar> headlineBar(const TileRequest& request, const QString& value) {
  if (!request.widget.options.value(option::connectionMode).isEmpty()) return std::nullopt;
  QString digits = value.trimmed();
  if (digits.endsWith(u'%')) digits.chop(1);
  const std::optional<double> share = Text::number(digits.trimmed());
  if (!share || *share < 0 || *share > 100) return std::nullopt;
  return barOf({{}, {}, *share, {}, {}}, request.sources.locale);
}

/// What the service gave, as far as this shape can show it.
ServiceShape shapeOf(ServiceShape wish, const ServiceContent& content) {
  if (wish == ServiceShape::Gauge && !content.bars.isEmpty()) return wish;
  // Only the plain tile has space to say how old it is.
  if (!content.state.remark().isEmpty() || content.state.hasFailed) return ServiceShape::Value;
  switch (wish) {
    case ServiceShape::Line:
    case ServiceShape::Bars:
    case ServiceShape::Squares:
      if (content.numbers.size() > 1) return wish;
      break;
    case ServiceShape::Figures:
      if (content.figures.size() > 1) return wish;
      break;
    case ServiceShape::List:
      if (!content.rows.isEmpty()) return wish;
      break;
    case ServiceShape::Work:
      return wish;
    default:
      break;
  }
  return content.bars.isEmpty() || wish == ServiceShape::Gauge ? ServiceShape::Value : ServiceShape::Windows;
}

QStringList captionsOf(const RemoteReading& reading, const RemoteState& state, const QString& name) {
  if (!state.pause.isEmpty()) return {state.pause, TileWords::tr("Until %1").arg(state.until)};
  if (state.hasFailed) {
    if (state.age.isEmpty()) return {state.problem};
    return {TileWords::tr("Last value, %1").arg(state.age), state.age};
  }
  const QString label = reading.value.subtitle.isEmpty() ? name : reading.value.subtitle;
  // Where a service says of what and of how many days, the first says most.
  if (state.age.isEmpty()) return {label, label.section(u" · "_s, 0, 0)};
  return {label + u" · "_s + state.age, state.age};
}

/// The words for a screen reader and the tip, where nothing is left out.
QString spokenOf(const ServiceContent& content, const RemoteReading& reading, const TileSources& sources) {
  QStringList parts;
  const auto add = [&parts](const QString& part) {
    if (!part.isEmpty() && !parts.contains(part)) parts << part;
  };
  if (content.shape == ServiceShape::List) {
    for (const ServiceMetric& row : content.rows) add((row.label + u' ' + row.value).trimmed());
  } else if (content.shape == ServiceShape::Figures) {
    for (const ServiceMetric& figure : content.figures) add(figure.label + u' ' + figure.value);
  } else if (!reading.value.usageWindows.isEmpty()) {
    for (const UsageWindow& window : reading.value.usageWindows)
      add(UsageWords::line(inZoneOf(window, sources), sources.locale, sources.use24Hour));
  } else if (reading.value.value) {
    add(FigureWords::localised(*reading.value.value, sources.locale));
    if (!content.state.hasFailed && !reading.value.loading) add(reading.value.subtitle);
  } else if (content.state.problem.isEmpty()) {
    add(content.captions.value(0));
  }
  add(content.state.age);
  const QString words = parts.join(u", "_s);
  if (content.state.problem.isEmpty()) return words;
  return words.isEmpty() ? content.state.problem : words + u". "_s + content.state.problem;
}

/// Takes what a caption says of a change apart: "+1.24% · ACME" is a rise, and ACME.
void findChange(ServiceContent& content, const QString& caption, const QString& name, const QLocale& locale) {
  QStringList rest = caption.split(u" · "_s);
  const auto found = std::ranges::find_if(
      rest, [](const QString& part) { return FigureWords::signOf(part) != 0 && FigureWords::of(part).isNumber; });
  if (found == rest.end()) return;
  const QString before = *found;
  content.change = FigureWords::localised(before, locale);
  *found = content.change;
  content.captions = {rest.join(u" · "_s), content.change};
  rest.erase(found);
  content.beside = rest.isEmpty() ? name : rest.join(u" · "_s);
}

/// A widget that is set up and has no value yet, or never had one.
void describeMissing(ServiceContent& content, const RemoteReading& reading, const QString& name) {
  content.headline = {name, {}, false};
  if (content.state.hasFailed) return;
  if (content.state.isWaiting)
    content.captions = {content.state.problem.chopped(1), TileWords::tr("Waiting")};
  else
    content.captions = {reading.isAsking ? TileWords::tr("Updating…") : TileWords::tr("No value yet")};
}

void fillUsage(ServiceContent& content, const TileRequest& request, const RemoteReading& reading, ServiceShape wish) {
  const QList<UsageWindow>& windows = reading.value.usageWindows;
  for (const UsageWindow& window : windows.first(std::min(windows.size(), kMostBars)))
    content.bars << barOf(window, request.sources.locale);
  if (wish != ServiceShape::Gauge) {
    if (content.bars.size() != 1) return;
    if (const QString left = countdownOf(windows.first(), request.sources); !left.isEmpty()) content.captions = {left};
    return;
  }
  if (content.bars.isEmpty() && reading.value.value)
    if (const auto bar = headlineBar(request, *reading.value.value)) content.bars << *bar;
  if (content.bars.isEmpty()) return;
  QStringList below{windows.isEmpty() ? reading.value.subtitle : countdownOf(windows.first(), request.sources)};
  if (!windows.isEmpty()) below << UsageWords::countdown(windows.first(), request.sources.now, request.sources.locale);
  if (below.first().isEmpty() && !windows.isEmpty()) below = {windows.first().label};
  if (!content.state.remark().isEmpty() || content.state.hasFailed) below = content.captions;
  content.captions = below;
  content.headline = {gaugeName(request), {}, false};
}

}  // namespace

QList<double> plottable(const QList<double>& numbers) {
  QList<double> values;
  for (const double value : numbers.last(std::min(numbers.size(), kMostValues)))
    if (std::isfinite(value)) values << std::clamp(value, -kLargest, kLargest);
  return values;
}

TileContent makeServiceTile(const TileRequest& request, ServiceShape wish) {
  std::optional<RemoteReading> reading = remoteOf(request.sources, request.widget);
  if (!reading) {
    if (!RemoteRules::isSetUp(request.widget)) return makeGeneric(request);
    reading.emplace();
  }
  const RemoteValue& value = reading->value;
  const QLocale& locale = request.sources.locale;
  ServiceContent content;
  if (wish != ServiceShape::Quote || !value.value) content.badge = serviceBadge(request.definition);
  content.state = RemoteState::of(*reading, request.sources);
  content.captions = captionsOf(*reading, content.state, request.title());
  if (content.state.remark().isEmpty() && !content.state.hasFailed)
    findChange(content, reading->value.subtitle, request.title(), locale);
  content.isDimmed = content.state.hasFailed;
  if (value.value && !value.value->trimmed().isEmpty())
    content.headline = FigureWords::of(FigureWords::localised(*value.value, locale));
  else if (!value.usageWindows.isEmpty())
    content.headline = FigureWords::of(LocalFigures::of(UsageWords::leftWords(value.usageWindows.first()), locale));
  else
    describeMissing(content, *reading, request.title());
  content.numbers = plottable(value.numbers);
  content.activity = value.activity.value_or(Activity::Idle);
  for (const ServiceMetric& metric : value.metrics.first(std::min(value.metrics.size(), kMostFigures)))
    content.figures << ServiceMetric{metric.label, FigureWords::localised(metric.value, locale)};
  for (const ServiceRow& row : value.rows.first(std::min(value.rows.size(), kMostTileRows)))
    content.rows << ServiceMetric{row.title, FigureWords::localised(row.subtitle, locale)};
  fillUsage(content, request, *reading, wish);
  content.shape = shapeOf(wish, content);
  content.spoken = spokenOf(content, *reading, request.sources);
  return content;
}

TileText describe(const ServiceContent& content, const QString& name) { return {name, content.spoken}; }

}  // namespace tarnwick
