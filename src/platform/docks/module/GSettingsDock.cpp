#include "platform/docks/module/GSettingsDock.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <algorithm>
#include <utility>

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

constexpr int kPatienceMs = 2000;

std::function<QString(double)> always(const QString& value) {
  return [value](double) { return value; };
}

/// As the library prints a double.
QString inSeconds(double seconds) { return QString::number(seconds, 'f', 1); }
QString inMilliseconds(double seconds) { return QString::number(qRound64(seconds * 1000)); }

/// Extensions bring their schemas along, in a folder that the machine's own source does not know.
QStringList extensionFolders() {
  QStringList folders;
  for (const QString& extension : {u"dash-to-dock@micxgx.gmail.com"_s, u"ubuntu-dock@ubuntu.com"_s}) {
    folders << QStandardPaths::locateAll(QStandardPaths::GenericDataLocation,
                                         u"gnome-shell/extensions/%1/schemas"_s.arg(extension),
                                         QStandardPaths::LocateDirectory);
  }
  return folders;
}

}  // namespace

GSettingsDock::Description GSettingsDock::plank() {
  const QString schema = u"net.launchpad.plank.dock.settings"_s;
  Description dock{.schemas = {schema}, .folders = {}, .places = {}, .rules = {}, .path = {}};
  dock.path = QRegularExpression(u"^/net/launchpad/plank/docks/[^/]+/$"_s);
  dock.places = [schema](const SettingsSchemas& schemas) {
    QStringList places;
    const OpenSettings plank = schemas.open(u"net.launchpad.plank"_s, QString());
    for (const QString& name : plank.texts(u"enabled-docks"_s)) {
      places << u"%1:/net/launchpad/plank/docks/%2/"_s.arg(schema, name);
    }
    return places;
  };
  // With pressure the dock would come out at once, whatever its delay.
  dock.rules = {{DockPreference::Autohide, "hide-mode", always(u"'auto'"_s)},
                {DockPreference::AutohideDelay, "unhide-delay", &inMilliseconds},
                {DockPreference::AutohideDelay, "pressure-reveal", always(u"false"_s)}};
  return dock;
}

GSettingsDock::Description GSettingsDock::gnome() {
  const QStringList names{u"org.gnome.shell.extensions.dash-to-dock"_s, u"org.gnome.shell.extensions.ubuntu-dock"_s};
  Description dock{.schemas = names, .folders = extensionFolders(), .places = {}, .rules = {}, .path = {}};
  dock.path = QRegularExpression(u"^$"_s);
  dock.places = [names](const SettingsSchemas& schemas) {
    QStringList places;
    for (const QString& name : names) {
      if (schemas.has(name)) places << name + u':';
    }
    return places;
  };
  dock.rules = {{DockPreference::Autohide, "dock-fixed", always(u"false"_s)},
                {DockPreference::Autohide, "autohide", always(u"true"_s)},
                {DockPreference::Autohide, "intellihide", always(u"false"_s)},
                {DockPreference::Autohide, "manualhide", always(u"false"_s)},
                {DockPreference::AutohideDelay, "show-delay", &inSeconds},
                {DockPreference::AutohideDelay, "require-pressure-to-show", always(u"false"_s)}};
  return dock;
}

GSettingsDock::GSettingsDock(Description description)
    : description_(std::move(description)), schemas_(description_.folders) {}

OpenSettings GSettingsDock::open(const QString& place) const {
  const QString schema = place.section(u':', 0, 0);
  if (!description_.schemas.contains(schema)) return {};
  return schemas_.open(schema, place.section(u':', 1));
}

const GSettingsDock::Rule* GSettingsDock::rule(const QString& name) const {
  const auto found = std::find_if(description_.rules.begin(), description_.rules.end(),
                                  [&](const Rule& rule) { return name == QLatin1StringView(rule.key); });
  return found == description_.rules.end() ? nullptr : &*found;
}

QList<DockSetting> GSettingsDock::own(DockPreference preference) {
  QList<DockSetting> settings;
  if (!settingsAreKept()) return settings;
  for (const QString& place : description_.places(schemas_)) {
    const OpenSettings opened = open(place);
    for (const Rule& rule : description_.rules) {
      const QString key = QLatin1StringView(rule.key);
      if (rule.preference == preference && opened.has(key)) settings << DockSetting{place, key, opened.userValue(key)};
    }
  }
  return settings;
}

QList<DockSetting> GSettingsDock::hiding(DockPreference, double seconds, const QList<DockSetting>& own) {
  QList<DockSetting> settings = own;
  for (DockSetting& setting : settings) setting.value = rule(setting.name)->value(seconds);
  return settings;
}

bool GSettingsDock::knows(DockPreference preference, const DockSetting& setting) const {
  const Rule* const known = rule(setting.name);
  return known && known->preference == preference && description_.schemas.contains(setting.place.section(u':', 0, 0)) &&
         description_.path.match(setting.place.section(u':', 1)).hasMatch();
}

bool GSettingsDock::put(const DockSetting& setting, const QList<DockValue>& over) {
  const OpenSettings opened = open(setting.place);
  if (!opened || !rule(setting.name) || !opened.has(setting.name) || !settingsAreKept()) return false;
  const auto isThere = [&](const DockValue& value) { return opened.holds(setting.name, value); };
  // What is as it should be is not touched: unsetting an unset key would still make the user a settings file.
  if (!isThere(setting.value)) {
    if (!over.isEmpty() && std::none_of(over.begin(), over.end(), isThere)) return true;
    if (!opened.set(setting.name, setting.value)) return false;
  }
  pending_ << setting;
  return true;
}

bool GSettingsDock::flush() {
  const QList<DockSetting> settings = std::exchange(pending_, {});
  if (settings.isEmpty()) return true;
  // A change that the service did not take is undone in silence, so what was put is read again.
  return settingsReachService(kPatienceMs) && std::all_of(settings.begin(), settings.end(), [&](const DockSetting& s) {
           return open(s.place).holds(s.name, s.value);
         });
}

}  // namespace tarnwick
