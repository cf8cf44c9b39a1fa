// How long the main thread is held up by connected widgets, what memory they take, and how they go about it: the
// program's own store, values, session, loader and transport, with servers in a process of their own.
//
//   measure_services           all cases; `together` or `each` alone for a dock of 150, or one widget after the other
//   measure_services --serve   the servers alone: where they are in one line, until the input ends
//
// A stall is a turn of the event loop that takes long: a frame would come late by it. See MeasuredTurns. Memory is
// compared with what is there once a first widget was fetched, since the network library stays loaded; the peak is what
// was resident more at any moment.
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <vector>

#include "MeasuredTurns.h"
#include "ServiceProcess.h"
#include "ServiceScript.h"
#include "config/Persistence.h"
#include "platform/net/LoadedTransport.h"
#include "secret/FakeSecretStore.h"
#include "services/LiveConnections.h"
#include "services/ProviderTable.h"
#include "services/WebSession.h"
#include "store/AppStore.h"
#include "store/NoDesktop.h"
#include "widgets/catalog/Kinds.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

constexpr qsizetype kWidgets = DockConfiguration::kMostWidgets;
constexpr double kAllAtOnce = 0.1;  ///< Seconds within which so many starts are no spreading.

struct Online final : NetworkReach {
  void start() override {}
  bool isKnown() const override { return true; }
  bool isOnline() const override { return true; }
  bool isOnItsWay() const override { return false; }
};

DockWidget connectedTo(const QString& address, const QString& field) {
  return {QUuid::createUuid(),
          u"revenueLemonSqueezy"_s,
          {},
          {{QString(option::endpoint), address}, {QString(option::field), field}}};
}

DockWidget connectedTo(const ServiceScript::Kind& kind) {
  DockWidget widget{QUuid::createUuid(), kind.kind, {}, kind.options};
  widget.options[QString(option::connectionMode)] = QString(value::native);
  return configured(widget);
}

/// The connected part of the program with these widgets on its dock.
class House {
 public:
  House(const ServiceProcess& services, const QList<DockWidget>& widgets)
      : keychain_(secrets_, folder_.path()),
        web_(std::make_shared<WebSession>(services.redirected(std::make_shared<LoadedTransport>(NetworkSetup{
                                              .scheduler = &scheduler_, .certificates = services.authority()})),
                                          keychain_, tokens_, scheduler_)),
        connections_({.scheduler = scheduler_,
                      .events = desktop_.session,
                      .network = network_,
                      .session = web_,
                      .keychain = keychain_,
                      .tokens = tokens_,
                      .loopback = {},
                      .loader = WidgetLoader(Weather(web_, {}), {}, allProviders()),
                      .perplexity = nullptr,
                      .cacheFile = folder_.filePath(u"remote-cache.json"_s)}) {
    for (const DockWidget& widget : widgets)
      secrets_->items.append({{Keychain::kService, Keychain::account(widget), folder_.path()}, {}, "key"});
    QObject::connect(&values(), &RemoteValues::changed, &values(), [this](QUuid id) { note(id); });
    DockConfiguration config;
    config.profiles = {DockProfile::initial()};
    config.profiles[0].widgets = widgets;
    config.activeProfileID = config.profiles[0].id;
    Persistence::save(config, folder_.filePath(u"config.json"_s));
    store_ = std::make_unique<AppStore>(StoreSetup{.scheduler = scheduler_,
                                                   .counters = std::make_unique<NoCounters>(),
                                                   .installedApps = desktop_.installedApps,
                                                   .applications = desktop_.applications,
                                                   .notifications = desktop_.notifications,
                                                   .session = desktop_.session,
                                                   .remote = connections_.values(),
                                                   .credentials = desktop_.facilities.credentials,
                                                   .clipboard = desktop_.facilities.clipboard,
                                                   .reservations = desktop_.facilities.reservations,
                                                   .storage = folder_.filePath(u"config.json"_s),
                                                   .platformReads = false});
  }

  RemoteValues& values() { return connections_.values(); }
  AppStore& store() { return *store_; }
  const QList<DockWidget>& widgets() const { return store_->widgets(); }

  /// Turns until so many widgets have begun a fetch since `forget`, and all have ended.
  bool settle(qsizetype count) {
    return turns.waitUntil(
        [&] { return std::ssize(begun_) >= count && std::ranges::none_of(values().remote(), &RemoteValue::loading); });
  }
  void forget() {
    begun_.clear();
    turns.reset();
    MeasuredMemory::resetPeak();
    resident_ = MeasuredMemory::resident();
  }

  void printTurns() const {
    std::printf("longest turn %6.2f ms, of which work %5.2f ms", turns.longest(), turns.mostWork());
  }
  /// What was resident more than at `forget`.
  double peak() const { return static_cast<double>(MeasuredMemory::peak() - resident_) / 1024; }
  void printFailures() {
    for (const DockWidget& widget : widgets()) {
      const RemoteValue value = values().remote().value(widget.id);
      if (value.failed) std::printf("  FAILED %s: %s\n", qPrintable(widget.kind), qPrintable(value.subtitle));
    }
  }
  /// Over how long the fetches began, and how many of them together.
  void printStarts() const {
    std::vector<double> at = begun_;
    std::ranges::sort(at);
    qsizetype most = 0;
    for (auto first = at.begin(); first != at.end(); ++first) {
      const auto behind = std::upper_bound(first, at.end(), *first + kAllAtOnce);
      most = std::max<qsizetype>(most, behind - first);
    }
    std::printf("%lld starts over %.1f s, at most %lld within %.0f ms", static_cast<long long>(at.size()),
                at.back() - at.front(), static_cast<long long>(most), kAllAtOnce * 1000);
  }

  MeasuredTurns turns;

 private:
  void note(QUuid id) {
    if (!values().remote().value(id).loading) {
      loading_.remove(id);
    } else if (!loading_.contains(id)) {
      loading_.insert(id);
      begun_.push_back(scheduler_.reference());
    }
  }

  QTemporaryDir folder_;
  SystemScheduler scheduler_;
  NoDesktop desktop_{scheduler_};
  Online network_;
  std::shared_ptr<test::FakeSecretStore> secrets_ = std::make_shared<test::FakeSecretStore>();
  Keychain keychain_;
  OAuthTokens tokens_{keychain_};
  std::shared_ptr<WebSession> web_;
  LiveConnections connections_;
  std::unique_ptr<AppStore> store_;
  QSet<QUuid> loading_;
  std::vector<double> begun_;
  qint64 resident_ = 0;
};

double megabytes(qint64 kibibytes) { return static_cast<double>(kibibytes) / 1024; }

void print(const ServiceProcess::Report& report) {
  std::printf("%3d requests, %7.1f kB", report.requests, static_cast<double>(report.bytes) / 1000);
}

/// One widget alone, refreshed as if its user wanted it.
void refreshOne(House& house, ServiceProcess& services, const DockWidget& widget, const QString& name) {
  services.report();
  house.forget();
  const qint64 before = MeasuredMemory::share();
  QElapsedTimer time;
  time.start();
  house.values().refresh(widget);
  const bool isDone = house.settle(1);
  const qint64 took = time.elapsed();
  const double peak = house.peak();
  std::printf("%-28s ", qPrintable(name));
  print(services.report());
  std::printf(", ");
  house.printTurns();
  std::printf(", %5lld ms, peak %+5.1f MiB", static_cast<long long>(took), peak);
  house.turns.waitUntil([] { return false; }, 1);
  std::printf(", a second later %+5.1f MiB%s\n", megabytes(MeasuredMemory::share() - before), isDone ? "" : " NO END");
}

void measureAll(ServiceProcess& services) {
  QList<DockWidget> widgets;
  for (int round = 0; round < 3; ++round) {
    for (const ServiceScript::Kind& kind : ServiceScript::providers()) widgets << connectedTo(kind);
  }
  for (qsizetype i = 0; widgets.size() < kWidgets; ++i)
    widgets.insert((i * 2) % widgets.size(),
                   connectedTo(ServiceScript::smallAddresses()[i % 4], QString(ServiceScript::kSmallField)));
  services.report();
  const qint64 nothing = MeasuredMemory::share();
  House house(services, widgets);
  house.forget();
  bool isDone = house.settle(1);
  const qint64 first = MeasuredMemory::share();
  const auto told = [&](const char* what) {
    std::printf("%-20s ", what);
    house.printTurns();
    std::printf(", peak %+.1f MiB%s\n  ", house.peak(), isDone ? "" : " NO END");
    house.printStarts();
    const ServiceProcess::Report report = services.report();
    std::printf("; ");
    print(report);
    std::printf(", at most %d connections to one host (%s)\n", report.most, qPrintable(report.busiest));
    house.printFailures();
  };
  isDone = house.settle(kWidgets);
  told("150 at the start");
  for (int round = 0; round < 2; ++round) {
    house.forget();
    house.values().beat(house.store().active());
    isDone = house.settle(kWidgets);
    told("150 on the beat");
    for (const double seconds : {1.0, 35.0}) {
      house.turns.waitUntil([] { return false; }, seconds);
      std::printf("  %.0f s later %+.1f MiB against the first widget's end, %+.1f MiB against no widget\n", seconds,
                  megabytes(MeasuredMemory::share() - first), megabytes(MeasuredMemory::share() - nothing));
    }
  }
}

void measureEach(ServiceProcess& services) {
  QList<DockWidget> widgets;
  for (const ServiceScript::Kind& kind : ServiceScript::providers()) widgets << connectedTo(kind);
  const qsizetype providers = widgets.size();
  const QList<ServiceScript::Large> large = ServiceScript::largeAddresses();
  for (const ServiceScript::Large& each : large) widgets << connectedTo(each.address, each.field);
  House house(services, widgets);
  house.forget();
  house.settle(widgets.size());
  for (qsizetype i = 0; i < widgets.size(); ++i)
    refreshOne(house, services, widgets[i], i < providers ? widgets[i].kind : u"5 MB: "_s + large[i - providers].what);
  house.printFailures();
}

int measure(const QByteArray& only) {
  ServiceProcess services;
  if (services.authority().isEmpty()) {
    std::fprintf(stderr, "The servers do not start.\n");
    return 1;
  }
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  if (only != "each") measureAll(services);
  if (only != "together") measureEach(services);
  return 0;
}

}  // namespace
}  // namespace tarnwick

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  if (argc == 2 && QByteArray(argv[1]) == "--serve") return tarnwick::ServiceProcess::serve();
  return tarnwick::measure(argc == 2 ? QByteArray(argv[1]) : QByteArray());
}
