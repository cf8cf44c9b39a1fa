#include "views/families/calendar/CalendarRoom.h"

#include <algorithm>

#include "base/LocalFigures.h"
#include "views/controls/Buttons.h"
#include "views/controls/FullWidth.h"
#include "views/controls/PlainTip.h"
#include "views/controls/Rows.h"
#include "views/families/calendar/CalendarTiles.h"
#include "views/families/calendar/DayAgenda.h"
#include "views/families/calendar/EventWords.h"
#include "views/families/calendar/ReminderRow.h"
#include "views/panels/PanelWords.h"
#include "views/panels/WeatherRow.h"
#include "widgets/ClockWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype kMostOverviewEvents = 5;
constexpr qsizetype kMostDue = 5;  ///< Of reminders, and of things to do.
constexpr int kOverviewNoticeGap = 8;

/// A heading with rows below it, or a sentence where there are none.
struct Part {
  SectionLabel* heading = nullptr;
  RowList* rows = nullptr;
  TextLabel* sentence = nullptr;

  void say(const QString& words) const {
    sentence->setText(words);
    sentence->setVisible(!words.isEmpty());
  }
};

class OverviewPanel final : public TilePanel {
 public:
  explicit OverviewPanel(const PanelContext& context)
      : TilePanel(context),
        weather_(new WeatherRow(context, WeatherRow::Placeless::Nothing)),
        agenda_(new DayAgenda(context.commands, kMostOverviewEvents)),
        folder_(new Button(PanelWords::tr("Add Calendar Folder…"))) {
    if (context.commands.can(Commands::Optional::CalendarApp)) {
      auto* application = new IconButton(u"calendar"_s, PanelWords::tr("Open Calendar"));
      connect(application, &QPushButton::clicked, this, [this] { this->context().commands.openCalendarApp(); });
      header().addAction(application);
    }
    addFullWidth(body(), weather_);
    events_ = addPart(PanelWords::tr("Events"), agenda_);
    body().addSpacing(kOverviewNoticeGap);
    body().addWidget(folder_, 0, Qt::AlignLeft);
    connect(folder_, &QPushButton::clicked, this, [this] { this->context().commands.addCalendarFolder(); });
    reminders_ = addPart(PanelWords::tr("Reminders"), nullptr);
    todos_ = addPart(PanelWords::tr("To-dos"), nullptr);
  }

 protected:
  QString heading() const override { return heading_; }

  void refresh(const TileSources& sources) override {
    const CalendarDigest& digest = digestOf(sources);
    heading_ = ClockWords::dates(sources.now.date(), sources.locale).value(0);
    setMessage(digest.problem == digest.calendarMessage ? QString() : digest.problem);
    showWeather(sources);
    showEvents(digest, sources);
    showReminders(digest, sources);
    showTodos();
  }

 private:
  Part addPart(const QString& words, QWidget* content) {
    Part part;
    part.heading = addSection(words);
    part.rows = content ? nullptr : new RowList;
    body().addWidget(content ? content : part.rows);
    part.sentence = new TextLabel({}, TextStyle::Body, Tone::Secondary);
    part.sentence->setWordWrap(true);
    part.sentence->setContentsMargins(0, kOverviewNoticeGap / 2, 0, 0);
    body().addWidget(part.sentence);
    return part;
  }

  void showWeather(const TileSources& sources) {
    const bool isShown = weather_->show(widget(), sources);
    // A section brings the space above it along, the weather does not.
    const int top = isShown ? theme::kPanelHeaderBelow - theme::kSectionBelow : 0;
    body().setContentsMargins(theme::kRowOverhang, top, theme::kRowOverhang, 0);
  }

  void showEvents(const CalendarDigest& digest, const TileSources& sources) {
    agenda_->showDay(sources.now.date(), digest, sources);
    const qsizetype more = agenda_->all() - agenda_->shown();
    const bool soon = !digest.upcoming.isEmpty() && digest.upcoming.first().start.date() <= sources.now.date();
    events_.heading->setTrailing(soon ? EventWords::distance(digest.upcoming.first(), sources) : QString(),
                                 Tone::AccentWord);
    events_.say(!digest.calendarMessage.isEmpty() ? digest.calendarMessage
                : more > 0                        ? PanelWords::tr("And %1 more").arg(LocalFigures::number(more))
                : agenda_->all() == 0             ? PanelWords::tr("No events")
                                                  : QString());
    folder_->setVisible(!digest.calendarMessage.isEmpty());
  }

  void showReminders(const CalendarDigest& digest, const TileSources& sources) {
    const QList<Reminder>& due = digest.dueToday;
    const auto count = due.size();
    reminders_.heading->setTrailing(count > 0 ? PanelWords::tr("%1 due").arg(LocalFigures::number(count)) : QString());
    // Where there is no calendar, its sentence above says enough.
    const bool silent = !digest.reminderMessage.isEmpty() && !digest.calendarMessage.isEmpty();
    reminders_.heading->setVisible(!silent);
    reminders_.say(silent                              ? QString()
                   : !digest.reminderMessage.isEmpty() ? digest.reminderMessage
                   : count > kMostDue ? PanelWords::tr("And %1 more").arg(LocalFigures::number(count - kMostDue))
                   : count == 0       ? PanelWords::tr("Nothing is due.")
                                      : QString());
    QStringList words;
    for (const Reminder& reminder : due.first(std::min(count, kMostDue)))
      words << EventWords::briefDue(reminder, sources);
    if (due == dueShown_ && words == dueWords_) return;
    dueShown_ = due;
    dueWords_ = words;
    const auto complete = [this](const Reminder& reminder, bool done) {
      context().commands.completeReminder(reminder, done);
      refreshNow();
    };
    QList<QWidget*> rows;
    for (qsizetype i = 0; i < words.size(); ++i) rows << makeReminderRow(due[i], words[i], i > 0, complete);
    reminders_.rows->setRows(rows);
  }

  void showTodos() {
    const QList<TodoItem>& all = store().config().todos;
    const auto done = std::ranges::count(all, true, &TodoItem::completed);
    const auto open = all.size() - done;
    todos_.heading->setTrailing(
        all.isEmpty()
            ? QString()
            : PanelWords::tr("%1 of %2 done").arg(LocalFigures::number(done), LocalFigures::number(all.size())));
    todos_.say(open > kMostDue ? PanelWords::tr("And %1 more").arg(LocalFigures::number(open - kMostDue))
               : open == 0     ? PanelWords::tr("Nothing to do")
                               : QString());
    if (areTodosShown_ && all == todosShown_) return;
    areTodosShown_ = true;
    todosShown_ = all;
    QList<QWidget*> rows;
    for (const TodoItem& item : all)
      if (!item.completed && rows.size() < kMostDue) {
        auto* row = new CheckRow(item.text.simplified());
        row->setParted(!rows.isEmpty());
        setPlainTip(*row, item.text);
        connect(row, &QAbstractButton::clicked, this, [this, id = item.id] { store().toggleTodo(id); });
        rows << row;
      }
    todos_.rows->setRows(rows);
  }

  WeatherRow* weather_;
  DayAgenda* agenda_;
  Button* folder_;
  Part events_;
  Part reminders_;
  Part todos_;
  QString heading_;
  QList<Reminder> dueShown_;
  QStringList dueWords_;
  QList<TodoItem> todosShown_;
  bool areTodosShown_ = false;
};

}  // namespace

std::unique_ptr<TilePanel> makeOverviewPanel(const PanelContext& context) {
  return std::make_unique<OverviewPanel>(context);
}

}  // namespace tarnwick
