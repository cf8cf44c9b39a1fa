#include <QTimeZone>
#include <algorithm>
#include <cmath>
#include <utility>

#include "base/ForeignText.h"
#include "base/LocalFigures.h"
#include "services/RemoteRules.h"
#include "views/controls/Buttons.h"
#include "views/controls/Charts.h"
#include "views/controls/ControlTheme.h"
#include "views/controls/PlainTip.h"
#include "views/controls/Rows.h"
#include "views/controls/WholeText.h"
#include "views/families/services/ServiceAction.h"
#include "views/families/services/ServiceFigures.h"
#include "views/families/services/ServicesRoom.h"
#include "views/panels/PanelWords.h"
#include "views/panels/RowList.h"
#include "widgets/ClockWords.h"
#include "widgets/FileWords.h"
#include "widgets/catalog/Kinds.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// Nobody reads on behind so many, and each is a control.
constexpr qsizetype kMostRows = 60;
constexpr int kServiceChartHeight = 72;
constexpr int kAboveText = 6;

/// A row, and how long ago it happened where that is told.
using AgedRow = std::pair<ServiceRow, QString>;

/// The panel of a connected widget, whatever its service gives.
class ServicePanel final : public TilePanel {
 public:
  explicit ServicePanel(const PanelContext& context)
      : TilePanel(context),
        page_(new IconButton(u"globe"_s, PanelWords::tr("Open Page"))),
        refresh_(new IconButton(u"arrow.clockwise"_s, PanelWords::tr("Refresh"))),
        figure_(new FigureView),
        headline_(new WholeText(TextStyle::Title, Tone::Primary)),
        subtitle_(new WholeText(TextStyle::Body, Tone::Secondary)),
        chart_(new ChartView(PanelWords::tr("History"),
                             showsBars(context.kind()) ? ChartView::Kind::Bars : ChartView::Kind::Line)),
        usage_(new RowList),
        metrics_(new RowList),
        moreFigures_(new TextLabel({}, TextStyle::Caption, Tone::Secondary)),
        rows_(new RowList),
        more_(new TextLabel({}, TextStyle::Caption, Tone::Secondary)),
        detail_(new WholeText(TextStyle::Caption, Tone::Secondary)),
        edit_(new Button(PanelWords::tr("Edit Widget…"))) {
    if (const ProviderAction* action = ServiceAction::of(context.kind()))
      action_ = new ServiceAction(*action,
                                  {.connections = context.readings.connections,
                                   .widget = [this] { return widget(); },
                                   .done = [this] { store().refresh(widget()); },
                                   .copy = [this](const QString& text) { this->context().commands.copyText(text); }});
    connect(refresh_, &QPushButton::clicked, this, [this] { store().refresh(widget()); });
    page_->setVisible(false);
    connect(page_, &QPushButton::clicked, this, [this] {
      this->context().commands.openUrl(pageOf(widget()));
      Q_EMIT closeRequested();
    });
    header().addAction(page_);
    header().addAction(refresh_);
    chart_->setChartHeight(kServiceChartHeight);
    addSpaced(figure_, 0);
    addSpaced(headline_, 0);
    addSpaced(subtitle_, kAboveText);
    if (action_) addSpaced(action_, theme::kPanelHeaderBelow);
    addSpaced(chart_, theme::kPanelHeaderBelow);
    addSpaced(usage_, kAboveText);
    addSpaced(metrics_, kAboveText);
    addSpaced(moreFigures_, kAboveText);
    addSpaced(rows_, kAboveText);
    addSpaced(more_, kAboveText);
    addSpaced(detail_, theme::kPanelHeaderBelow);
    addSpaced(edit_, theme::kPanelHeaderBelow);
    connect(edit_, &QPushButton::clicked, this, &ServicePanel::openEditor);
    ticks(TickCadence::Minute);  // It says how old the value is, and how long an allowance lasts.
  }

 protected:
  void refresh(const TileSources& sources) override {
    const std::optional<RemoteReading> reading = remoteOf(sources, widget());
    if (!reading && !RemoteRules::isSetUp(widget())) return showUnconnected();
    hideEmpty();
    show(reading.value_or(RemoteReading{}), sources);
  }

 private:
  static bool showsBars(const QString& kind) {
    return kind == kind::analyticsSimpleAnalyticsChart || kind == kind::shopifyTrends ||
           kind == kind::analyticsGitHubContributions;
  }

  /// What is not there takes its space with it.
  void addSpaced(QWidget* part, int above) {
    auto* box = new QWidget;
    auto* column = new QVBoxLayout(box);
    column->setContentsMargins(0, above, 0, 0);
    column->setSpacing(0);
    column->addWidget(part, 0, part == edit_ ? Qt::AlignHCenter : Qt::Alignment());
    body().addWidget(box);
    boxes_.insert(part, box);
  }
  void setShown(QWidget* part, bool shown) {
    part->setVisible(shown);
    boxes_.value(part)->setVisible(shown);
  }

  /// The page of the service that its values are from; invalid where none is known.
  static QUrl pageOf(const DockWidget& widget) {
    const QUrl page(widget.options.value(option::dashboard));
    return ForeignText::mayOpen(page) ? page : QUrl();
  }

  void openEditor() { context().commands.openEditor(context().widget, context().display); }

  void showUnconnected() {
    EmptyState state;
    state.badge = serviceBadge(definition());
    state.title = title();
    const bool later = context().comesLater;
    state.sentence = unconnectedSentence(definition().id, later).arg(definition().name);
    state.button = PanelWords::tr("Connect…");
    state.act = [this] { openEditor(); };
    state.isQuiet = later;
    showEmpty(state);
  }

  static QString unconnectedSentence(const QString& kind, bool later) {
    if (later)
      return PanelWords::tr(
          "%1 comes with a later version of Tarnwick. A figure from an address of your own can be shown now.");
    if (hasAddressAlone(kind))
      return PanelWords::tr("%1 cannot be signed in to. One figure from an address of your own can be shown.");
    return PanelWords::tr("Connect %1 to see its latest values here.");
  }

  void show(const RemoteReading& reading, const TileSources& sources) {
    const RemoteState state = RemoteState::of(reading, sources);
    const RemoteValue& value = reading.value;
    refresh_->setToolTip(state.pause.isEmpty() ? refresh_->label() : state.pause);
    const QUrl page = pageOf(widget());
    page_->setVisible(page.isValid());
    setPlainTip(*page_, PanelWords::tr("Open %1").arg(page.host()));
    header().setNote(noteOf(reading, state, sources));
    setMessage(state.problem);
    const ServiceFigures figures = ServiceFigures::of(widget(), sources);
    showHeadline(value, state, figures);
    showChart(value, sources);
    showUsage(value.usageWindows, sources);
    sayMore(moreFigures_, value.usageWindows.isEmpty() ? value.metrics.size() : value.usageWindows.size());
    // The figures of allowances are said with their bars.
    showMetrics(value.usageWindows.isEmpty() ? value.metrics : QList<ServiceMetric>(), figures);
    showRows(value.rows, figures, sources);
    const bool saysMore = value.usageWindows.isEmpty() && !state.hasFailed && !value.detail.isEmpty();
    setShown(detail_, saysMore);
    detail_->setText(saysMore ? value.detail : QString());
    setShown(edit_, state.hasFailed && !value.value);
    if (action_) setShown(action_, action_->isOffered());
  }

  static QString noteOf(const RemoteReading& reading, const RemoteState& state, const TileSources& sources) {
    if (state.isLoading) return PanelWords::tr("Updating…");
    if (!state.age.isEmpty()) return state.age;
    if (!reading.goodAt) return {};
    const QTime at = reading.goodAt->toTimeZone(sources.now.timeZone()).time();
    return PanelWords::tr("Updated %1").arg(ClockWords::time(at, sources.locale, sources.use24Hour).full());
  }

  void showHeadline(const RemoteValue& value, const RemoteState& state, const ServiceFigures& figures) {
    const ServiceHeadline headline = ServiceHeadline::of(value.value.value_or(QString()));
    const bool isMissing = headline.text.trimmed().isEmpty();
    const FigureWords words = figures.ways(headline.text).first();
    const bool isFigure = !isMissing && words.isNumber && fits(words);
    setShown(figure_, isFigure);
    if (isFigure) figure_->setFigure(words.figure, words.unit);
    setShown(headline_, !isFigure && !isMissing);
    headline_->setText(!isFigure && !isMissing ? *value.value : QString());
    QString below = state.hasFailed ? QString() : value.subtitle;
    if (isMissing && below.isEmpty() && !state.hasFailed && value.usageWindows.isEmpty() && value.rows.isEmpty())
      below = PanelWords::tr("No value yet");
    const ServiceText parts = figures.aside(below);
    const QString said = isFigure ? headline.remark + parts.joined() : parts.joined();
    setShown(subtitle_, !said.isEmpty());
    subtitle_->setText(said);
    subtitle_->setPart(parts.change, toneOf(parts.change));
  }

  static Tone toneOf(const QString& change) {
    const int sign = FigureWords::signOf(change);
    return sign > 0 ? Tone::Rise : sign < 0 ? Tone::Fall : Tone::Primary;
  }

  static bool fits(const FigureWords& words) {
    const TextLine figure(words.figure, TextStyle::Display);
    const double unit = TextLine(words.unit, TextStyle::Headline).width();
    return figure.width() * theme::kPanelFigure / figure.pixelSize() + unit <
           theme::kPanelWidth - theme::kPanelPadding * 2 - theme::kRowGap;
  }

  void showChart(const RemoteValue& value, const TileSources& sources) {
    const QLocale& locale = sources.locale;
    const QList<double> values = plottable(value.numbers);
    setShown(chart_, values.size() > 1);
    if (values.size() < 2) return;
    // What varies little beside how much it is would be a straight line high above nothing; bars are lengths.
    const auto [least, most] = std::ranges::minmax(values);
    const bool isFlat = !showsBars(context().kind()) && least > most / 2 && least < most;
    chart_->setMinimum(least < 0 || isFlat ? least : 0);
    // The curve of what rose or fell has the colour of that, as in the tile.
    const int sign = FigureWords::signOf(ServiceText::of(value.subtitle).change);
    std::optional<Accent> accent;
    if (sign != 0) accent = sign > 0 ? Accent::Green : Accent::Red;
    chart_->setSeries({{values, accent}});
    const auto words = [locale](double number) { return numberWords(number, locale); };
    chart_->setWords(words);
    showPlaces(value, values.size(), sources);
    chart_->setAccessibleDescription(
        PanelWords::tr("Lowest %1, highest %2, latest %3").arg(words(least), words(most), words(values.last())));
  }

  /// When the values were, behind each that is pointed at, and of the ends always.
  void showPlaces(const RemoteValue& value, qsizetype shown, const TileSources& sources) {
    const bool isAll = std::ranges::all_of(value.numbers, [](double number) { return std::isfinite(number); });
    const auto places = [=, days = value.numberDays, moments = value.numberMoments, all = value.numbers.size(),
                         now = sources.now, locale = sources.locale,
                         use24Hour = sources.use24Hour](qsizetype before) -> QString {
      const qsizetype at = all - 1 - before;
      if (!isAll || at < 0) return {};
      if (days.size() == all) return days[at].isValid() ? dayWord(days[at], now.date(), locale) : QString();
      if (moments.size() != all) return {};
      const QDateTime then = moments[at].toTimeZone(now.timeZone());
      const QString ago = agoWord(then, now, locale);
      return then.date() < now.date() ? ago + u", "_s + ClockWords::time(then.time(), locale, use24Hour).full() : ago;
    };
    chart_->setPlaces(places);
    const QString begin = places(shown - 1);
    const QString end = places(0);
    const bool isKnown = !begin.isEmpty() && !end.isEmpty();
    chart_->setEnds(isKnown ? begin : QString(), isKnown ? end : QString());
  }

  static QString numberWords(double value, const QLocale& locale) {
    const double size = std::abs(value);
    if (size >= kMostPlain) return FigureWords::withMinus(locale.toString(value, 'g', 4));
    const int decimals = size == std::floor(size) ? 0 : size < 1 ? 4 : 2;
    return FigureWords::withMinus(locale.toString(value, 'f', decimals));
  }

  void showUsage(const QList<UsageWindow>& windows, const TileSources& sources) {
    setShown(usage_, !windows.isEmpty());
    const std::pair shown(windows, sources.now);
    if (shown == shownUsage_) return;
    shownUsage_ = shown;
    QList<QWidget*> views;
    for (const UsageWindow& window : windows.first(std::min(windows.size(), kMostRows)))
      views << makeUsageView(window, sources);
    usage_->setRows(views);
  }

  void showMetrics(const QList<ServiceMetric>& metrics, const ServiceFigures& figures) {
    setShown(metrics_, !metrics.isEmpty());
    if (metrics == shownMetrics_) return;
    shownMetrics_ = metrics;
    QList<QWidget*> rows;
    for (const ServiceMetric& metric : metrics.first(std::min(metrics.size(), kMostRows))) {
      auto* row = new ListRow(metric.label);
      const QString figure = figures.words(metric.value);
      row->setValue(figure, toneOf(ServiceText::of(figure).change));
      row->setParted(!rows.isEmpty());
      setPlainTip(*row, metric.label + u": "_s + figure);
      rows << row;
    }
    metrics_->setRows(rows);
  }

  void sayMore(TextLabel* label, qsizetype all) {
    setShown(label, all > kMostRows);
    label->setText(PanelWords::tr("%1 more").arg(LocalFigures::number(all - kMostRows)));
  }

  void showRows(const QList<ServiceRow>& all, const ServiceFigures& figures, const TileSources& sources) {
    QList<AgedRow> shown;
    for (const ServiceRow& row : all.first(std::min(all.size(), kMostRows)))
      shown << AgedRow{row, row.at ? agoWord(*row.at, sources.now, sources.locale) : QString()};
    setShown(rows_, !shown.isEmpty());
    sayMore(more_, all.size());
    if (shown == shownRows_) return;
    shownRows_ = shown;
    QList<QWidget*> rows;
    for (const auto& [each, age] : std::as_const(shown)) {
      ListRow* row = makeRow(each, age, figures);
      row->setParted(!rows.isEmpty());
      rows << row;
    }
    rows_->setRows(rows);
  }

  ListRow* makeRow(const ServiceRow& each, const QString& age, const ServiceFigures& figures) {
    auto* row = new ListRow(each.title);
    if (!age.isEmpty()) row->setValue(age, Tone::Secondary);
    const ServiceText parts = figures.aside(each.subtitle);
    const QString beside = parts.joined();
    // A change stands beside it, with what belongs to that, and what changed stands below; so do words. A figure alone
    // stands beside it.
    if (!parts.change.isEmpty()) {
      row->setValue(ServiceText{{}, parts.change, parts.after}.joined(), toneOf(parts.change));
      row->setCaption(parts.before);
    } else if (FigureWords::of(beside).isNumber || beside == u"—") {
      row->setValue(beside);
    } else {
      row->setCaption(beside);
    }
    QString whole = beside.isEmpty() ? each.title : each.title + u" · "_s + beside;
    if (!age.isEmpty()) whole += u" · "_s + age;
    setPlainTip(*row, whole);
    if (!each.url || !ForeignText::mayOpen(*each.url)) return row;
    row->setClickable(true);
    row->setSymbol(u"globe"_s, Tone::Secondary);
    setPlainTip(*row, PanelWords::tr("%1. Opens %2.").arg(whole, each.url->host()));
    connect(row, &QPushButton::clicked, this, [this, url = *each.url] {
      context().commands.openUrl(url);
      Q_EMIT closeRequested();
    });
    return row;
  }

  static constexpr double kMostPlain = 1e12;

  IconButton* page_;
  IconButton* refresh_;
  FigureView* figure_;
  WholeText* headline_;
  WholeText* subtitle_;
  ChartView* chart_;
  RowList* usage_;
  RowList* metrics_;
  TextLabel* moreFigures_;  ///< Of metrics or allowances, of which there are never both.
  RowList* rows_;
  TextLabel* more_;
  WholeText* detail_;
  ServiceAction* action_ = nullptr;  ///< Only where the service has something to be asked for.
  Button* edit_;
  QHash<QWidget*, QWidget*> boxes_;
  std::pair<QList<UsageWindow>, QDateTime> shownUsage_;
  QList<ServiceMetric> shownMetrics_;
  QList<AgedRow> shownRows_;
};

}  // namespace

std::unique_ptr<TilePanel> makeServicePanel(const PanelContext& context) {
  return std::make_unique<ServicePanel>(context);
}

}  // namespace tarnwick
