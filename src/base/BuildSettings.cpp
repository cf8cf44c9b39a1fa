#include "base/BuildSettings.h"

#include <QCoreApplication>
#include <QJsonDocument>

#include "base/SmallFile.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

BuildSettings::BuildSettings(const QString& path) {
  constexpr qint64 most = 64 * 1024;
  if (const auto text = SmallFile::read(path, most)) values_ = QJsonDocument::fromJson(*text).object();
}

BuildSettings BuildSettings::besideProgram() {
  return BuildSettings(QCoreApplication::applicationDirPath() + "/tarnwick-keys.json"_L1);
}

std::optional<QString> BuildSettings::string(const QString& name) const {
  const QJsonValue value = values_.value(name);
  return value.isString() ? std::optional(value.toString()) : std::nullopt;
}

}  // namespace tarnwick
