#include "config/ForeignOptions.h"

#include <QHash>
#include <array>

#include "widgets/catalog/Options.h"

namespace tarnwick {

namespace {

constexpr std::array kOwn{
    option::server,           option::codexExecutable, option::claudeSettings, option::claudeHookExecutable,
    option::historyDirectory, option::control,         option::weatherLocation};

/// What a form derives from the server.
constexpr std::array kOfServer{option::endpoint, option::dashboard};

bool isOwnOnly(QLatin1StringView key, const QString& value) {
  return key != option::weatherLocation || value == value::current;
}

}  // namespace

void ForeignOptions::leaveOut(DockWidget& widget, const DockWidget* own) {
  for (const QLatin1StringView key : kOwn) {
    const auto found = widget.options.constFind(key);
    if (found == widget.options.constEnd() || !isOwnOnly(key, *found)) continue;
    if (own && own->options.value(key) == *found) continue;
    const QString dropped = *found;
    widget.options.remove(key);
    if (key != option::server) continue;
    for (const QLatin1StringView derived : kOfServer)
      if (widget.options.value(derived) == dropped) widget.options.remove(derived);
  }
}

void ForeignOptions::leaveOut(DockConfiguration& imported, const DockConfiguration& own) {
  QHash<QUuid, const DockWidget*> here;
  for (const DockProfile& profile : own.profiles)
    for (const DockWidget& widget : profile.widgets) here.insert(widget.id, &widget);
  for (DockProfile& profile : imported.profiles)
    for (DockWidget& widget : profile.widgets) leaveOut(widget, here.value(widget.id));
}

}  // namespace tarnwick
