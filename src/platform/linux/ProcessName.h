#pragma once

#include <QList>
#include <QString>

namespace tarnwick {

/// What the kernel calls a process: at most 15 bytes; empty where there is none. Any thread.
QString processName(qint64 pid);

/// The processes of this user that are called so. Any thread; reads a file for each process there is.
QList<qint64> processesNamed(const QString& name);

}  // namespace tarnwick
