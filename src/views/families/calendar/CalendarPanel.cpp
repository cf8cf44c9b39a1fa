#include "views/families/calendar/CalendarRoom.h"

#include "base/LocalFigures.h"
#include "calendar/Calendar.h"
#include "views/controls/Buttons.h"
#include "views/controls/MonthGrid.h"
#include "views/families/calendar/CalendarTiles.h"
#include "views/families/calendar/DayAgenda.h"
#include "views/families/calendar/EventWords.h"
#include "views/panels/PanelWords.h"
#include "widgets/ClockWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype kMostAgendaRows = 8;
constexpr int kNoticeGap = 8;

class CalendarPanel final : public TilePanel {
 public:
  explicit CalendarPanel(const PanelContext& context)
      : TilePanel(context),
        month_(new MonthGrid),
        heading_(nullptr),
        agenda_(new DayAgenda(context.commands, kMostAgendaRows)),
        notice_(new TextLabel({}, TextStyle::Body, Tone::Secondary)),
        folder_(new Button(PanelWords::tr("Add Calendar Folder…"))) {
    addTurn(u"chevron.left"_s, PanelWords::tr("Previous month"), -1);
    addTurn(u"chevron.right"_s, PanelWords::tr("Next month"), 1);
    if (context.commands.can(Commands::Optional::CalendarApp)) {
      auto* application = new IconButton(u"calendar"_s, PanelWords::tr("Open Calendar"));
      connect(application, &QPushButton::clicked, this, [this] { this->context().commands.openCalendarApp(); });
      header().addAction(application);
    }
    body().addWidget(month_);
    heading_ = addSection({});
    body().addWidget(agenda_);
    notice_->setWordWrap(true);
    notice_->setContentsMargins(0, kNoticeGap / 2, 0, 0);
    body().addWidget(notice_);
    body().addSpacing(kNoticeGap);
    body().addWidget(folder_, 0, Qt::AlignLeft);
    connect(folder_, &QPushButton::clicked, this, [this] { this->context().commands.addCalendarFolder(); });
    connect(month_, &MonthGrid::chosenChanged, this, [this] { refreshNow(); });
  }

 protected:
  QString heading() const override { return ClockWords::monthAndYear(month_->month(), locale_); }

  void refresh(const TileSources& sources) override {
    const CalendarDigest& digest = digestOf(sources);
    locale_ = sources.locale;
    setMessage(digest.problem == digest.calendarMessage ? QString() : digest.problem);
    month_->setWords(sources.locale);
    const QSignalBlocker quiet(month_);  // What follows shows the chosen day anyway.
    month_->setToday(sources.now.date());
    month_->setCounts(digest.counts);
    showHeading(digest, sources);
    showAgenda(digest, sources);
  }

 private:
  void addTurn(const QString& symbol, const QString& label, int months) {
    auto* button = new IconButton(symbol, label);
    button->setGround(false);
    connect(button, &QPushButton::clicked, this, [this, months] { month_->turn(months); });
    header().addAction(button);
  }

  void showHeading(const CalendarDigest& digest, const TileSources& sources) {
    const QDate day = month_->chosen();
    const QString date = ClockWords::dates(day, sources.locale).value(0);
    if (day != sources.now.date()) {
      heading_->setText(date);
      heading_->setTrailing({});
      return;
    }
    heading_->setText(PanelWords::tr("Today, %1").arg(ClockWords::dayWithMonth(day, sources.locale)));
    const bool soon = !digest.upcoming.isEmpty() && digest.upcoming.first().start.date() <= day;
    heading_->setTrailing(soon ? EventWords::distance(digest.upcoming.first(), sources) : QString(), Tone::AccentWord);
  }

  void showAgenda(const CalendarDigest& digest, const TileSources& sources) {
    agenda_->showDay(month_->chosen(), digest, sources);
    const QString text = noticeFor(digest, sources, agenda_->all(), agenda_->shown());
    notice_->setText(text);
    notice_->setVisible(!text.isEmpty());
    folder_->setVisible(!digest.calendarMessage.isEmpty());
  }

  QString noticeFor(const CalendarDigest& digest, const TileSources& sources, qsizetype all, qsizetype shown) const {
    if (!digest.calendarMessage.isEmpty()) return digest.calendarMessage;
    if (all > shown) return PanelWords::tr("And %1 more").arg(LocalFigures::number(all - shown));
    if (all > 0) return {};
    const qint64 days = sources.now.date().daysTo(month_->chosen());
    if (days < -Calendar::daysBack || days >= Calendar::daysAhead)
      return PanelWords::tr("Events are shown for the last five and the next ten weeks.");
    return PanelWords::tr("No events");
  }

  MonthGrid* month_;
  SectionLabel* heading_;
  DayAgenda* agenda_;
  TextLabel* notice_;
  Button* folder_;
  QLocale locale_;
};

}  // namespace

std::unique_ptr<TilePanel> makeCalendarPanel(const PanelContext& context) {
  return std::make_unique<CalendarPanel>(context);
}

}  // namespace tarnwick
