#include "views/dock/AppIconCache.h"

#include <utility>

#include "views/theme/IconStyle.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

AppIconCache::AppIconCache(const RowTiles& tiles)
    : tiles_(tiles), icons_([this](const QString& icon, int size, double ratio) { return find(icon, size, ratio); }) {}

void AppIconCache::setProvider(Provider provider) {
  provider_ = std::move(provider);
  forget();
}

QPixmap AppIconCache::find(const QString& icon, int size, double ratio) {
  const IconStyle style = iconStyleNamed(tiles_.row().iconStyle, !tiles_.palette().light);
  const QString key = u"%1 %2 %3 %4"_s.arg(icon).arg(size).arg(ratio).arg(static_cast<int>(style));
  const auto known = known_.constFind(key);
  if (known != known_.constEnd()) return *known;
  DockApp app;
  app.icon = icon;
  return *known_.insert(key, provider_ ? styledIcon(provider_(app, size, ratio), style) : QPixmap());
}

}  // namespace tarnwick
