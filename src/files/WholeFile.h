#pragma once

#include <QByteArray>
#include <QFile>
#include <QFileInfo>

namespace tarnwick {

/// What a file holds; nothing if there is none, if it is no ordinary file, may not be read or is larger than
/// `mostBytes`.
inline QByteArray wholeFile(const QString& path, qint64 mostBytes) {
  QFile file(path);
  if (!QFileInfo(path).isFile() || file.size() > mostBytes || !file.open(QIODevice::ReadOnly)) return {};
  return file.readAll();
}

}  // namespace tarnwick
