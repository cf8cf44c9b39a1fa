#include "views/panels/CalendarPanel.h"

#include <QCoreApplication>
#include <algorithm>

#include "calendar/Calendar.h"
#include "views/controls/Buttons.h"
#include "views/controls/MonthGrid.h"
#include "views/panels/AgendaRow.h"
#include "views/tiles/ClockWords.h"
#include "views/tiles/EventWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype kMostRows = 8;
constexpr int kNoticeGap = 8;

/// One event on one of the days that it touches.
struct Occasion {
  AgendaRow::Words words;
  QString link;
  bool next = false;
  bool operator==(const Occasion&) const = default;
};

class CalendarPanel final : public TilePanel {
  Q_DECLARE_TR_FUNCTIONS(Panels)

 public:
  explicit CalendarPanel(const PanelContext& context)
      : TilePanel(context),
        month_(new MonthGrid),
        heading_(nullptr),
        agenda_(new QVBoxLayout),
        notice_(new TextLabel({}, TextStyle::Body, Tone::Secondary)),
        folder_(new Button(tr("Add Calendar Folder…"))) {
    addTurn(u"chevron.left"_s, tr("Previous month"), -1);
    addTurn(u"chevron.right"_s, tr("Next month"), 1);
    if (const auto open = context.actions.openCalendar) {
      auto* application = new IconButton(u"calendar"_s, tr("Open Calendar"));
      connect(application, &QPushButton::clicked, this, [open] { open(); });
      header().addAction(application);
    }
    body().addWidget(month_);
    heading_ = addSection({});
    agenda_->setContentsMargins(0, 0, 0, 0);
    agenda_->setSpacing(0);
    body().addLayout(agenda_);
    notice_->setWordWrap(true);
    notice_->setContentsMargins(0, kNoticeGap / 2, 0, 0);
    body().addWidget(notice_);
    body().addSpacing(kNoticeGap);
    body().addWidget(folder_, 0, Qt::AlignLeft);
    if (const auto add = context.actions.addCalendarFolder)
      connect(folder_, &QPushButton::clicked, this, [add] { add(); });
    connect(month_, &MonthGrid::chosenChanged, this, [this] { refreshNow(); });
  }

 protected:
  QString heading() const override { return ClockWords::monthAndYear(month_->month(), locale_); }

  void refresh(const TileSources& sources) override {
    static const CalendarDigest none;
    const CalendarDigest& digest = sources.calendar ? *sources.calendar : none;
    locale_ = sources.locale;
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
    heading_->setText(tr("Today, %1").arg(ClockWords::dayWithMonth(day, sources.locale)));
    const bool soon = !digest.upcoming.isEmpty() && digest.upcoming.first().start.date() <= day;
    heading_->setTrailing(soon ? EventWords::distance(digest.upcoming.first(), sources) : QString(), Tone::AccentWord);
  }

  QList<Occasion> occasions(const CalendarDigest& digest, const TileSources& sources) const {
    const QDate day = month_->chosen();
    QList<Occasion> found;
    for (const CalendarEvent& event : CalendarModel::onDay(digest.events, day)) {
      Occasion occasion;
      occasion.words = {event.allDay ? tr("All day") : EventWords::time(event.start, sources),
                        event.allDay || event.end <= event.start ? QString() : EventWords::time(event.end, sources),
                        event.title,
                        event.location,
                        event.colour,
                        event.end < sources.now && day <= sources.now.date()};
      if (!occasion.words.past) occasion.link = event.meetingLink;
      occasion.next = digest.nextMeeting && *digest.nextMeeting == event;
      found << occasion;
    }
    return found;
  }

  void showAgenda(const CalendarDigest& digest, const TileSources& sources) {
    QList<Occasion> wanted = occasions(digest, sources);
    const qsizetype all = wanted.size();
    // A full day keeps what is to come.
    while (wanted.size() > kMostRows && wanted.first().words.past) wanted.removeFirst();
    wanted.resize(std::min(wanted.size(), kMostRows));
    const QString text = noticeFor(digest, sources, all, wanted.size());
    notice_->setText(text);
    notice_->setVisible(!text.isEmpty());
    folder_->setVisible(!digest.calendarMessage.isEmpty() && context().actions.addCalendarFolder);
    if (wanted == shown_) return;
    shown_ = wanted;
    for (AgendaRow* row : rows_) {
      row->hide();
      row->deleteLater();  // One of them may have been clicked to come here.
    }
    rows_.clear();
    double column = 0;
    for (const Occasion& occasion : wanted) column = std::max(column, AgendaRow::columnOf(occasion.words));
    for (const Occasion& occasion : wanted) {
      auto* row = new AgendaRow(occasion.words, column, joining(occasion.link), occasion.next);
      row->setParted(!rows_.isEmpty());
      agenda_->addWidget(row);
      rows_ << row;
    }
  }

  std::function<void()> joining(const QString& link) const {
    const auto open = context().actions.openUrl;
    if (link.isEmpty() || !open) return {};
    return [open, url = QUrl(link)] { open(url); };
  }

  QString noticeFor(const CalendarDigest& digest, const TileSources& sources, qsizetype all, qsizetype shown) const {
    if (!digest.calendarMessage.isEmpty()) return digest.calendarMessage;
    if (all > shown) return tr("And %1 more").arg(all - shown);
    if (all > 0) return {};
    const qint64 days = sources.now.date().daysTo(month_->chosen());
    if (days < -Calendar::daysBack || days >= Calendar::daysAhead)
      return tr("Events are read for the last five and the next ten weeks.");
    return tr("No events");
  }

  MonthGrid* month_;
  SectionLabel* heading_;
  QVBoxLayout* agenda_;
  TextLabel* notice_;
  Button* folder_;
  QLocale locale_;
  QList<Occasion> shown_;
  QList<AgendaRow*> rows_;
};

}  // namespace

std::unique_ptr<TilePanel> makeCalendarPanel(const PanelContext& context) {
  return std::make_unique<CalendarPanel>(context);
}

}  // namespace tarnwick
