#include "views/families/calendar/CalendarRoom.h"

#include <algorithm>

#include "base/LocalFigures.h"
#include "views/families/calendar/CalendarTiles.h"
#include "views/families/calendar/EventWords.h"
#include "views/families/calendar/ReminderRow.h"
#include "views/panels/PanelWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype kMostInSection = 6;  ///< Of a section.

struct Section {
  QString title;
  QList<Reminder> reminders;
  QStringList words;  ///< When each is due.
  qsizetype more = 0;
  bool operator==(const Section&) const = default;
};

class RemindersPanel final : public TilePanel {
 public:
  explicit RemindersPanel(const PanelContext& context) : TilePanel(context) {
    // The first section brings the space above it.
    body().setContentsMargins(theme::kRowOverhang, 0, theme::kRowOverhang, 0);
  }

 protected:
  void refresh(const TileSources& sources) override {
    const CalendarDigest& digest = digestOf(sources);
    setMessage(digest.problem == digest.reminderMessage ? QString() : digest.problem);
    if (!digest.reminderMessage.isEmpty()) return showNotice(digest.reminderMessage);
    const QList<Section> sections = sectionsOf(digest, sources);
    if (sections.isEmpty()) {
      showEmpty({definition().symbol, {}, PanelWords::tr("No reminders"), PanelWords::tr("Nothing is due."), {}, {}});
      return;
    }
    hideEmpty();
    const auto due = digest.dueToday.size();
    header().setNote(due > 0 ? PanelWords::tr("%1 due").arg(LocalFigures::number(due)) : QString());
    if (sections != shown_) build(sections);
  }

 private:
  void showNotice(const QString& sentence) {
    showEmpty({definition().symbol, {}, title(), sentence, PanelWords::tr("Add Calendar Folder…"), [this] {
                 context().commands.addCalendarFolder();
               }});
  }

  static QList<Section> sectionsOf(const CalendarDigest& digest, const TileSources& sources) {
    Section overdue{PanelWords::tr("Overdue"), {}, {}, 0};
    Section today{PanelWords::tr("Today"), {}, {}, 0};
    Section later{PanelWords::tr("Later"), {}, {}, 0};
    Section done{PanelWords::tr("Done today"), {}, {}, 0};
    const auto put = [&sources](Section& section, const Reminder& reminder) {
      if (section.reminders.size() >= kMostInSection) {
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
    const auto complete = [this](const Reminder& reminder, bool done) {
      context().commands.completeReminder(reminder, done);
      refreshNow();
    };
    for (const Section& section : sections) {
      parts_ << addSection(section.title, section.more > 0
                                              ? PanelWords::tr("%1 more").arg(LocalFigures::number(section.more))
                                              : QString());
      for (qsizetype i = 0; i < section.reminders.size(); ++i) {
        QWidget* row = makeReminderRow(section.reminders[i], section.words[i], i > 0, complete);
        body().addWidget(row);
        parts_ << row;
      }
    }
  }

  QList<Section> shown_;
  QList<QWidget*> parts_;
};

}  // namespace

std::unique_ptr<TilePanel> makeRemindersPanel(const PanelContext& context) {
  return std::make_unique<RemindersPanel>(context);
}

}  // namespace tarnwick
