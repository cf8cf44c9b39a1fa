#include "app/Adapters.h"

#include <QCoreApplication>
#include <QCoroTask>
#include <QCryptographicHash>
#include <QDBusConnection>
#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include "app/Autostart.h"
#include "app/MovedWindows.h"
#include "app/NearbySender.h"
#include "apps/AppIcons.h"
#include "apps/AppLaunch.h"
#include "apps/AppOpener.h"
#include "apps/DesktopExec.h"
#include "apps/InstalledApps.h"
#include "apps/RunningApplications.h"
#include "base/DesktopId.h"
#include "commandbar/IndexedFileSearch.h"
#include "config/DataDirectory.h"
#include "files/RecentFiles.h"
#include "platform/dbus/AtSpiControls.h"
#include "platform/dbus/BusActivation.h"
#include "platform/dbus/DBusSessionApplication.h"
#include "platform/dbus/DesktopClockFormat.h"
#include "platform/dbus/DesktopContrastPreference.h"
#include "platform/dbus/DesktopMotionPreference.h"
#include "platform/dbus/DesktopNetworkReach.h"
#include "platform/dbus/DesktopNotifications.h"
#include "platform/dbus/DesktopToggles.h"
#include "platform/dbus/GeoClueLocation.h"
#include "platform/dbus/LauncherEntries.h"
#include "platform/dbus/LoginSessionEvents.h"
#include "platform/dbus/MprisPlayers.h"
#include "platform/dbus/PortalScreenColors.h"
#include "platform/dbus/StatusNotifierWatch.h"
#include "platform/docks/GuardianProcess.h"
#include "platform/docks/SystemDockPreferences.h"
#include "platform/ical/ICalendarFiles.h"
#include "platform/linux/BrowserProcess.h"
#include "platform/linux/FileOperations.h"
#include "platform/linux/LinuxMachineDetails.h"
#include "platform/linux/LinuxProcessSource.h"
#include "platform/linux/LinuxSystemCounters.h"
#include "platform/linux/PowerSupplies.h"
#include "platform/linux/ProcessCommandLine.h"
#include "platform/linux/ProcessLaunch.h"
#include "platform/linux/ProcessName.h"
#include "platform/linux/ReapedChild.h"
#include "platform/linux/SensorTemperatures.h"
#include "platform/net/LoadedTransport.h"
#include "platform/secret/SecretServiceStore.h"
#include "platform/sqlite/SqliteDatabases.h"
#include "platform/x11/X11Tray.h"
#include "services/CurrencyRates.h"
#include "services/ProviderTable.h"
#include "services/ServiceWords.h"
#include "services/WeatherLocation.h"
#include "services/WebSession.h"
#include "services/WidgetCredentials.h"
#include "usage/ClaudeActivityConnect.h"
#include "usage/ClaudeActivityFollower.h"
#include "usage/LocalReaders.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

namespace {

/// The name of the program that a process runs.
QString programOf(qint64 pid) { return DesktopExec::executableName(processCommandLine(pid)); }

QString cacheFolder() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) + QStringLiteral("/Tarnwick");
}

/// Each folder of settings has its own: a run on another one would take the values of this one's widgets for useless.
QString headlinesFile(const QString& dataDirectory) {
  const QString name = QStringLiteral("/remote-cache.json");
  const QString folder = QDir(dataDirectory).absolutePath();
  if (folder == QDir(defaultStorageDirectory({})).absolutePath()) return cacheFolder() + name;
  const QByteArray digest = QCryptographicHash::hash(folder.toUtf8(), QCryptographicHash::Sha256);
  return cacheFolder() + u'/' + QString::fromLatin1(digest.first(8).toHex()) + name;
}

/// Where the machine is, under the name that its weather has.
QCoro::Task<GeocodeCache::Place> placeHere(WeatherLocation location, std::stop_token stop) {
  const Coordinate here = co_await location.coordinate(stop);
  co_return GeocodeCache::Place{here.latitude, here.longitude,
                                QCoreApplication::translate("Services", "Current location")};
}

}  // namespace

Adapters::Adapters(Scheduler& scheduler, const LaunchEnvironment& environment, const QString& dataDirectory,
                   const QByteArray& certificates, const BaseAddresses& addresses)
    : scheduler_(scheduler),
      environment_(environment),
      dataDirectory_(dataDirectory),
      windowSystem_(WindowSystem::make(scheduler)),
      services_(makeServices()),
      clipboard_(keep(std::make_unique<ClipboardKeeper>(services_, dataDirectory, &programOf))),
      keychain_(std::make_shared<SecretServiceStore>(QDBusConnection::sessionBus()), dataDirectory),
      tokens_(keychain_),
      guardian_(keep(std::make_unique<GuardianProcess>(QCoreApplication::applicationFilePath(), scheduler_))),
      network_{.scheduler = &scheduler_, .certificates = certificates},
      addresses_(addresses),
      web_(std::make_shared<WebSession>(std::make_shared<LoadedTransport>(network_), keychain_, tokens_, scheduler_)),
      claudeActivity_(keep(std::make_unique<ClaudeActivityFollower>(
          scheduler,
          [this](const DockWidget& widget, RemoteValues::Cause cause) {
            connections_.values().refreshByItself(widget, cause);
          },
          ClaudeActivityConnect::folderIn(dataDirectory)))),
      perplexity_(makePerplexity()),
      connections_(keep(std::make_unique<LiveConnections>(connectionsSetup()))),
      windows_(keep(std::make_unique<WindowService>(
          WindowService::Setup{.windows = services_.windows,
                               .applications = [&apps = services_.runningApps] { return apps.list(); },
                               .session = services_.session,
                               .pictures = windowSystem_.pictures}))),
      meeting_(keep(std::make_unique<ZoomMeetingService>(
          ZoomMeetingService::Setup{.controls = [] { return std::make_unique<AtSpiControls>(); },
                                    .processes = [] { return processesNamed(QStringLiteral("zoom")); }}))),
      media_(keep(std::make_unique<MediaService>(
          MediaService::Setup{.scheduler = scheduler,
                              .players = keep(std::make_unique<MprisPlayers>(QDBusConnection::sessionBus(), scheduler)),
                              .fetch = coverFetch()}))),
      readings_(keep(std::make_unique<Readings>(readingPorts(), clipboard_.history(), scheduler))),
      session_(keep(std::make_unique<DBusSessionApplication>())) {
  readings_.useRates(keep(std::make_unique<CurrencyRates>(web_, addresses_.of(ServiceHost::ExchangeRates))));
}

Adapters::~Adapters() {
  while (!kept_.empty()) kept_.pop_back();
}

template <class Port>
Port& Adapters::keep(std::unique_ptr<Port> made) {
  Port& port = *made;
  kept_.push_back(std::move(made));
  return port;
}

Services Adapters::makeServices() {
  const QDBusConnection session = QDBusConnection::sessionBus();
  const QDBusConnection system = QDBusConnection::systemBus();
  auto& apps = keep(std::make_unique<InstalledApps>(AppEnvironment::ofProcess(), scheduler_));
  const RunningApplications::Self self{kDesktopId, QCoreApplication::applicationPid()};
  auto& icons = keep(std::make_unique<AppIcons>(AppEnvironment::ofProcess()));
  QObject::connect(&apps, &InstalledApps::changed, &apps, [&icons] { icons.clear(); });
  auto& activation = keep(std::make_unique<BusActivation>());
  auto& launch = keep(std::make_unique<AppLaunch>(AppEnvironment::ofProcess(), environment_, activation));
  launch.tokenFor = windowSystem_.activationToken;
  return {
      .scheduler = scheduler_,
      .screens = *windowSystem_.screens,
      .panels = *windowSystem_.panels,
      .zones = *windowSystem_.zones,
      .clocks = *windowSystem_.clocks,
      .motion = keep(std::make_unique<DesktopMotionPreference>(session)),
      .contrast = keep(std::make_unique<DesktopContrastPreference>(session)),
      .windows = *windowSystem_.windows,
      .hotKeys = *windowSystem_.hotKeys,
      .modifiers = *windowSystem_.modifiers,
      .colors = keep(std::make_unique<PortalScreenColors>(session)),
      .pasteboard = *windowSystem_.pasteboard,
      .session = keep(std::make_unique<LoginSessionEvents>(system)),
      .notifications = keep(std::make_unique<DesktopNotifications>(session)),
      .toggles = keep(std::make_unique<DesktopToggles>(session, system)),
      .files = keep(std::make_unique<FileOperations>()),
      .tray = keep(
          std::make_unique<EitherTray>(std::make_unique<StatusNotifierWatch>(session), std::make_unique<X11Tray>())),
      .clockFormat = keep(std::make_unique<DesktopClockFormat>(session)),
      .nearby = keep(std::make_unique<NearbySender>(AppEnvironment::ofProcess(), environment_)),
      .installedApps = apps,
      .runningApps =
          keep(std::make_unique<RunningApplications>(*windowSystem_.windows, apps, self, &processCommandLine)),
      .icons = icons,
      .opener = keep(std::make_unique<AppOpener>(apps, launch, scheduler_)),
      .hints = keep(std::make_unique<LauncherEntries>(session)),
  };
}

std::shared_ptr<PerplexityUsage> Adapters::makePerplexity() {
  BrowserProcess::Setup setup{.folder = dataDirectory_ + QStringLiteral("/Perplexity"),
                              .title = ServiceWords::tr("Sign in to Perplexity"),
                              .environment = environment_.variables};
  return std::make_shared<PerplexityUsage>(std::make_shared<BrowserProcess>(std::move(setup), scheduler_),
                                           addresses_.of(ServiceHost::Perplexity));
}

LiveConnections::Setup Adapters::connectionsSetup() {
  const Weather weather(
      web_, {.geocoding = addresses_.of(ServiceHost::Geocoding), .forecast = addresses_.of(ServiceHost::Forecast)});
  const WeatherLocation location(std::make_shared<GeoClueLocation>(QDBusConnection::systemBus()));
  const auto locate = [location](std::stop_token stop) { return placeHere(location, std::move(stop)); };
  return {.scheduler = scheduler_,
          .events = services_.session,
          .network = keep(std::make_unique<DesktopNetworkReach>(QDBusConnection::systemBus())),
          .session = web_,
          .keychain = keychain_,
          .tokens = tokens_,
          .loopback = [network = network_] { return loadedLoopbackServer(network); },
          .loader = WidgetLoader(weather, locate, allProviders(), localReaders()),
          .perplexity = perplexity_,
          .cacheFile = headlinesFile(dataDirectory_)};
}

WidgetLoader::Readers Adapters::localReaders() {
  const LocalReaders readers{
      .scheduler = scheduler_, .databases = std::make_shared<SqliteDatabases>(), .startChild = &startReapedChild};
  return {{value::claudeActivity, claudeActivity_.reader()},
          {value::geminiHistory, readers.geminiHistory()},
          {value::codexLocal, readers.codex()},
          {value::perplexitySession,
           [session = perplexity_, &scheduler = scheduler_](const DockWidget&, std::stop_token stop) {
             return session->read(scheduler.now(), std::move(stop));
           }}};
}

ReadingPorts Adapters::readingPorts() {
  return {.clockFormat = services_.clockFormat,
          .connections = connections_,
          .windows = windows_,
          .meeting = meeting_,
          .media = media_,
          .calendar = std::make_unique<ICalendarFiles>(scheduler_),
          .processes = std::make_unique<LinuxProcessSource>(),
          .temperatures = std::make_unique<SensorTemperatures>(),
          .machine = std::make_unique<LinuxMachineDetails>()};
}

StoreSetup Adapters::storeSetup() {
  return {.scheduler = scheduler_,
          .counters = std::make_unique<LinuxSystemCounters>(),
          .installedApps = services_.installedApps,
          .applications = services_.runningApps,
          .notifications = services_.notifications,
          .session = services_.session,
          .remote = connections_.values(),
          .credentials = keep(std::make_unique<WidgetCredentials>(keychain_, perplexity_)),
          .clipboard = clipboard_.history(),
          .reservations = keep(std::make_unique<ReservationService>(reservationSetup())),
          .clients = readings_.beatClients()
                     << &clipboard_.beatClient() << &claudeActivity_ << &windows_ << &meeting_ << &media_};
}

MediaService::Fetch Adapters::coverFetch() const {
  return
      [network = network_](const QUrl& address,
                           const std::function<void(const std::optional<QByteArray>&)>& done) -> std::shared_ptr<void> {
        struct Exchange {
          std::shared_ptr<HTTPTransport> transport;
          std::unique_ptr<HTTPTransfer> transfer;  ///< Goes first.
        };
        auto exchange = std::make_shared<Exchange>();
        exchange->transport = std::make_shared<LoadedTransport>(network);
        exchange->transfer =
            exchange->transport->send({.url = address, .headers = {}, .body = {}}, [done](const HTTPAnswer& answer) {
              const auto* const response = std::get_if<HTTPResponse>(&answer);
              constexpr int kFine = 200;
              done(response && response->status == kFine ? std::optional(response->body) : std::nullopt);
            });
        return exchange;
      };
}

ReservationService::Setup Adapters::reservationSetup() {
  return {.scheduler = scheduler_,
          .windows = services_.windows,
          .directory = dataDirectory_,
          .frames = windowSystem_.frames ? windowSystem_.frames : &makeWindowFrames,
          .launchOf = &processLaunch,
          .inPixels = windowSystem_.inPixels,
          .guard = [this](bool standsBy) {
            standsBy ? guardian_.watchWindows(dataDirectory_) : guardian_.releaseWindows();
          }};
}

DelegateSetup Adapters::delegateSetup() {
  const auto isOnBattery = [] {
    const auto power = PowerSupplies::read("/sys/class/power_supply");
    return power && power->flow == BatteryFlow::Draining;
  };
  auto& names = keep(std::make_unique<NameIndexKeeper>(cacheFolder() + QStringLiteral("/names"),
                                                       QFile::encodeName(QDir::homePath()), scheduler_, isOnBattery));
  auto& fileSearch = keep(std::make_unique<IndexedFileSearch>(
      names, [list = RecentFiles::sharedList()] { return RecentFiles::paths(list); }));
  auto& trusted = keep(std::make_unique<TrustedEntries>(dataDirectory_ + QStringLiteral("/trusted-entries.json")));
  services_.opener.setTrusted(&trusted);
  return {
      .preferences = keep(std::make_unique<SystemDockPreferences>(dataDirectory_)),
      .guard = guardian_,
      .application = session_,
      .socket = keep(std::make_unique<SocketSession>(dataDirectory_)),
      .readings = readings_,
      .clipboard = clipboard_,
      .fileSearch = fileSearch,
      .executable = QCoreApplication::applicationFilePath(),
      .environment = environment_,
      .autostartFile = Autostart::path(),
      .framesWindows = windowSystem_.framesWindows,
      .follow =
          [this](AppStore& store) {
            QObject::connect(&claudeActivity_, &ClaudeActivityFollower::called, &store, &AppStore::call);
          },
  };
}

}  // namespace tarnwick
