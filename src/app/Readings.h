#pragma once

#include <QObject>
#include <memory>
#include <optional>

#include "calendar/Calendar.h"
#include "calendar/CalendarDigest.h"
#include "clipboard/ClipboardHistory.h"
#include "files/Bookmarks.h"
#include "files/FolderStacks.h"
#include "files/RecentFiles.h"
#include "files/ScreenshotFolder.h"
#include "files/Thumbnails.h"
#include "store/AppStore.h"
#include "store/Services.h"
#include "system/ProcessMonitor.h"
#include "system/SystemTemperature.h"
#include "system/ports/MachineDetails.h"
#include "views/tiles/ReadingServices.h"
#include "widgets/catalog/Family.h"

namespace tarnwick {

class ClockFormat;
class Connections;
class CurrencyRates;
class MediaService;
class WindowService;
class ZoomMeetingService;

/// Where the readings come from; nothing in it is null.
struct ReadingPorts {
  ClockFormat& clockFormat;     ///< Outlives them.
  Connections& connections;     ///< Outlives them.
  WindowService& windows;       ///< Outlives them.
  ZoomMeetingService& meeting;  ///< Outlives them.
  MediaService& media;          ///< Outlives them.
  std::unique_ptr<CalendarSource> calendar;
  std::unique_ptr<ProcessSource> processes;
  std::unique_ptr<ProcessorTemperatures> temperatures;
  std::unique_ptr<MachineDetails> machine;
};

/// What tiles read of the machine, of the user's calendars and of their files. Made before the store, which drives it
/// on its beat, and outlives it. Making it is cheap: nothing is read before a tile asks.
class Readings : public QObject {
  Q_OBJECT
 public:
  Readings(ReadingPorts ports, ClipboardHistory& clipboard, Scheduler& scheduler);
  ~Readings() override;

  /// What the store is to drive.
  QList<BeatClient*> beatClients() { return {&temperature_, &processes_, &calendar_}; }
  /// Follows the store: what it shows decides what is read, and what fails lands in its message line.
  void follow(AppStore& store);

  /// Lets converters ask for exchange rates, which must outlive the docks. Without them there are no currencies.
  void useRates(CurrencyRates& rates);

  /// Begins to listen to what the first picture does not need.
  void start();

  /// What tiles and panels ask, with the applications and windows of the desktop.
  ReadingServices services(const Services& services);
  /// How the desktop writes the hour; absent where it leaves that to the language, and until it has answered.
  std::optional<bool> uses24Hour() const;
  std::shared_ptr<const CalendarDigest> calendar(const QDateTime& now);
  void setCompleted(const Reminder& reminder, bool completed) { calendar_.setCompleted(reminder, completed); }
  ProcessMonitor& processes() { return processes_; }
  Connections& connections() { return ports_.connections; }
  WindowService& windows() { return ports_.windows; }
  MediaService& media() { return ports_.media; }

 Q_SIGNALS:
  /// calendar() gives another digest, not only because of the time.
  void calendarChanged();
  /// Other tiles, those of these families, show something else than before.
  void changed(const QList<Family>& families);
  /// The desktop writes the hour in another way.
  void clockFormatChanged();

 private:
  ReadingPorts ports_;
  ClipboardHistory& clipboard_;
  Calendar calendar_;
  CalendarDigests digests_;
  ProcessMonitor processes_;
  SystemTemperature temperature_;
  RecentFiles recent_;
  Bookmarks bookmarks_;
  ScreenshotFolder screenshots_;
  FolderStacks stacks_;
  Thumbnails thumbnails_;
  CurrencyRates* rates_ = nullptr;
};

}  // namespace tarnwick
