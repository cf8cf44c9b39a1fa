#pragma once

#include <QPointer>
#include <memory>

#include "base/OrderedWork.h"
#include "base/Scheduler.h"
#include "calendar/ports/CalendarSource.h"
#include "platform/ical/CalendarPlaces.h"
#include "platform/ical/CalendarScan.h"
#include "platform/ical/FolderWatch.h"

namespace tarnwick {

/// Calendars that lie in iCalendar files: Evolution's local ones, ~/.calendars, ~/.local/share/calendars and folders
/// that the user adds. One thread reads them, when they are asked for and something changed; the library that
/// understands them is loaded with the first file.
class ICalendarFiles final : public CalendarSource {
  Q_OBJECT
 public:
  /// `scheduler` must outlive it.
  /// Its end waits for what runs, which takes as long as one file does.
  explicit ICalendarFiles(Scheduler& scheduler, CalendarPlaces places = CalendarPlaces::ofUser());

  void load(const CalendarRange& range, QObject* context, Loaded done) override;
  void setCompleted(const Reminder& reminder, bool completed, const QDateTime& at, QObject* context,
                    Done done) override;
  void setFolders(const QStringList& folders) override;

 private:
  void scan();
  void take(const CalendarScan::Result& result);
  void deliver();
  void fileChanged();
  void outdate();

  Scheduler& scheduler_;
  CalendarPlaces places_;
  QStringList added_;
  std::shared_ptr<CalendarScan> scan_;
  FolderWatch watch_;
  JobHandle soon_;
  CalendarRange range_;    ///< What is asked for,
  CalendarRange scanned_;  ///< and what the reading under way looks for.
  CalendarReading reading_;
  QList<std::pair<QPointer<QObject>, Loaded>> waiting_;
  bool isCurrent_ = false;  ///< `reading_` is what the files hold in `range_`, as far as we know.
  bool isScanning_ = false;
  bool isAgain_ = false;  ///< What is being read was changed meanwhile.
  bool wasAsked_ = false;
  OrderedWork work_;  ///< The last member: its answers use the others.
};

}  // namespace tarnwick
