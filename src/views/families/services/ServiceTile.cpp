#include "views/families/services/ServiceTile.h"

#include <QTimeZone>
#include <algorithm>
#include <cmath>

#include "base/LocalFigures.h"
#include "base/Text.h"
#include "services/RemoteRules.h"
#include "services/UsageWords.h"
#include "views/families/services/ServiceFigures.h"
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

QStringList captionsOf(const RemoteState& state, const QString& label, const QString& brief) {
  if (!state.pause.isEmpty()) return {state.pause, TileWords::tr("Until %1").arg(state.until)};
  if (state.hasFailed) {
    if (state.age.isEmpty()) return {state.problem};
    return {TileWords::tr("Last value, %1").arg(state.age), state.age};
  }
  if (state.age.isEmpty()) return {label, brief};
  return {label + u" · "_s + state.age, brief + u" · "_s + state.age, state.age};
}

/// As many as a tile has space for, the headline among them.
QList<ServiceMetric> leadingFigures(const RemoteValue& value) {
  QList<ServiceMetric> all = value.metrics;
  const auto isHeadline = [&](const ServiceMetric& metric) { return metric.value == value.value; };
  if (value.value && !all.isEmpty() && std::ranges::none_of(all, isHeadline))
    all.prepend({value.subtitle.section(u" · "_s, 0, 0), *value.value});
  return all.first(std::min(all.size(), kMostFigures));
}

QString withProblem(const QString& words, const RemoteState& state) {
  if (state.problem.isEmpty()) return words;
  return words.isEmpty() ? state.problem : words + u". "_s + state.problem;
}

/// Who wrote a message: the name of "Ines Moreau <ines@example.org>", or the address where there is none.
QString senderOf(const QString& from) {
  QString name = from.section(u'<', 0, 0).trimmed();
  if (name.size() > 1 && name.startsWith(u'"') && name.endsWith(u'"')) name = name.sliced(1).chopped(1).trimmed();
  if (!name.isEmpty()) return name;
  return from.section(u'<', 1).section(u'>', 0, 0).trimmed();
}

/// The words for a screen reader and the tip, where nothing is left out.
QString spokenOf(const ServiceContent& content, const RemoteReading& reading, const TileSources& sources,
                 const ServiceFigures& figures) {
  QStringList parts;
  const auto add = [&parts](const QString& part) {
    if (!part.isEmpty() && !parts.contains(part)) parts << part;
  };
  const RemoteValue& value = reading.value;
  if (content.shape == ServiceShape::List) {
    for (const ServiceRow& row : value.rows.first(content.rows.size()))
      add((row.title + u' ' + row.subtitle).trimmed());
  } else if (content.shape == ServiceShape::Figures) {
    for (const ServiceMetric& metric : leadingFigures(value)) add(metric.label + u' ' + figures.words(metric.value));
  } else if (!value.usageWindows.isEmpty()) {
    for (const UsageWindow& window : value.usageWindows)
      add(UsageWords::line(inZoneOf(window, sources), sources.locale, sources.use24Hour));
  } else if (value.value) {
    add(figures.words(*value.value));
    if (content.isQuote && !value.subtitle.contains(content.beside)) add(content.beside);
    if (!content.state.hasFailed && !value.loading) add(value.subtitle);
  } else if (content.state.problem.isEmpty()) {
    add(content.captions.value(0));
  }
  add(content.state.age);
  return withProblem(parts.join(u", "_s), content.state);
}

/// What a price is the price of: a stock's symbol is in its subtitle, a coin's name in what else is said of it.
QString quotedOf(const QString& kind, const RemoteValue& value, const QString& rest, const QString& name) {
  const bool isCoin = kind == kind::cryptoQuote || kind == kind::cryptoChart;
  const QString coin = isCoin ? value.detail.section(u'\n', 0, 0) : QString();
  if (!coin.isEmpty()) return coin;
  return rest.isEmpty() ? name : rest;
}

bool isQuoteKind(const QString& kind) {
  return kind == kind::stockQuote || kind == kind::stockChart || kind == kind::cryptoQuote || kind == kind::cryptoChart;
}

/// The captions of a value, with what they say of a change taken apart: "+1.24% · ACME" is a rise, and ACME.
void describeCaptions(ServiceContent& content, const TileRequest& request, const RemoteValue& value,
                      const ServiceFigures& figures) {
  const QString label = value.subtitle.isEmpty() ? request.title() : value.subtitle;
  // Where a service says of what and of how many days, the first says most.
  content.captions = captionsOf(content.state, label, label.section(u" · "_s, 0, 0));
  if (content.state.hasFailed || !value.value) return;
  const ServiceText parts = ServiceText::of(value.subtitle);
  const QString rest = parts.change.isEmpty() ? value.subtitle : ServiceText{parts.before, {}, parts.after}.joined();
  content.isQuote = isQuoteKind(request.definition.id);
  content.beside = content.isQuote  ? quotedOf(request.definition.id, value, rest, request.title())
                   : rest.isEmpty() ? request.title()
                                    : rest;
  if (content.isQuote) content.captions = captionsOf(content.state, content.beside, content.beside);
  if (parts.change.isEmpty() || !content.state.remark().isEmpty()) return;
  content.change = figures.words(parts.change);
  const ServiceText whole{content.isQuote ? QString() : parts.before, content.change,
                          content.isQuote ? content.beside : parts.after};
  content.captions = {whole.joined(), content.change};
}

void describeHeadline(ServiceContent& content, const QString& text, const ServiceFigures& figures) {
  const ServiceHeadline headline = ServiceHeadline::of(text);
  QList<FigureWords> ways = figures.ways(headline.text);
  content.headline = ways.takeFirst();
  content.shorter = ways;
  // A sum that is not the whole one is a figure still, and its caption says what is wrong with it.
  if (!headline.remark.isEmpty() && content.state.remark().isEmpty() && !content.state.hasFailed)
    content.captions = {headline.remark + content.captions.value(0), headline.remark.section(u" · "_s, 0, 0)};
}

/// A list of messages leads with the latest of them: who wrote, and of what.
void describeMail(ServiceContent& content, const ServiceRow& latest) {
  const QString sender = senderOf(latest.subtitle);
  content.headline = {sender.isEmpty() ? TileWords::tr("Unknown sender") : sender, {}, false};
  content.beside = latest.title;
  content.captions = captionsOf(content.state, latest.title, latest.title);
}
QString spokenOfMail(const ServiceContent& content) {
  QStringList parts{content.headline.figure, content.beside, content.state.age};
  parts.removeAll(QString());
  return withProblem(parts.join(u", "_s), content.state);
}

/// A row of a list: a price and its change, or words.
ServiceLine lineOf(const ServiceRow& row, const ServiceFigures& figures) {
  const ServiceText aside = figures.aside(row.subtitle);
  ServiceLine line{row.title, {}, aside.change};
  // Behind a price without a change stands why there is none.
  const QString price =
      aside.change.isEmpty() ? row.subtitle.section(u" · "_s, 0, 0) : ServiceText::of(row.subtitle).before;
  if (!price.isEmpty()) line.ways = figures.ways(price);
  return line;
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
  const ServiceFigures figures = ServiceFigures::of(request.widget, request.sources);
  ServiceContent content;
  if (wish != ServiceShape::Quote || !value.value) content.badge = serviceBadge(request.definition);
  content.state = RemoteState::of(*reading, request.sources);
  content.isDimmed = content.state.hasFailed;
  describeCaptions(content, request, value, figures);
  const bool isMail = request.definition.id == kind::gmailLatest && !value.rows.isEmpty();
  if (isMail)
    describeMail(content, value.rows.first());
  else if (value.value && !value.value->trimmed().isEmpty())
    describeHeadline(content, *value.value, figures);
  else if (!value.usageWindows.isEmpty())
    content.headline = FigureWords::of(LocalFigures::of(UsageWords::leftWords(value.usageWindows.first()), locale));
  else
    describeMissing(content, *reading, request.title());
  content.numbers = plottable(value.numbers);
  content.activity = value.activity.value_or(Activity::Idle);
  for (const ServiceMetric& metric : leadingFigures(value))
    content.figures << ServiceFigure{metric.label, figures.ways(metric.value)};
  for (const ServiceRow& row : value.rows.first(std::min(value.rows.size(), kMostTileRows)))
    content.rows << lineOf(row, figures);
  fillUsage(content, request, *reading, wish);
  content.shape = shapeOf(wish, content);
  content.spoken = isMail ? spokenOfMail(content) : spokenOf(content, *reading, request.sources, figures);
  return content;
}

TileText describe(const ServiceContent& content, const QString& name) { return {name, content.spoken}; }

}  // namespace tarnwick
