#include "store/WidgetEditor.h"

#include <QCoreApplication>
#include <QUrl>
#include <algorithm>
#include <array>

#include "base/DomainError.h"
#include "base/Text.h"
#include "config/DockConfiguration.h"
#include "widgets/catalog/Catalog.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kDefaultMinutes = 25;
constexpr double kMostMinutes = 1440;
constexpr int kMostGlasses = 100;

constexpr std::array kRunningState{
    "deadline"_L1,      "remaining"_L1,    "started"_L1, "elapsed"_L1, "phase"_L1,
    "sessions"_L1,      "lastReminder"_L1, "glasses"_L1, "day"_L1,     "lastWallpaperChange"_L1,
    "completedDays"_L1, "history"_L1};

void keepRunningState(DockWidget& widget, const DockWidget& stored) {
  for (const QString key : kRunningState) {
    const auto current = stored.options.constFind(key);
    if (current == stored.options.constEnd()) {
      widget.options.remove(key);
    } else {
      widget.options.insert(key, *current);
    }
  }
}

void checkCodexExecutable(DockWidget& widget, const WidgetEditor::Hooks& hooks) {
  QString& path = widget.options[u"codexExecutable"_s];
  if (path.isEmpty()) path = hooks.defaultCodexExecutable;
  if (!hooks.isExecutable(path)) {
    throw DomainError::invalid(QCoreApplication::translate("WidgetEditor", "Choose your installed Codex executable."));
  }
}

void checkDuration(DockWidget& widget, const DockWidget& stored) {
  const QString entered = widget.options.value(u"minutes"_s);
  const std::optional<double> minutes = entered.isEmpty() ? kDefaultMinutes : Text::number(entered);
  if (!minutes || !(*minutes > 0 && *minutes <= kMostMinutes)) {
    throw DomainError::invalid(
        QCoreApplication::translate("WidgetEditor", "Enter a duration between 0 and 1440 minutes."));
  }
  if (*minutes != stored.number(u"minutes"_s, kDefaultMinutes)) {
    widget.options.remove(u"deadline"_s);
    widget.options.remove(u"remaining"_s);
  }
}

void checkGoal(const DockWidget& widget) {
  const QString entered = widget.options.value(u"goal"_s);
  if (entered.isEmpty()) return;
  bool isInteger = false;
  const int goal = entered.toInt(&isInteger);
  const bool isBare = entered == entered.trimmed();
  if (!isInteger || !isBare || goal < 1 || goal > kMostGlasses) {
    throw DomainError::invalid(QCoreApplication::translate("WidgetEditor", "Enter a goal between 1 and 100 glasses."));
  }
}

void checkEndpoint(const DockWidget& widget) {
  const QString endpoint = widget.options.value(u"endpoint"_s);
  if (endpoint.isEmpty()) return;
  const QUrl address(endpoint);
  // An "@" in the authority tells of a user part even where that part is empty.
  const bool isBare = !address.authority().contains(u'@');
  if (!address.isValid() || address.scheme() != "https"_L1 || address.host().isEmpty() || !isBare) {
    throw DomainError::invalid(
        QCoreApplication::translate("WidgetEditor", "Use a valid HTTPS endpoint without credentials in its URL."));
  }
}

}  // namespace

bool WidgetEditor::isRunningState(const QString& key) {
  return std::ranges::find(kRunningState, key) != kRunningState.end();
}

WidgetEditor::Outcome WidgetEditor::save(const DockWidget& edited, const DockWidget& stored, bool credentialChanged,
                                         const Hooks& hooks) {
  DockWidget widget = edited;
  keepRunningState(widget, stored);

  const QString mode = widget.options.value(u"connectionMode"_s);
  const bool isCodex = widget.kind == "codexUsage"_L1 || widget.kind == "codexUsageGauge"_L1;
  if (isCodex && mode == "codexLocal"_L1) checkCodexExecutable(widget, hooks);
  if (mode == "native"_L1) widget = hooks.configured(widget);

  const QString& family = Catalog::find(widget.kind).family;
  const bool isConnected = isConnectedFamily(family);
  if (family == "timer"_L1 && widget.kind != "stopwatch"_L1) checkDuration(widget, stored);
  if (family == "water"_L1) checkGoal(widget);
  if (isConnected) checkEndpoint(widget);
  // One entry that the document refuses would keep every later change from being saved, so it is refused here.
  DockConfiguration::validated(widget);

  const bool showsWeather =
      family == "weather"_L1 || (widget.kind == "todayClock"_L1 && !widget.options.value(u"city"_s).isEmpty());
  return {.saveCredential = isConnected && credentialChanged,
          .widget = std::move(widget),
          .refresh = isConnected || showsWeather};
}

}  // namespace tarnwick
