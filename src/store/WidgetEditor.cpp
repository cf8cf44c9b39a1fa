#include "store/WidgetEditor.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QUrl>
#include <algorithm>
#include <array>

#include "base/DomainError.h"
#include "base/Text.h"
#include "config/DockConfiguration.h"
#include "services/ProviderTable.h"
#include "usage/CodexUsage.h"
#include "widgets/HabitMath.h"
#include "widgets/TimeMath.h"
#include "widgets/catalog/Catalog.h"
#include "widgets/catalog/Family.h"
#include "widgets/catalog/KindTraits.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

struct WidgetEditorWords {
  Q_DECLARE_TR_FUNCTIONS(WidgetEditor)
};

constexpr double kMostMinutes = 1440;

constexpr std::array kRunningState{
    option::deadline,      option::remaining,    option::started, option::elapsed, option::phase,
    option::sessions,      option::lastReminder, option::glasses, option::day,     option::lastWallpaperChange,
    option::completedDays, option::history};

void keepRunningState(DockWidget& widget, const DockWidget& stored) {
  for (const QLatin1StringView key : kRunningState) {
    const auto current = stored.options.constFind(key);
    if (current == stored.options.constEnd()) {
      widget.options.remove(key);
    } else {
      widget.options.insert(key, *current);
    }
  }
}

void checkCodexExecutable(DockWidget& widget, const WidgetEditor::Hooks& hooks) {
  QString& path = widget.options[option::codexExecutable];
  if (path.isEmpty()) path = hooks.defaultCodexExecutable();
  if (!hooks.isExecutable(path)) {
    throw DomainError::invalid(WidgetEditorWords::tr("Choose your installed Codex executable."));
  }
}

void checkDuration(DockWidget& widget, const DockWidget& stored) {
  const QString entered = widget.options.value(option::minutes);
  const std::optional<double> minutes = entered.isEmpty() ? TimeMath::kDefaultMinutes : Text::number(entered);
  if (!minutes || !(*minutes > 0 && *minutes <= kMostMinutes)) {
    throw DomainError::invalid(WidgetEditorWords::tr("Enter a duration between 0 and 1440 minutes."));
  }
  if (*minutes != stored.number(option::minutes, TimeMath::kDefaultMinutes)) {
    widget.options.remove(option::deadline);
    widget.options.remove(option::remaining);
  }
}

void checkGoal(const DockWidget& widget) {
  const QString entered = widget.options.value(option::goal);
  if (entered.isEmpty()) return;
  bool isInteger = false;
  const int goal = entered.toInt(&isInteger);
  const bool isBare = entered == entered.trimmed();
  if (!isInteger || !isBare || goal < 1 || goal > WaterMath::kMostGlasses) {
    throw DomainError::invalid(WidgetEditorWords::tr("Enter a goal between 1 and 100 glasses."));
  }
}

void checkEndpoint(const DockWidget& widget) {
  const QString endpoint = widget.options.value(option::endpoint);
  if (endpoint.isEmpty()) return;
  const QUrl address(endpoint);
  // An "@" in the authority means a user part even where that part is empty.
  const bool isBare = !address.authority().contains(u'@');
  if (!address.isValid() || address.scheme() != "https"_L1 || address.host().isEmpty() || !isBare) {
    throw DomainError::invalid(WidgetEditorWords::tr("Use a valid HTTPS endpoint without credentials in its URL."));
  }
}

}  // namespace

bool WidgetEditor::Hooks::isExecutable(const QString& path) const {
  const QFileInfo file(path);
  return file.isFile() && file.isExecutable();
}

QString WidgetEditor::Hooks::defaultCodexExecutable() const { return CodexRPCRead::defaultExecutable(); }

DockWidget WidgetEditor::Hooks::configured(const DockWidget& widget) const { return tarnwick::configured(widget); }

bool WidgetEditor::isRunningState(const QString& key) {
  return std::ranges::find(kRunningState, key) != kRunningState.end();
}

WidgetEditor::Outcome WidgetEditor::save(const DockWidget& edited, const DockWidget& stored, bool credentialChanged,
                                         const Hooks& hooks) {
  DockWidget widget = edited;
  keepRunningState(widget, stored);

  const QString mode = widget.options.value(option::connectionMode);
  const KindTraits& traits = KindTraits::of(widget.kind);
  if (traits.readsCodex && mode == value::codexLocal) checkCodexExecutable(widget, hooks);
  if (mode == value::native) widget = hooks.configured(widget);

  const QString& family = Catalog::find(widget.kind).family;
  const bool isConnected = isConnectedFamily(family);
  if (family == Family::Timer && traits.run != TimerRun::Stopwatch) checkDuration(widget, stored);
  if (family == Family::Water) checkGoal(widget);
  if (isConnected) checkEndpoint(widget);
  // One entry that the document refuses would keep every later change from being saved, so it is refused here.
  DockConfiguration::validated(widget);

  const bool hasPlace =
      !widget.options.value(option::city).isEmpty() || widget.options.contains(option::weatherLocation);
  const bool showsWeather = family == Family::Weather || (traits.showsCityWeather && hasPlace);
  return {.saveCredential = isConnected && credentialChanged,
          .widget = std::move(widget),
          .refresh = isConnected || showsWeather};
}

}  // namespace tarnwick
