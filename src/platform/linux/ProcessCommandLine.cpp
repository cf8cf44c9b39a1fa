#include "platform/linux/ProcessCommandLine.h"

#include <QFile>

namespace tarnwick {

QStringList processCommandLine(qint64 pid) {
  constexpr qint64 kMost = 64 * 1024;
  if (pid <= 0) return {};
  QFile file(QStringLiteral("/proc/%1/cmdline").arg(pid));
  if (!file.open(QIODevice::ReadOnly)) return {};
  QStringList words;
  for (const QByteArray& word : file.read(kMost).split('\0')) words << QFile::decodeName(word);
  while (!words.isEmpty() && words.last().isEmpty()) words.removeLast();
  return words;
}

}  // namespace tarnwick
