#pragma once

#include <QHash>
#include <QObject>
#include <QSet>
#include <QSocketNotifier>
#include <QStringList>
#include <memory>

#include "base/FileDescriptor.h"

namespace tarnwick {

/// Notices that calendar files in some folders changed, also those that are written in place, with one watch a folder
/// however many files are in it. Main thread only.
class FolderWatch final : public QObject {
  Q_OBJECT
 public:
  using QObject::QObject;

  /// Watches exactly these folders, and waits in others for entries of some names. True if a folder is new to it: what
  /// changed in it before this call was not noticed.
  bool watch(const QStringList& folders, const QHash<QString, QSet<QString>>& awaited);

 Q_SIGNALS:
  void changed();

 private:
  struct Watch {
    QString folder;
    QSet<QString> awaited;  ///< Empty where every calendar file counts.
  };

  bool open();
  void read();
  bool matters(int number, quint32 what, const QByteArray& name) const;
  /// -1 where the folder is gone or there are no watches left.
  int add(const QString& folder, bool isAwaiting);

  FileDescriptor inotify_;
  std::unique_ptr<QSocketNotifier> notifier_;
  QHash<int, Watch> watches_;
};

}  // namespace tarnwick
