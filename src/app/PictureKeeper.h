#pragma once

#include <QString>
#include <functional>

#include "base/OrderedWork.h"

namespace tarnwick {

class AppStore;

/// Copies pictures that the user chooses into the data folder, off the main thread. Main thread only.
class PictureKeeper final {
 public:
  /// `store` must outlive it; a failure lands in its message line. Its end waits for a picture that is being copied.
  explicit PictureKeeper(AppStore& store) : store_(store) {}

  /// Keeps a picture, its longer side at most `side` pixels, and passes its name to `use`.
  void keep(const QString& picture, int side, std::function<void(const QString& name)> use);

 private:
  AppStore& store_;
  OrderedWork copying_;
};

}  // namespace tarnwick
