#include "base/BuildSettings.h"

#include <QCoreApplication>
#include <QFile>
#include <QJsonDocument>

namespace tarnwick {

using namespace Qt::StringLiterals;

BuildSettings::BuildSettings(const QString& path) {
  QFile file(path);
  if (file.open(QIODevice::ReadOnly)) keys_ = QJsonDocument::fromJson(file.readAll()).object();
}

BuildSettings BuildSettings::besideProgram() {
  return BuildSettings(QCoreApplication::applicationDirPath() + "/tarnwick-keys.json"_L1);
}

std::optional<QString> BuildSettings::string(const QString& key) const {
  const QJsonValue value = keys_.value(key);
  return value.isString() ? std::optional(value.toString()) : std::nullopt;
}

}  // namespace tarnwick
