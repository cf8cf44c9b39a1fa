#include "views/families/clocks/ClocksRoom.h"

#include <QHBoxLayout>

#include "base/LocalFigures.h"
#include "views/controls/Buttons.h"
#include "views/controls/Fields.h"
#include "views/controls/FullWidth.h"
#include "views/controls/MonthGrid.h"
#include "views/controls/PlainTip.h"
#include "views/controls/Rows.h"
#include "views/families/clocks/DateTiles.h"
#include "views/panels/PanelWords.h"
#include "views/panels/WeatherRow.h"
#include "widgets/ClockWords.h"
#include "widgets/ZoneSearch.h"
#include "widgets/catalog/Kinds.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype kMostMatches = 5;
constexpr qsizetype kMostZones = 8;
constexpr int kFieldGap = 8;

/// A zone as the panel shows it.
struct Zone {
  QString name;  ///< Empty for the user's own.
  QString label;
  bool removable = false;
  QString place{};  ///< Where the label does not say it.
  bool operator==(const Zone&) const = default;
};

class ClockPanel final : public TilePanel {
 public:
  explicit ClockPanel(const PanelContext& context)
      : TilePanel(context),
        isList_(widget().kind == kind::worldClockList),
        figure_(new FigureView),
        weather_(widget().kind == kind::todayClock ? new WeatherRow(context, WeatherRow::Placeless::Invitation)
                                                   : nullptr),
        zones_(new QVBoxLayout),
        field_(new SearchField(isList_ ? PanelWords::tr("Add a city or time zone")
                                       : PanelWords::tr("Choose a city or time zone"))),
        matches_(new QVBoxLayout),
        nothing_(
            new TextLabel(PanelWords::tr("No city or time zone has this name."), TextStyle::Caption, Tone::Secondary)),
        monthPart_(new QWidget),
        month_(new MonthGrid),
        monthName_(new TextLabel({}, TextStyle::TabLabel, Tone::Secondary)) {
    alsoShow({Family::Calendar});
    body().addWidget(figure_);
    if (weather_) {
      body().addSpacing(kFieldGap);
      addFullWidth(body(), weather_);
    }
    addSection(isList_ ? PanelWords::tr("World clock") : PanelWords::tr("Time zone"));
    for (QVBoxLayout* list : {zones_, matches_}) {
      list->setContentsMargins(0, 0, 0, 0);
      list->setSpacing(0);
    }
    body().addLayout(zones_);
    body().addSpacing(kFieldGap);
    body().addWidget(field_);
    body().addLayout(matches_);
    nothing_->setContentsMargins(0, kFieldGap, 0, 0);
    nothing_->setFixedHeight(theme::kRowHeight);
    nothing_->hide();
    body().addWidget(nothing_);
    buildMonth();
    body().addWidget(monthPart_);
    keepDraft(*field_);
    connect(field_, &QLineEdit::textChanged, this, [this] { search(); });
    connect(field_, &QLineEdit::returnPressed, this, [this] {
      if (!found_.isEmpty()) take(found_.first());
    });
  }

 protected:
  void refresh(const TileSources& sources) override {
    const QString zone = isList_ ? QString() : widget().options.value(option::timezone);
    const QDateTime now = ClockWords::inZone(sources.now, zone);
    const ClockTime time = ClockWords::time(now.time(), sources.locale, sources.use24Hour);
    const QDate today = now.date();
    figure_->setFigure(time.text(), time.halfOfDay);
    figure_->setLines(ClockWords::dates(today, sources.locale).value(0),
                      PanelWords::tr("Week %1").arg(
                          sources.locale.toString(ClockWords::weekNumber(today, sources.locale.firstDayOfWeek()))));
    if (weather_) weather_->show(widget(), sources);
    showZones(sources);
    showMatchTimes(sources);
    month_->setWords(sources.locale);
    month_->setToday(today);
    if (sources.calendar) month_->setCounts(sources.calendar->counts);
    monthName_->setText(ClockWords::monthAndYear(month_->month(), sources.locale));
    locale_ = sources.locale;
  }

 private:
  void buildMonth() {
    auto* column = new QVBoxLayout(monthPart_);
    column->setContentsMargins(0, theme::kSectionAbove - kFieldGap, 0, 0);
    column->setSpacing(0);
    auto* row = new QHBoxLayout;
    row->setSpacing(0);
    row->addWidget(monthName_, 1);
    for (const auto& [symbol, label, months] : {std::tuple(u"chevron.left"_s, PanelWords::tr("Previous month"), -1),
                                                std::tuple(u"chevron.right"_s, PanelWords::tr("Next month"), 1)}) {
      auto* button = new IconButton(symbol, label);
      button->setGround(false);
      connect(button, &QPushButton::clicked, this, [this, step = months] { month_->turn(step); });
      row->addWidget(button);
    }
    column->addLayout(row);
    column->addSpacing(kFieldGap);
    column->addWidget(month_);
    connect(month_, &MonthGrid::monthChanged, this,
            [this] { monthName_->setText(ClockWords::monthAndYear(month_->month(), locale_)); });
  }

  // --- The zones of the widget ---------------------------------------------------------------------------------------

  QList<Zone> zonesOfWidget() const {
    const QMap<QString, QString>& options = widget().options;
    QList<Zone> zones;
    if (isList_) {
      const QStringList names = worldZones(options.value(option::zones));
      for (const QString& name : names) zones << Zone{name, ClockWords::city(name), names.size() > 1};
      return zones;
    }
    const QString name = options.value(option::timezone);
    if (!ClockWords::isZone(name)) return {Zone{{}, PanelWords::tr("Local"), false}};
    const QString label = options.value(option::zoneLabel).trimmed();
    const QString city = ClockWords::city(name);
    if (ZoneSearch::isNameOf(label, name)) return {Zone{name, label.isEmpty() ? city : label, true}};
    return {Zone{name, label, true, city}};
  }

  void showZones(const TileSources& sources) {
    if (const QList<Zone> wanted = zonesOfWidget(); wanted != shown_) {
      shown_ = wanted;
      clear(rows_);
      for (const Zone& zone : wanted) rows_ << addZone(zone);
    }
    for (qsizetype i = 0; i < rows_.size(); ++i) {
      const QDateTime there = ClockWords::inZone(sources.now, shown_[i].name);
      QStringList words{shown_[i].place,
                        shown_[i].name.isEmpty() ? PanelWords::tr("The time of this computer")
                                                 : ClockWords::ahead(there, sources.now),
                        ClockWords::dayThere(there, sources.now)};
      words.removeAll(QString());
      rows_[i]->setCaption(words.join(u", "_s));
      rows_[i]->setValue(ClockWords::time(there.time(), sources.locale, sources.use24Hour).full());
    }
  }

  ListRow* addZone(const Zone& zone) {
    auto* row = new ListRow(zone.label);
    row->setParted(!rows_.isEmpty());
    setPlainTip(*row, zone.name);
    if (zone.removable) {
      auto* remove = new IconButton(
          u"xmark"_s, isList_ ? PanelWords::tr("Remove %1").arg(zone.label) : PanelWords::tr("Use local time"));
      remove->setGround(false);
      remove->setTone(Tone::Secondary);
      connect(remove, &QPushButton::clicked, this, [this, name = zone.name] { leave(name); });
      row->addControl(remove);
    }
    zones_->addWidget(row);
    return row;
  }

  void leave(const QString& zone) {
    if (!isList_) return changeSettings(standingAt({}, {}), PanelWords::tr("The clock shows local time."));
    QStringList zones = worldZones(widget().options.value(option::zones));
    zones.removeAll(zone);
    changeSetting(option::zones, zones.join(u','), PanelWords::tr("“%1” was removed.").arg(ClockWords::city(zone)));
  }

  void take(const ZoneMatch& match) {
    if (isList_) {
      QStringList zones = worldZones(widget().options.value(option::zones));
      if (!zones.contains(match.zone)) zones << match.zone;
      setMessage(
          zones.size() > kMostZones
              ? PanelWords::tr("A world clock shows at most %1 time zones.").arg(LocalFigures::number(kMostZones))
              : QString());
      if (zones.size() <= kMostZones) changeSetting(option::zones, zones.join(u','));
    } else {
      const QMap<QString, QString>& options = widget().options;
      const QString label = options.value(option::zoneLabel);
      changeSettings(
          standingAt(match.zone, ZoneSearch::isNameOf(label, options.value(option::timezone)) ? match.city : label));
    }
    field_->clear();
    refreshNow();
  }

  /// The clock at another place: both options belong to one change of the settings.
  DockWidget standingAt(const QString& zone, const QString& label) const {
    DockWidget changed = widget();
    for (const auto& [key, value] : {std::pair(option::timezone, zone), std::pair(option::zoneLabel, label)}) {
      changed.options.remove(key);
      if (!value.isEmpty()) changed.options.insert(key, value);
    }
    return changed;
  }

  // --- Looking for one -----------------------------------------------------------------------------------------------

  void search() {
    found_ = ZoneSearch::find(field_->text(), kMostMatches);
    clear(matchRows_);
    for (const ZoneMatch& match : found_) {
      auto* row = new ListRow(match.city);
      row->setClickable(true);
      row->setParted(!matchRows_.isEmpty());
      QStringList words{match.country, match.zone};
      words.removeAll(QString());
      row->setCaption(words.join(u" · "_s));
      connect(row, &QPushButton::clicked, this, [this, match] { take(match); });
      addFullWidth(*matches_, row);
      matchRows_ << row;
    }
    const bool searching = !field_->text().trimmed().isEmpty();
    nothing_->setVisible(searching && found_.isEmpty());
    monthPart_->setVisible(!searching);
    refreshNow();
  }

  void showMatchTimes(const TileSources& sources) {
    for (qsizetype i = 0; i < matchRows_.size(); ++i) {
      const QDateTime there = ClockWords::inZone(sources.now, found_[i].zone);
      matchRows_[i]->setValue(ClockWords::time(there.time(), sources.locale, sources.use24Hour).full(),
                              Tone::Secondary);
    }
  }

  /// Away with rows, one of which may have been clicked to come here.
  static void clear(QList<ListRow*>& rows) {
    for (ListRow* row : std::as_const(rows)) {
      row->hide();
      row->deleteLater();
    }
    rows.clear();
  }

  bool isList_;
  FigureView* figure_;
  WeatherRow* weather_;  ///< Null for a clock that shows none.
  QVBoxLayout* zones_;
  SearchField* field_;
  QVBoxLayout* matches_;
  TextLabel* nothing_;
  QWidget* monthPart_;
  MonthGrid* month_;
  TextLabel* monthName_;
  QLocale locale_;
  QList<Zone> shown_;
  QList<ListRow*> rows_;
  QList<ZoneMatch> found_;
  QList<ListRow*> matchRows_;
};

}  // namespace

std::unique_ptr<TilePanel> makeClockPanel(const PanelContext& context) { return std::make_unique<ClockPanel>(context); }

}  // namespace tarnwick
