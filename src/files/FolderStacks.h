#pragma once

#include <QObject>
#include <QSet>
#include <map>
#include <memory>

#include "files/FolderListing.h"

namespace tarnwick {

/// The newest files of some folders, for tiles that show them as a stack. A folder is read when it is first asked for,
/// and kept true from then on. Main thread only.
class FolderStacks final : public QObject {
  Q_OBJECT
 public:
  /// How many files a stack has at most.
  static constexpr qsizetype kMost = 3;

  /// `scheduler` must outlive it.
  explicit FolderStacks(Scheduler& scheduler, QObject* parent = nullptr) : QObject(parent), scheduler_(scheduler) {}

  /// The newest first, without folders; none until the folder was read.
  QList<FolderEntry> newest(const QString& folder);
  /// Follows no others than these any more.
  void keep(const QSet<QString>& folders);
  /// Answers with these and reads nothing, for pictures.
  void setFixed(const QString& folder, const QList<FolderEntry>& entries);

 Q_SIGNALS:
  void changed();

 private:
  FolderListing& listingOf(const QString& folder);

  Scheduler& scheduler_;
  std::map<QString, std::unique_ptr<FolderListing>> listings_;
};

}  // namespace tarnwick
