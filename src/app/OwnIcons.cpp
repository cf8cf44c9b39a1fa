#include "app/OwnIcons.h"

#include <QFileInfo>

#include "files/KeptPictures.h"
#include "store/AppStore.h"

namespace tarnwick {

QString OwnIcons::keyOf(const QString& entryPath) const {
  const QString id = apps_.environment().desktopIdOf(entryPath);
  return id.isEmpty() ? entryPath : id;
}

QString OwnIcons::assetOf(const QString& entryPath) const {
  const auto& icons = store_.config().desktop.customAppIcons;
  return icons.isEmpty() ? QString() : icons.value(keyOf(entryPath));
}

bool OwnIcons::has(const QString& entryPath) const { return !assetOf(entryPath).isEmpty(); }

QString OwnIcons::iconOf(const QString& entryPath) {
  const QString asset = assetOf(entryPath);
  const QString file = KeptPictures::file(store_.dataDirectory(), asset);
  if (file.isEmpty()) return {};
  auto known = exists_.constFind(asset);
  if (known == exists_.constEnd()) known = exists_.insert(asset, QFileInfo::exists(file));
  return *known ? file : QString();
}

void OwnIcons::choose(const QString& entryPath, const QString& picture) {
  const auto use = [this, entryPath](const QString& asset) {
    exists_.remove(asset);
    edits_.change([&](DockConfiguration& config) { config.desktop.customAppIcons.insert(keyOf(entryPath), asset); });
  };
  keeper_.keep(picture, kSide, use);
}

/// The picture stays: a look that was saved may show it still.
void OwnIcons::reset(const QString& entryPath) {
  edits_.change([&](DockConfiguration& config) { config.desktop.customAppIcons.remove(keyOf(entryPath)); });
}

}  // namespace tarnwick
