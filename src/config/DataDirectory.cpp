#include "config/DataDirectory.h"

#include <QDir>
#include <QStandardPaths>

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

constexpr QLatin1StringView kSettingsFile("config.json");

/// An empty name would make a mess of the folder above, so it counts as none.
std::optional<QString> name(const BuildSettings& keys, const QString& key) {
  auto value = keys.string(key);
  return value && !value->isEmpty() ? value : std::nullopt;
}

QString join(const QString& folder, const QString& file) { return QDir::cleanPath(folder + u'/' + file); }

}  // namespace

QString defaultStorageDirectory(const BuildSettings& keys) {
  return join(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation),
              name(keys, u"TarnwickDataDirectoryName"_s).value_or(u"Tarnwick"_s));
}

QString settingsFile(const BuildSettings& keys, bool diagnostic, const std::optional<QString>& storage) {
  if (storage) return *storage;
  if (diagnostic) return join(QDir::tempPath(), u"Tarnwick-diagnostic/"_s + kSettingsFile);
  if (const auto phase = name(keys, u"TarnwickPhaseDataDirectory"_s)) return join(*phase, kSettingsFile);
  return join(defaultStorageDirectory(keys), kSettingsFile);
}

}  // namespace tarnwick
