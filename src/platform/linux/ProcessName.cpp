#include "platform/linux/ProcessName.h"

#include <unistd.h>

#include <QDir>
#include <QFileInfo>
#include <string>

#include "platform/linux/KernelFile.h"

namespace tarnwick {

QString processName(qint64 pid) {
  KernelFile file("/proc/" + std::to_string(pid) + "/comm");
  const auto text = file.read();
  return text ? QString::fromUtf8(text->data(), static_cast<qsizetype>(text->size())).trimmed() : QString();
}

QList<qint64> processesNamed(const QString& name) {
  QList<qint64> found;
  const QStringList all = QDir(QStringLiteral("/proc")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
  for (const QString& each : all) {
    bool isNumber = false;
    const qint64 pid = each.toLongLong(&isNumber);
    if (!isNumber || processName(pid) != name) continue;
    if (QFileInfo(QStringLiteral("/proc/") + each).ownerId() == ::getuid()) found.append(pid);
  }
  return found;
}

}  // namespace tarnwick
