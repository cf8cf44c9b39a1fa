#pragma once

#include <QObject>

#include "base/Scheduler.h"
#include "files/FileWatch.h"
#include "files/FolderReading.h"
#include "files/LatestWork.h"

namespace tarnwick {

/// One folder, kept true: it is read on another thread when it is first shown and when something in it changed. Main
/// thread only.
class FolderListing final : public QObject {
  Q_OBJECT
 public:
  /// `scheduler` must outlive it.
  explicit FolderListing(Scheduler& scheduler, QObject* parent = nullptr);

  /// Shows a folder, or another part of it. `contents` is that of the last one until `changed`.
  void show(const FolderRequest& request);
  /// Shows this and reads nothing, for pictures.
  void setFixed(const FolderRequest& request, const FolderContents& contents);
  const FolderRequest& request() const { return request_; }
  const FolderContents& contents() const { return contents_; }
  /// Whether this request has been answered once.
  bool loaded() const { return loaded_; }

 Q_SIGNALS:
  void changed();

 private:
  void read();
  void readAgain();

  FileWatch watch_;
  FolderRequest request_;
  FolderContents contents_;
  bool loaded_ = false;
  bool isAgain_ = false;  ///< Something changed since the reading that is under way began.
  LatestWork work_;
};

}  // namespace tarnwick
