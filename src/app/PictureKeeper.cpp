#include "app/PictureKeeper.h"

#include "files/KeptPictures.h"
#include "store/AppStore.h"

namespace tarnwick {

void PictureKeeper::keep(const QString& picture, int side, std::function<void(const QString&)> use) {
  struct Kept {
    QString name;
    QString failure;
  };
  const auto copy = [picture, side, into = store_.dataDirectory()]() -> Kept {
    try {
      return {KeptPictures::keep(picture, into, side), {}};
    } catch (const std::exception& error) {
      return {{}, QString::fromUtf8(error.what())};
    }
  };
  copying_.start(copy, [this, use = std::move(use)](const Kept& kept) {
    kept.failure.isEmpty() ? use(kept.name) : store_.setError(kept.failure);
  });
}

}  // namespace tarnwick
