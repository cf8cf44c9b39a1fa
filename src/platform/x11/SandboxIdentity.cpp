#include "platform/x11/SandboxIdentity.h"

#include <QFile>
#include <QList>

namespace tarnwick {
namespace {

constexpr qint64 kEnough = 16 * 1024;

QByteArray contents(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.read(kEnough) : QByteArray();
}

}  // namespace

QString SandboxIdentity::of(qint64 pid) {
  if (pid <= 0) return {};
  const QString process = QStringLiteral("/proc/%1/").arg(pid);
  const QString flatpak = fromFlatpakInfo(contents(process + QStringLiteral("root/.flatpak-info")));
  return flatpak.isEmpty() ? fromControlGroups(contents(process + QStringLiteral("cgroup"))) : flatpak;
}

QString SandboxIdentity::fromFlatpakInfo(const QByteArray& text) {
  bool isInGroup = false;
  for (const QByteArray& untrimmed : text.split('\n')) {
    const QByteArray line = untrimmed.trimmed();
    if (line.startsWith('[')) isInGroup = line == "[Application]";
    if (isInGroup && line.startsWith("name=")) return QString::fromUtf8(line.mid(5));
  }
  return {};
}

QString SandboxIdentity::fromControlGroups(const QByteArray& text) {
  for (const QByteArray& line : text.split('\n')) {
    for (const QByteArray& group : line.split('/')) {
      const QList<QByteArray> parts = group.split('.');  // snap.NAME.APPLICATION-…
      if (parts.size() >= 3 && parts[0] == "snap") return QString::fromUtf8(parts[1]);
    }
  }
  return {};
}

}  // namespace tarnwick
