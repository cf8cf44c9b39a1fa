#pragma once

#include <QObject>
#include <QThreadPool>
#include <functional>

namespace tarnwick {

class AppStore;

/// Copies pictures that the user chooses into the data folder, off the main thread. Main thread only.
class PictureKeeper final : public QObject {
  Q_OBJECT
 public:
  /// `store` must outlive it; a failure lands in its message line.
  explicit PictureKeeper(AppStore& store) : store_(store) {}
  /// Waits for a picture that is being copied.
  ~PictureKeeper() override;

  /// Keeps a picture, its longer side at most `side` pixels, and passes its name to `use`.
  void keep(const QString& picture, int side, std::function<void(const QString& name)> use);

 private:
  AppStore& store_;
  QThreadPool pool_;
};

}  // namespace tarnwick
