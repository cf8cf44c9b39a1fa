#include "app/Readings.h"

#include <QStandardPaths>

#include "clipboard/ports/Pasteboard.h"
#include "config/CalendarFolders.h"
#include "config/MediaConnection.h"
#include "desktop/ClockFormat.h"
#include "media/MediaService.h"
#include "services/CurrencyRates.h"
#include "widgets/WidgetFolder.h"
#include "windows/WindowService.h"
#include "windows/ZoomMeetingService.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

QString home(QStandardPaths::StandardLocation location) { return QStandardPaths::writableLocation(location); }

}  // namespace

Readings::Readings(ReadingPorts ports, ClipboardHistory& clipboard, Scheduler& scheduler)
    : ports_(std::move(ports)),
      clipboard_(clipboard),
      calendar_(*ports_.calendar, scheduler),
      digests_(calendar_),
      processes_(std::move(ports_.processes), scheduler),
      temperature_(std::move(ports_.temperatures)),
      recent_(RecentFiles::sharedList(), scheduler),
      bookmarks_({home(QStandardPaths::HomeLocation), home(QStandardPaths::GenericConfigLocation),
                  home(QStandardPaths::GenericDataLocation)},
                 scheduler),
      screenshots_(home(QStandardPaths::PicturesLocation), scheduler),
      stacks_(scheduler),
      thumbnails_(home(QStandardPaths::GenericCacheLocation)) {
  connect(&calendar_, &Calendar::outdated, &calendar_, &Calendar::load);
  const auto tell = [this](auto* reader, auto changedSignal, const QList<Family>& families) {
    connect(reader, changedSignal, this, [this, families] { Q_EMIT changed(families); });
  };
  connect(&calendar_, &Calendar::changed, this, &Readings::calendarChanged);
  connect(&ports_.clockFormat, &ClockFormat::changed, this, &Readings::clockFormatChanged);
  tell(&processes_, &ProcessMonitor::changed, {Family::Processes});
  tell(&temperature_, &SystemTemperature::changed, {Family::Temperature});
  tell(&recent_, &RecentFiles::changed, {Family::Files});
  tell(&bookmarks_, &Bookmarks::changed, {Family::Bookmarks});
  tell(&screenshots_, &ScreenshotFolder::changed, {Family::Files});
  tell(&stacks_, &FolderStacks::changed, {Family::Files});
  tell(&thumbnails_, &Thumbnails::ready, {Family::Files});
  tell(&ports_.windows, &WindowService::previewChanged, {Family::Windows});
  tell(&ports_.windows, &WindowService::followedChanged, {Family::Windows});
  tell(&ports_.meeting, &ZoomMeetingService::changed, {Family::Integration});
  tell(&ports_.media, &MediaService::changed, {Family::Music});
  tell(&clipboard_, &ClipboardHistory::didChange, {Family::Clipboard});
}

Readings::~Readings() = default;

void Readings::useRates(CurrencyRates& rates) {
  rates_ = &rates;
  connect(&rates, &CurrencyRates::changed, this, [this] { Q_EMIT changed({Family::Converter}); });
}

void Readings::start() { ports_.clockFormat.start(); }

std::optional<bool> Readings::uses24Hour() const { return ports_.clockFormat.uses24Hour(); }

void Readings::follow(AppStore& store) {
  const auto ask = [this, &store] {
    screenshots_.setChosen(store.config().screenshotFolder);
    calendar_.setFolders(CalendarFolders::of(store.config()));
    calendar_.follow(store.active());
    ports_.media.follow(store.config(), store.active());
    QSet<QString> stacks;
    for (const DockWidget& widget : store.active().widgets)
      if (showsStack(widget)) stacks.insert(widgetFolder(widget));
    stacks_.keep(stacks);
  };
  connect(&store, &AppStore::configChanged, this, ask);
  connect(&store, &AppStore::activeChanged, this, ask);
  connect(&ports_.media, &MediaService::connectionChanged, &store, [&store](const std::optional<QString>& source) {
    store.edit([&source](DockConfiguration& config) { MediaConnection::set(config, source); });
  });
  connect(&calendar_, &Calendar::failed, &store, &AppStore::setError);
  connect(&calendar_, &Calendar::changed, &store, [this, &store] {
    store.setCalendarMessage(calendar_.calendarMessage());
    store.setReminderMessage(calendar_.reminderMessage());
  });
  ask();
}

ReadingServices Readings::services(const Services& services) {
  return {.recent = recent_,
          .bookmarks = bookmarks_,
          .screenshots = screenshots_,
          .stacks = stacks_,
          .thumbnails = thumbnails_,
          .processes = processes_,
          .temperature = temperature_,
          .machine = *ports_.machine,
          .apps = services.installedApps,
          .windows = services.windows,
          .windowService = ports_.windows,
          .meeting = ports_.meeting,
          .media = ports_.media,
          .clipboard = clipboard_,
          .pasteboard = services.pasteboard,
          .connections = ports_.connections,
          .rates = rates_};
}

std::shared_ptr<const CalendarDigest> Readings::calendar(const QDateTime& now) { return digests_.at(now); }

}  // namespace tarnwick
