#pragma once

#include <QObject>
#include <QString>

#include "base/Scheduler.h"
#include "calendar/ports/CalendarSource.h"
#include "facilities/BeatClient.h"

namespace tarnwick {

/// The events and reminders that calendar tiles and panels show, from some weeks back to some weeks ahead. It is
/// read again on the beat (the day goes on); its owner calls `load` whenever `outdated` says so. Main thread only.
class Calendar final : public QObject, public BeatClient {
  Q_OBJECT
 public:
  static constexpr int daysBack = 35;
  static constexpr int daysAhead = 70;

  // What is shown in place of data until it was read for the first time.
  static QString unreadEvents() { return tr("Enable Calendar access to see your events."); }
  static QString unreadReminders() { return tr("Enable Reminders access to see your reminders."); }

  /// Both must outlive this object.
  Calendar(CalendarSource& source, const Scheduler& clock, QObject* parent = nullptr);

  const QList<CalendarEvent>& events() const { return events_; }   ///< With their meeting links, by their time.
  const QList<Reminder>& reminders() const { return reminders_; }  ///< See ReminderModel.
  /// What is shown in place of data; empty where there is a calendar (a list), even one without an event.
  const QString& calendarMessage() const { return calendarMessage_; }
  const QString& reminderMessage() const { return reminderMessage_; }
  /// A finished sentence about what was left out of the last reading; empty where nothing was.
  const QString& problem() const { return problem_; }
  /// The days for which there is data.
  CalendarRange range() const;

  /// What displays show from now on. Nothing is read before that needs it; becoming needed loads.
  void follow(const ActiveSets& active);

  /// Reads, unless a reading is under way; cheap while nothing changed. Does nothing while it is not needed.
  void load();

  /// One reading brings events and reminders.
  BeatStep step() const override { return BeatStep::Calendar; }
  int everyTicks() const override { return 60; }
  bool isNeededBy(const ActiveSets& active) const override;
  void start(const DockConfiguration& config, const ActiveSets& active) override;
  void beat(const ActiveSets& active) override;

  /// Ticks a reminder off, or takes the tick away. The reminder shows it at once; if it fails, it goes back and
  /// `failed` says why.
  void setCompleted(Reminder reminder, bool completed);

  /// Folders that the user added.
  void setFolders(const QStringList& folders) { source_.setFolders(folders); }

 Q_SIGNALS:
  void changed();
  /// The calendars changed underneath: `load` brings the news.
  void outdated();
  /// A finished sentence for the user.
  void failed(const QString& message);

 private:
  void take(const CalendarReading& reading);

  CalendarSource& source_;
  const Scheduler& clock_;
  QList<CalendarEvent> events_;
  QList<Reminder> reminders_;
  QString calendarMessage_;
  QString reminderMessage_;
  QString problem_;
  CalendarReading last_;
  bool isNeeded_ = false;
  bool isLoading_ = false;
  bool isLoaded_ = false;
  bool isOutdated_ = false;
};

}  // namespace tarnwick
