#include "handover/Docks.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <stdexcept>

namespace tarnwick::testing {

using namespace Qt::StringLiterals;

std::optional<QByteArray> output(const QStringList& command) {
  QProcess process;
  process.start(command.first(), command.mid(1));
  if (!process.waitForFinished(30'000) || process.exitCode() != 0) return std::nullopt;
  return process.readAllStandardOutput();
}

QByteArray dconfDump() { return output({u"dconf"_s, u"dump"_s, u"/"_s}).value(); }

NameOwner::NameOwner(const QString& name)
    : name_(name), bus_(QDBusConnection::connectToBus(QDBusConnection::SessionBus, name)) {
  if (!bus_.registerService(name)) throw std::runtime_error("the name is taken");
}

NameOwner::~NameOwner() {
  bus_.unregisterService(name_);
  QDBusConnection::disconnectFromBus(name_);
}

QList<pid_t> guardiansOf(const QString& directory) {
  QList<pid_t> found;
  for (const QString& process : QDir(u"/proc"_s).entryList(QDir::Dirs)) {
    QFile line(u"/proc/%1/cmdline"_s.arg(process));
    if (!line.open(QIODevice::ReadOnly)) continue;
    const QByteArrayList words = line.readAll().split('\0');
    if (words.value(0).endsWith("tarnwick-guardian") && words.value(2) == directory.toUtf8()) {
      found << process.toInt();
    }
  }
  return found;
}

}  // namespace tarnwick::testing
