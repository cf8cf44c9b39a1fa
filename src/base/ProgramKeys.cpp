#include "base/ProgramKeys.h"

#include <QCoreApplication>
#include <QFile>
#include <QJsonDocument>

namespace tarnwick {

using namespace Qt::StringLiterals;

ProgramKeys::ProgramKeys(const QString& path) {
  QFile file(path);
  if (file.open(QIODevice::ReadOnly)) keys_ = QJsonDocument::fromJson(file.readAll()).object();
}

ProgramKeys ProgramKeys::besideProgram() {
  return ProgramKeys(QCoreApplication::applicationDirPath() + "/tarnwick-keys.json"_L1);
}

std::optional<QString> ProgramKeys::string(const QString& key) const {
  const QJsonValue value = keys_.value(key);
  return value.isString() ? std::optional(value.toString()) : std::nullopt;
}

}  // namespace tarnwick
