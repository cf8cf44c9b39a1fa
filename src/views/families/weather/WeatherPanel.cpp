#include <QHBoxLayout>
#include <QTimeZone>
#include <algorithm>

#include "services/ChosenPlace.h"
#include "services/Connections.h"
#include "views/controls/Buttons.h"
#include "views/controls/Fields.h"
#include "views/controls/Mirroring.h"
#include "views/controls/Rows.h"
#include "views/families/weather/WeatherFacts.h"
#include "views/families/weather/WeatherPainting.h"
#include "views/families/weather/WeatherRoom.h"
#include "views/panels/PanelWords.h"
#include "views/panels/PlaceField.h"
#include "views/panels/RowList.h"
#include "views/panels/TilePanel.h"
#include "views/theme/Glass.h"
#include "widgets/ClockWords.h"
#include "widgets/catalog/Catalog.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kGap = 12;

// The weather now.
constexpr double kHeadPicture = 44;
constexpr double kHeadStep = 17;

// The coming hours.
constexpr int kHoursHeight = 104;
constexpr double kHourTexts = 13;
constexpr double kHourNames = 100;
constexpr double kCurveTop = 26;
constexpr double kCurveFoot = 76;
constexpr double kCurveInset = 16;
constexpr double kLabelGap = 12;

// A day.
constexpr double kDayNameWidth = 56;
constexpr double kDaySymbol = 22;
constexpr double kDayLow = 132;
constexpr double kDayHighWidth = 44;
constexpr double kRangeGap = 10;

constexpr int kSceneHeight = 84;
constexpr double kSceneRose = 26;
constexpr double kUnitGap = 3;

/// What all of these draw on: a plain part of the panel with its words for screen readers.
class WeatherView : public QWidget {
 public:
  explicit WeatherView(int height) {
    setFixedHeight(height);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  }

 protected:
  void say(const QStringList& words) {
    QStringList said = words;
    said.removeAll(QString());
    setAccessibleName(said.join(u", "_s));
    update();
  }
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    draw(painter, lookOf(*this).palette);
  }
  virtual void draw(QPainter& painter, const Palette& palette) = 0;
};

/// Picture and temperature, the condition beside them and a line below that.
class NowView final : public WeatherView {
 public:
  NowView() : WeatherView(theme::kPanelFigureHeight) {}

  void show(const WeatherReading& reading, const QString& line) {
    reading_ = reading;
    line_ = line;
    say({reading.place, reading.temperature, reading.condition, line});
  }

 protected:
  void draw(QPainter& painter, const Palette& palette) override {
    const Mirroring mirror(*this);
    const double middle = height() / 2.0;
    const QRectF picture = mirror(QRectF(0, middle - kHeadPicture / 2, kHeadPicture, kHeadPicture));
    drawWeather(painter, reading_.picture, picture.topLeft(), kHeadPicture, palette);
    const TextLine figure(reading_.temperature, TextStyle::Display);
    const double share = theme::kPanelFigure / figure.pixelSize();
    const double left = kHeadPicture + kGap;
    const double wide = figure.width() * share;
    painter.save();
    const double x = mirror.isMirrored() ? width() - left - wide : left;
    painter.translate(x, snappedY(painter, {x, middle + figure.capHeight() * share / 2}));
    painter.scale(share, share);
    figure.draw(painter, {}, reading_.isFailed ? palette.secondary : palette.primary);
    painter.restore();
    const double start = left + wide + kGap;
    const double space = std::max(0.0, width() - start);
    const bool both = !reading_.condition.isEmpty() && !line_.isEmpty();
    const auto row = [&](const QString& text, double at, TextStyle style, const QColor& ink) {
      drawTextIn(painter, mirror(QRectF(start, at - kHeadStep / 2, space, kHeadStep)), text, style, ink,
                 mirror.reading());
    };
    row(reading_.condition, both ? middle - kHeadStep / 2 : middle, TextStyle::Title, palette.primary);
    row(line_, both ? middle + kHeadStep / 2 : middle, TextStyle::Caption, palette.secondary);
  }

 private:
  WeatherReading reading_;
  QString line_;
};

/// The temperature of a day and a night to come.
class HoursView final : public WeatherView {
 public:
  HoursView() : WeatherView(kHoursHeight) {}

  void show(const QList<WeatherFacts::Hour>& hours, const QStringList& names) {
    hours_ = hours;
    names_ = names;
    QStringList words;
    for (qsizetype i = 0; i < hours.size(); i += 3) words << PanelWords::tr("%1: %2").arg(names[i], hours[i].text);
    say(words);
  }

 protected:
  void draw(QPainter& painter, const Palette& palette) override {
    const QRectF box(kCurveInset, kCurveTop, width() - kCurveInset * 2, kCurveFoot - kCurveTop);
    QList<double> degrees;
    double widest = 0;
    for (qsizetype i = 0; i < hours_.size(); ++i) {
      degrees << hours_[i].degrees;
      for (const QString& text : {hours_[i].text, names_[i]})
        widest = std::max(widest, TextLine(text, TextStyle::Caption).width());
    }
    paintHours(painter, box, degrees, palette);
    painter.fillRect(QRectF(0, kCurveFoot + 5, width(), hairline(painter)), palette.hairline);
    const qsizetype last = hours_.size() - 1;
    qsizetype step = 1;
    for (const qsizetype each : {2, 3, 4, 6, 8, 12}) {
      step = each;
      if (box.width() * static_cast<double>(step) / static_cast<double>(std::max<qsizetype>(1, last)) >=
          widest + kLabelGap)
        break;
    }
    for (qsizetype i = 0; i <= last; i += step) {
      const double x = box.left() + box.width() * static_cast<double>(i) / static_cast<double>(last);
      TextLine(hours_[i].text, TextStyle::Caption).drawCentred(painter, {x, kHourTexts}, palette.primary);
      TextLine(names_[i], TextStyle::Caption).drawCentred(painter, {x, kHourNames}, palette.secondary);
    }
  }

 private:
  QList<WeatherFacts::Hour> hours_;
  QStringList names_;
};

/// What all rows of days share.
struct DaysScale {
  QList<std::pair<double, double>> days;  ///< From how cold to how warm each is.
  double least = 0;
  double most = 0;
};

/// A day: its name and picture, and from how cold to how warm it is, on the scale of all days. The lines of the lows
/// and the highs go on through the rows above and below.
class DayView final : public WeatherView {
 public:
  DayView(const WeatherFacts::Day& day, const DaysScale& scale, qsizetype index)
      : WeatherView(theme::kRowHeight), day_(day), scale_(scale), index_(index) {
    say({day.name, day.condition, PanelWords::tr("%1 to %2").arg(day.lowText, day.highText)});
    setToolTip(day.condition);
  }

 protected:
  void draw(QPainter& painter, const Palette& palette) override {
    const Mirroring mirror(*this);
    const double middle = height() / 2.0;
    if (index_ > 0) painter.fillRect(QRectF(0, 0, width(), hairline(painter)), palette.hairline);
    const auto text = [&](const QRectF& box, const QString& words, const QColor& ink, Qt::Alignment side,
                          TextStyle style) { drawTextIn(painter, mirror(box), words, style, ink, side); };
    text(QRectF(0, 0, kDayNameWidth, height()), day_.name, palette.primary, mirror.reading(), TextStyle::BodyStrong);
    const QRectF picture = mirror(QRectF(kDayNameWidth, middle - kDaySymbol / 2, kDaySymbol, kDaySymbol));
    drawWeather(painter, day_.picture, picture.topLeft(), kDaySymbol, palette);
    const double pictureEnd = kDayNameWidth + kDaySymbol + kRangeGap;
    text(QRectF(pictureEnd, 0, kDayLow - pictureEnd, height()), day_.lowText, palette.secondary, mirror.ending(),
         TextStyle::Body);
    const QRectF track(kDayLow + kRangeGap, middle - theme::kBarHeight / 2.0,
                       width() - kDayHighWidth - kRangeGap - kDayLow, theme::kBarHeight);
    // The scale is a chart's: from cold to warm in the direction of reading.
    painter.save();
    if (mirror.isMirrored()) {
      painter.translate(width(), 0);
      painter.scale(-1, 1);
    }
    const double row = height();
    painter.setClipRect(QRectF(0, 0, width(), row));
    paintDays(painter, QRectF(track.left(), -row * static_cast<double>(index_), track.width(), row), row, scale_.days,
              scale_.least, scale_.most, palette);
    paintRange(painter, track, day_.low, day_.high, scale_.least, scale_.most, palette);
    painter.restore();
    text(QRectF(track.right(), 0, width() - track.right(), height()), day_.highText, palette.primary, mirror.ending(),
         TextStyle::BodyStrong);
  }

 private:
  WeatherFacts::Day day_;
  DaysScale scale_;
  qsizetype index_;
};

class SunView final : public WeatherView {
 public:
  SunView() : WeatherView(kSceneHeight) {}

  void show(const WeatherFacts& facts, const QString& rise, const QString& set) {
    share_ = facts.sun ? std::optional(facts.sun->shareAt(facts.clock)) : std::nullopt;
    left_ = facts.sunLeft();
    rise_ = rise;
    set_ = set;
    say({PanelWords::tr("sunrise %1").arg(rise), PanelWords::tr("sunset %1").arg(set), left_});
  }

 protected:
  void draw(QPainter& painter, const Palette& palette) override {
    const QRectF box(8, 10, width() - 16, height() - 34);
    paintSunPath(painter, box, share_, palette);
    TextLine(left_, TextStyle::Caption)
        .elided(box.width() * 0.8, Elide::End)
        .drawCentred(painter, {box.center().x(), box.bottom() - 8}, palette.primary);
    const double baseline = height() - 6;
    TextLine(rise_, TextStyle::Caption).draw(painter, {0, baseline}, palette.secondary);
    TextLine(set_, TextStyle::Caption).drawRight(painter, {double(width()), baseline}, palette.secondary);
  }

 private:
  std::optional<double> share_;
  QString left_;
  QString rise_;
  QString set_;
};

class WindView final : public WeatherView {
 public:
  WindView() : WeatherView(kSceneHeight) {}

  void show(const WeatherFacts& facts) {
    wind_ = facts.wind;
    words_ = facts.windWords();
    direction_ = facts.windDirection;
    say({PanelWords::tr("wind %1").arg(facts.windText()), words_});
  }

 protected:
  void draw(QPainter& painter, const Palette& palette) override {
    const Mirroring mirror(*this);
    const double middle = height() / 2.0;
    paintRose(painter, {mirror(kSceneRose), middle}, kSceneRose, direction_, palette);
    const double left = kSceneRose * 2 + theme::kRowGap;
    const TextLine figure(wind_, TextStyle::Headline);
    const TextLine unit = TextLine::unit(PanelWords::tr("km/h"), TextStyle::Headline);
    // A unit follows its figure in its own reading direction.
    const bool before = mirror.isMirrored() && !unit.text().isRightToLeft();
    const double figureLeft = before ? left + unit.width() + kUnitGap : left - figure.leftBearing();
    const double unitLeft = before ? left : figureLeft + figure.width() + kUnitGap;
    mirror.begin(painter, figure, {figureLeft, middle}, palette.primary);
    mirror.begin(painter, unit, {unitLeft, middle}, palette.secondary);
    mirror.begin(painter, TextLine(words_, TextStyle::Caption).elided(width() - left, Elide::End), {left, middle + 17},
                 palette.secondary);
  }

 private:
  QString wind_;
  QString words_;
  std::optional<double> direction_;
};

/// A heading over one of two views that stand beside each other.
QWidget* headed(const QString& heading, QWidget* view) {
  auto* part = new QWidget;
  auto* column = new QVBoxLayout(part);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(new SectionLabel(heading));
  column->addWidget(view);
  return part;
}

class WeatherPanel final : public TilePanel {
 public:
  explicit WeatherPanel(const PanelContext& context)
      : TilePanel(context, theme::kPanelWidthWide),
        refresh_(new IconButton(u"arrow.clockwise"_s, PanelWords::tr("Refresh"))),
        invitation_(
            new TextLabel(PanelWords::tr("Choose a place to see its weather here."), TextStyle::Body, Tone::Secondary)),
        now_(new NowView),
        hours_(new HoursView),
        daysHeading_(nullptr),
        days_(new RowList),
        scenes_(new QWidget),
        sun_(new SunView),
        wind_(new WindView),
        humidity_(new ListRow(PanelWords::tr("Humidity"))),
        rain_(new ListRow(PanelWords::tr("Precipitation"))),
        place_(new PlaceField(PanelWords::tr("Find a place"), context.readings.connections)),
        here_(new Button(PanelWords::tr("Use Current Location"))) {
    ticks(TickCadence::Minute);
    // It may be opened from the panel of a clock.
    header().setSymbol(Catalog::find(context.as.isEmpty() ? context.kind() : context.as).symbol);
    header().addAction(refresh_);
    connect(refresh_, &QPushButton::clicked, this, [this] {
      store().refresh(widget());
      refreshNow();
    });
    invitation_->setWordWrap(true);
    body().addWidget(invitation_);
    body().addWidget(now_);
    body().addSpacing(kGap);
    body().addWidget(hours_);
    daysHeading_ = addSection(PanelWords::tr("Next days"));
    body().addWidget(days_);
    sunPart_ = headed(PanelWords::tr("Sun"), sun_);
    windPart_ = headed(PanelWords::tr("Wind"), wind_);
    auto* beside = new QHBoxLayout(scenes_);
    beside->setContentsMargins(0, 0, 0, 0);
    beside->setSpacing(theme::kPanelPadding * 2);
    beside->addWidget(sunPart_, 1);
    beside->addWidget(windPart_, 1);
    body().addWidget(scenes_);
    humidity_->setSymbol(u"drop"_s, Tone::Secondary);
    rain_->setSymbol(u"cloud.rain"_s, Tone::Secondary);
    humidity_->setParted(true);
    rain_->setParted(true);
    body().addWidget(humidity_);
    body().addWidget(rain_);
    addSection(PanelWords::tr("Place"));
    body().addWidget(place_);
    body().addSpacing(theme::kRowOverhang);
    body().addWidget(here_, 0, Qt::AlignLeft);
    connect(place_, &PlaceField::chosen, this, [this](const GeocodeCache::Place& place) { choose(place); });
    connect(here_, &QPushButton::clicked, this, [this] { chooseHere(); });
  }

 protected:
  QString heading() const override { return heading_.isEmpty() ? title() : heading_; }

  void refresh(const TileSources& sources) override {
    const QString place = WeatherReading::placeOf(widget());
    const auto value = sources.weather.of(widget().id);
    const bool isPlaced = !place.isEmpty() || sources.weather.example().has_value();
    const auto reading = isPlaced ? WeatherReading::of(widget(), sources) : std::nullopt;
    heading_ = !widget().title.isEmpty() ? QString() : reading ? reading->place : place;
    refresh_->setVisible(isPlaced);
    refresh_->setEnabled(!value || !value->isLoading);
    invitation_->setVisible(!reading);
    invitation_->setText(isPlaced ? PanelWords::tr("Waiting for the weather…")
                                  : PanelWords::tr("Choose a place to see its weather here."));
    here_->setVisible(widget().options.value(option::weatherLocation) != value::current);
    const QString problem = isPlaced ? WeatherReading::problemOf(value, sources) : QString();
    if (!reading && !problem.isEmpty()) invitation_->hide();
    setMessage(problem);
    header().setNote(reading ? noteOf(*value, *reading, sources) : QString());
    showFacts(reading ? WeatherFacts::of(value->value, sources) : WeatherFacts(), sources);
    now_->setVisible(reading.has_value());
    if (reading) now_->show(*reading, lineOf(*reading, WeatherFacts::of(value->value, sources)));
  }

 private:
  static QString noteOf(const RemoteReading& value, const WeatherReading& reading, const TileSources& sources) {
    if (reading.isLoading) return PanelWords::tr("Updating…");
    if (!reading.age.isEmpty()) return reading.age;
    if (!value.goodAt) return {};
    const QTime at = value.goodAt->toTimeZone(sources.now.timeZone()).time();
    return PanelWords::tr("Updated %1").arg(ClockWords::time(at, sources.locale, sources.use24Hour).full());
  }

  static QString lineOf(const WeatherReading& reading, const WeatherFacts& facts) {
    if (!facts.days.isEmpty() && facts.days.first().isToday)
      return PanelWords::tr("High %1 · Low %2").arg(facts.days.first().highText, facts.days.first().lowText);
    return reading.place;
  }

  void showFacts(const WeatherFacts& facts, const TileSources& sources) {
    const bool hasHours = facts.hours.size() > 3;
    hours_->setVisible(hasHours);
    if (hasHours) {
      QStringList names;
      for (const WeatherFacts::Hour& hour : facts.hours) names << briefHour(hour.hour, sources);
      names[0] = PanelWords::tr("Now");
      hours_->show(facts.hours, names);
    }
    daysHeading_->setVisible(!facts.days.isEmpty());
    if (facts.days != shownDays_) showDays(facts.days);
    sunPart_->setVisible(facts.sun.has_value());
    windPart_->setVisible(!facts.wind.isEmpty());
    scenes_->setVisible(facts.sun || !facts.wind.isEmpty());
    const auto clock = [&](QTime time) { return ClockWords::time(time, sources.locale, sources.use24Hour).full(); };
    if (facts.sun) sun_->show(facts, clock(facts.sun->rise), clock(facts.sun->set));
    wind_->show(facts);
    humidity_->setVisible(!facts.humidity.isEmpty());
    humidity_->setValue(facts.humidity);
    rain_->setVisible(!facts.precipitation.isEmpty());
    rain_->setValue(facts.precipitation);
  }

  void showDays(const QList<WeatherFacts::Day>& days) {
    shownDays_ = days;
    QList<QWidget*> rows;
    if (!days.isEmpty()) {
      DaysScale scale{{},
                      std::ranges::min(days, {}, &WeatherFacts::Day::low).low,
                      std::ranges::max(days, {}, &WeatherFacts::Day::high).high};
      for (const WeatherFacts::Day& day : days) scale.days << std::pair(day.low, day.high);
      for (const WeatherFacts::Day& day : days) rows << new DayView(day, scale, rows.size());
    }
    days_->setRows(rows);
  }

  void choose(const GeocodeCache::Place& place) {
    DockWidget changed = widget();
    ChosenPlace::choose(changed, place);
    take(changed, PanelWords::tr("The weather of %1 is shown.").arg(place.name));
    place_->setText({});
  }

  void chooseHere() {
    DockWidget changed = widget();
    changed.options.insert(option::weatherLocation, value::current);
    take(changed, PanelWords::tr("The weather of your location is shown."));
  }

  void take(const DockWidget& changed, const QString& sentence) {
    changeSettings(changed, sentence);
    store().refresh(changed);
    refreshNow();
  }

  IconButton* refresh_;
  TextLabel* invitation_;
  NowView* now_;
  HoursView* hours_;
  SectionLabel* daysHeading_;
  RowList* days_;
  QWidget* scenes_;
  QWidget* sunPart_ = nullptr;
  QWidget* windPart_ = nullptr;
  SunView* sun_;
  WindView* wind_;
  ListRow* humidity_;
  ListRow* rain_;
  PlaceField* place_;
  Button* here_;
  QString heading_;
  QList<WeatherFacts::Day> shownDays_;
};

}  // namespace

std::unique_ptr<TilePanel> makeWeatherPanel(const PanelContext& context) {
  return std::make_unique<WeatherPanel>(context);
}

}  // namespace tarnwick
