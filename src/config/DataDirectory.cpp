#include "config/DataDirectory.h"

#include <QDir>
#include <QStandardPaths>

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

constexpr QLatin1StringView kSettingsFile("config.json");

/// An empty name would make a mess of the folder above, so it counts as none.
std::optional<QString> nameIn(const BuildSettings& build, const QString& setting) {
  auto value = build.string(setting);
  return value && !value->isEmpty() ? value : std::nullopt;
}

QString join(const QString& folder, const QString& file) { return QDir::cleanPath(folder + u'/' + file); }

}  // namespace

QString defaultStorageDirectory(const BuildSettings& build) {
  return join(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation),
              nameIn(build, u"TarnwickDataDirectoryName"_s).value_or(u"Tarnwick"_s));
}

QString settingsFile(const BuildSettings& build, bool diagnostic, const std::optional<QString>& storage) {
  if (storage) return *storage;
  if (diagnostic) return join(QDir::tempPath(), u"Tarnwick-diagnostic/"_s + kSettingsFile);
  if (const auto phase = nameIn(build, u"TarnwickPhaseDataDirectory"_s)) return join(*phase, kSettingsFile);
  return join(defaultStorageDirectory(build), kSettingsFile);
}

}  // namespace tarnwick
