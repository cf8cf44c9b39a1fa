#pragma once

#include <QList>
#include <QString>
#include <functional>

namespace tarnwick {

/// A file or folder whose name holds what was asked for.
struct FoundFile {
  QString path;
  QString name;  ///< As it is shown, with its ending.
  bool isFolder = false;

  bool operator==(const FoundFile&) const = default;
};

/// Finds files and folders in the user's home by a part of their name, without regard to case and accents. Main thread
/// only; searching happens elsewhere.
class FileSearch {
 public:
  /// At most this many are of use.
  static constexpr qsizetype kMost = 25;
  /// The newest change first.
  using Done = std::function<void(const QList<FoundFile>& files)>;

  virtual ~FileSearch() = default;

  /// Searches, in place of a search that runs. `done` runs once, within this call or later, unless the search is
  /// stopped or replaced before.
  virtual void start(const QString& query, Done done) = 0;
  /// Ends the search that runs, if any; its `done` never comes.
  virtual void stop() = 0;
};

/// Finds nothing, at once.
class NoFileSearch final : public FileSearch {
 public:
  void start(const QString&, Done done) override { done({}); }
  void stop() override {}
};

}  // namespace tarnwick
