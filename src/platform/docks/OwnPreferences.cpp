#include "platform/docks/OwnPreferences.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <utility>

#include "base/DomainError.h"
#include "base/DurableFile.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

QString nameOf(DockPreference preference) {
  return preference == DockPreference::Autohide ? u"autohide"_s : u"autohide-delay"_s;
}

}  // namespace

OwnPreferences::OwnPreferences(const QString& directory)
    : path_(QDir(directory).filePath(u"dock-preferences.json"_s)) {}

QJsonObject& OwnPreferences::values() {
  if (!values_) {
    values_.emplace();
    try {
      if (const auto data = DurableFile::readIfPresent(path_)) values_ = QJsonDocument::fromJson(*data).object();
    } catch (const DomainError&) {
      // A file that cannot be read holds no preferences; writing it will say so.
    }
  }
  return *values_;
}

QList<DockSetting> OwnPreferences::own(DockPreference preference) {
  const QString name = nameOf(preference);
  return {{QString(), name, value(name)}};
}

DockValue OwnPreferences::value(const QString& name) {
  const QJsonValue present = values().value(name);
  return present.isString() ? DockValue(present.toString()) : std::nullopt;
}

QList<DockSetting> OwnPreferences::hiding(DockPreference preference, double seconds, const QList<DockSetting>&) {
  const QString value = preference == DockPreference::Autohide ? u"true"_s : QString::number(seconds, 'f', 1);
  return {{QString(), nameOf(preference), value}};
}

bool OwnPreferences::knows(DockPreference preference, const DockSetting& setting) const {
  return setting.place.isEmpty() && setting.name == nameOf(preference);
}

bool OwnPreferences::put(const DockSetting& setting, const QList<DockValue>& over) {
  if (!over.isEmpty() && !over.contains(value(setting.name))) return true;
  changed_ = true;
  if (setting.value) {
    values().insert(setting.name, *setting.value);
  } else {
    values().remove(setting.name);
  }
  return true;
}

bool OwnPreferences::flush() {
  // Read anew when they are asked for next: others may write them.
  const QJsonObject all = std::exchange(values_, std::nullopt).value_or(QJsonObject());
  if (!std::exchange(changed_, false)) return true;
  if (all.isEmpty()) return !QFile::exists(path_) || QFile::remove(path_);
  try {
    DurableFile::write(QJsonDocument(all).toJson(QJsonDocument::Compact), path_);
    return true;
  } catch (const DomainError&) {
    return false;
  }
}

}  // namespace tarnwick
