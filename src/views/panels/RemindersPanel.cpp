#include "views/panels/RemindersPanel.h"

#include <QCoreApplication>
#include <algorithm>

#include "views/controls/Rows.h"
#include "views/tiles/EventWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype kMostRows = 6;  ///< Of a section.

struct Section {
  QString title;
  QList<Reminder> reminders;
  QStringList words;  ///< When each is due.
  qsizetype more = 0;
  bool operator==(const Section&) const = default;
};

class RemindersPanel final : public TilePanel {
  Q_DECLARE_TR_FUNCTIONS(Panels)

 public:
  explicit RemindersPanel(const PanelContext& context) : TilePanel(context) {
    // The first section brings the room above it.
    body().setContentsMargins(theme::kRowBleed, 0, theme::kRowBleed, 0);
  }

 protected:
  void refresh(const TileSources& sources) override {
    static const CalendarDigest none;
    const CalendarDigest& digest = sources.calendar ? *sources.calendar : none;
    if (!digest.reminderMessage.isEmpty()) return showNotice(digest.reminderMessage);
    const QList<Section> sections = sectionsOf(digest, sources);
    if (sections.isEmpty()) {
      showEmpty({definition().symbol, {}, tr("No reminders"), tr("Nothing is due."), {}, {}});
      return;
    }
    hideEmpty();
    const auto due = digest.dueToday.size();
    header().setNote(due > 0 ? tr("%1 due").arg(due) : QString());
    if (sections != shown_) build(sections);
  }

 private:
  void showNotice(const QString& sentence) {
    const auto add = context().actions.addCalendarFolder;
    showEmpty({definition().symbol, {}, title(), sentence, add ? tr("Add Calendar Folder…") : QString(), add});
  }

  static QList<Section> sectionsOf(const CalendarDigest& digest, const TileSources& sources) {
    Section overdue{tr("Overdue"), {}, {}, 0};
    Section today{tr("Today"), {}, {}, 0};
    Section later{tr("Later"), {}, {}, 0};
    Section done{tr("Done today"), {}, {}, 0};
    const auto put = [&sources](Section& section, const Reminder& reminder) {
      if (section.reminders.size() >= kMostRows) {
        ++section.more;
        return;
      }
      section.reminders << reminder;
      section.words << EventWords::briefDue(reminder, sources);
    };
    for (const Reminder& reminder : digest.reminders) {
      if (ReminderModel::isOverdue(reminder, sources.now))
        put(overdue, reminder);
      else
        put(reminder.due && reminder.due->date() <= sources.now.date() ? today : later, reminder);
    }
    for (const Reminder& reminder : digest.completedToday) put(done, reminder);
    QList<Section> sections{overdue, today, later, done};
    sections.removeIf([](const Section& section) { return section.reminders.isEmpty(); });
    return sections;
  }

  void build(const QList<Section>& sections) {
    shown_ = sections;
    for (QWidget* old : std::as_const(parts_)) {
      old->hide();
      old->deleteLater();  // One of them may have been clicked to come here.
    }
    parts_.clear();
    for (const Section& section : sections) {
      parts_ << addSection(section.title, section.more > 0 ? tr("%1 more").arg(section.more) : QString());
      for (qsizetype i = 0; i < section.reminders.size(); ++i) {
        QWidget* row = makeRow(section.reminders[i], section.words[i], i > 0);
        body().addWidget(row);
        parts_ << row;
      }
    }
  }

  QWidget* makeRow(const Reminder& reminder, const QString& when, bool parted) {
    const auto complete = context().actions.completeReminder;
    if (!reminder.canComplete || !complete) {
      auto* row = new ListRow(reminder.title);
      row->setValue(when, Tone::Secondary);
      row->setParted(parted);
      row->setToolTip(tr("%1 can only be read here.").arg(reminder.calendar));
      return row;
    }
    auto* row = new CheckRow(reminder.title);
    row->setValue(when);
    row->setChecked(reminder.completed);
    row->setParted(parted);
    connect(row, &QAbstractButton::clicked, this, [this, complete, reminder](bool done) {
      complete(reminder, done);
      refreshNow();
    });
    return row;
  }

  QList<Section> shown_;
  QList<QWidget*> parts_;
};

}  // namespace

std::unique_ptr<TilePanel> makeRemindersPanel(const PanelContext& context) {
  return std::make_unique<RemindersPanel>(context);
}

}  // namespace tarnwick
