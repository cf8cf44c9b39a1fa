#include "app/PictureKeeper.h"

#include "files/KeptPictures.h"
#include "store/AppStore.h"

namespace tarnwick {

PictureKeeper::~PictureKeeper() { pool_.waitForDone(); }

void PictureKeeper::keep(const QString& picture, int side, std::function<void(const QString&)> use) {
  pool_.start([this, use = std::move(use), picture, side, into = store_.dataDirectory()] {
    QString name;
    QString failure;
    try {
      name = KeptPictures::keep(picture, into, side);
    } catch (const std::exception& error) {
      failure = QString::fromUtf8(error.what());
    }
    const auto answer = [this, use, name, failure] { failure.isEmpty() ? use(name) : store_.setError(failure); };
    QMetaObject::invokeMethod(this, answer, Qt::QueuedConnection);
  });
}

}  // namespace tarnwick
