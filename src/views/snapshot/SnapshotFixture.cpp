#include "views/snapshot/SnapshotFixture.h"

#include <QTimeZone>

#include "base/DomainError.h"
#include "store/NoCommands.h"
#include "views/families/Rooms.h"
#include "views/theme/DesktopLook.h"
#include "views/theme/SnapshotScenery.h"
#include "widgets/ClockWords.h"
#include "widgets/catalog/Catalog.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// Time that stands still.
class FrozenScheduler final : public Scheduler {
 public:
  QDateTime now() const override { return SnapshotFixture::moment(); }
  double reference() const override { return 0; }
  JobHandle after(double, std::function<void()>) override { return std::make_unique<Never>(); }
  JobHandle every(double, std::function<void()>) override { return std::make_unique<Never>(); }

 private:
  struct Never final : Job {};
};

class FixedToggles final : public Toggles {
 public:
  ToggleState state(Toggle toggle) const override { return SnapshotFixture::sources().toggles.value(toggle); }
  void set(Toggle, bool) override {}
  void start() override {}
};

/// A program that can do everything.
class PicturedCommands final : public NoCommands {
 public:
  explicit PicturedCommands(AppStore& store) : store_(store) {}
  bool can(Optional) const override { return true; }
  void changeWidget(const DockWidget& widget, const QString&, const QString&) override { store_.update(widget); }

 private:
  AppStore& store_;
};

}  // namespace

QDateTime SnapshotFixture::moment() { return QDateTime(QDate(2026, 11, 24), QTime(10, 24, 36), QTimeZone::utc()); }

QLocale& SnapshotFixture::locale() {
  static QLocale locale(QLocale::English, QLocale::UnitedKingdom);
  return locale;
}

TileSources SnapshotFixture::sources() {
  TileSources sources;
  sources.now = moment();
  sources.locale = locale();
  sources.use24Hour = ClockWords::writes24Hours(sources.locale);
  for (const Room* room : Rooms::all())
    if (room->picture) room->picture(sources);
  return sources;
}

DockWidget SnapshotFixture::widgetOf(const QString& kind) {
  return {QUuid::createUuidV5(QUuid(), kind), kind, {}, Rooms::pictured(kind, moment())};
}

DockConfiguration SnapshotFixture::configuration() {
  DockConfiguration config;
  config.onboardingComplete = true;
  config.profiles.clear();
  for (const WidgetDefinition& definition : Catalog::items()) {
    if (config.profiles.isEmpty() || config.profiles.last().widgets.size() >= 100) {
      config.profiles.append(DockProfile::initial());
      config.profiles.last().widgets.clear();
    }
    config.profiles.last().widgets.append(widgetOf(definition.id));
  }
  return config;
}

DockRow SnapshotFixture::dock() {
  DockRow row = starterDock();
  for (const QLatin1StringView kind : Catalog::picturedKinds()) row.widgets << widgetOf(kind);
  row.runningApps = row.runningApps.mid(0, 3);
  return row;
}

DockRow SnapshotFixture::starterDock() {
  DockRow row;
  for (const DockWidget& widget : DockProfile::initial().widgets) row.widgets << widgetOf(widget.kind);
  for (const QString& name : {u"Browser"_s, u"Files"_s, u"Editor"_s, u"Terminal"_s, u"Mail"_s, u"Music"_s}) {
    DockApp app;
    app.id = static_cast<quint64>(row.runningApps.size()) + 1;
    app.name = name;
    app.icon = name.toLower();
    app.front = row.runningApps.isEmpty();
    row.runningApps << app;
  }
  row.highContrast = DesktopLook::now().highContrast;
  return row;
}

SnapshotStore::SnapshotStore()
    : scheduler_(std::make_unique<FrozenScheduler>()),
      desktop_(std::make_unique<NoDesktop>(*scheduler_)),
      toggles_(std::make_unique<FixedToggles>()),
      store_(std::make_unique<AppStore>(desktop_->diagnosticSetup())),
      readings_(std::make_unique<FixedReadings>(*scheduler_)) {
  if (!store_->isDiagnostic())
    throw DomainError::invalid(QStringLiteral("Pictures are made without a user's data only."));
  store_->setFrozenDate(SnapshotFixture::moment());
  store_->edit([](DockConfiguration& config) { config = SnapshotFixture::configuration(); });
  commands_ = std::make_unique<PicturedCommands>(*store_);
  readings_->icons = &SnapshotScenery::icon;
  const PicturedParts parts{*readings_, SnapshotFixture::moment()};
  for (const Room* room : Rooms::all()) {
    if (room->fillStore) room->fillStore(*store_, parts.now);
    if (room->fillReadings) room->fillReadings(parts);
  }
}

SnapshotStore::~SnapshotStore() = default;

PanelContext SnapshotStore::contextOf(const QString& kind, Commands& commands) {
  return {*store_,
          *scheduler_,
          *toggles_,
          commands,
          SnapshotFixture::widgetOf(kind).id,
          u"fixture"_s,
          [] { return KeptSources::given(&SnapshotFixture::sources); },
          readings_->services()};
}

}  // namespace tarnwick
