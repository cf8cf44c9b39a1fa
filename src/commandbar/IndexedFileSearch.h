#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <functional>

#include "commandbar/ports/FileSearch.h"
#include "files/LatestWork.h"
#include "files/NameIndexKeeper.h"

namespace tarnwick {

/// Finds files by an index of names. While the first one is made, what is in it by then is found; where there is none
/// nothing is. Main thread only.
class IndexedFileSearch final : public FileSearch {
 public:
  /// `keeper` must outlive this. `recent` gives the paths of files that the user had open lately; it is asked on
  /// another thread, where it may block, holds all that it touches, and may be left out.
  explicit IndexedFileSearch(NameIndexKeeper& keeper, std::function<QStringList()> recent = {})
      : keeper_(keeper), recent_(std::move(recent)) {}

  const NameIndexKeeper& keeper() const { return keeper_; }

  /// Whether files are to be found at all.
  void setOn(bool on) { keeper_.setOn(on); }
  /// The bar is opened, and it is closed: nothing is found but in between.
  void opened() { keeper_.opened(); }
  void closed();

  void start(const QString& query, Done done) override;
  void stop() override { work_.cancel(); }

 private:
  NameIndexKeeper& keeper_;
  std::function<QStringList()> recent_;
  LatestWork work_;
};

}  // namespace tarnwick
