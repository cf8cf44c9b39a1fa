#pragma once

#include <QDBusConnection>
#include <QFileSystemWatcher>
#include <memory>

#include "base/OrderedWork.h"
#include "desktop/Files.h"
#include "platform/linux/TrashCan.h"

namespace tarnwick {

/// The user's files on this machine. Operations run on one thread, in order; looking at files and counting the trash on
/// another, so that a long copy does not keep a drop from being understood. Threads exist only while they have work.
class FileOperations final : public Files {
  Q_OBJECT
 public:
  using Bus = std::function<QDBusConnection()>;

  /// `bus`: the session bus, on which the file manager is asked to show files; asked for when it is first needed. Its
  /// end cancels what runs and waits for it, which takes as long as the step on one block of a file.
  explicit FileOperations(TrashCan trash = TrashCan::ofUser(), Bus bus = &QDBusConnection::sessionBus);

  void look(const QStringList& paths, QObject* context, std::function<void(const QHash<QString, Kind>&)> done) override;
  void bringInto(const QString& folder, const QStringList& paths, FileTransfer how, QObject* context,
                 Done done) override;
  void trash(const QStringList& paths, QObject* context, Done done) override;
  void takeBack(const QList<FileChange>& changes, QObject* context, Done done) override;
  void emptyTrash(QObject* context, Done done) override;
  int trashCount() override;
  QString trashFolder() const override { return trash_.homeFolder() + QLatin1StringView("/files"); }
  void reveal(const QStringList& paths, QObject* context, std::function<void(bool)> done) override;

 private:
  struct Counted {
    int count = 0;
    QStringList watched;
  };

  void operate(std::function<FilesOutcome(const class FileWork&)> work, QObject* context, Done done);
  void count();
  void take(const Counted& counted);

  TrashCan trash_;
  Bus bus_;
  std::unique_ptr<QFileSystemWatcher> watcher_;
  int count_ = 0;
  bool counting_ = false;
  bool countAgain_ = false;
  OrderedWork operations_;  ///< With the next one the last member: its answers use the others.
  OrderedWork looks_;
};

}  // namespace tarnwick
