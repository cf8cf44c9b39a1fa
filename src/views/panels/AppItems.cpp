#include "views/panels/AppItems.h"

#include <QLinearGradient>
#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "views/theme/Glass.h"

namespace tarnwick {

namespace {

constexpr double kPlateCorner = 0.26;

/// How well an application fits: 0 for not at all.
int fitness(const DesktopEntry& app, const QString& wanted) {
  if (wanted.isEmpty() || app.name.startsWith(wanted, Qt::CaseInsensitive)) return 3;
  if (app.name.contains(wanted, Qt::CaseInsensitive)) return 2;
  const bool spoken = app.genericName.contains(wanted, Qt::CaseInsensitive) ||
                      std::ranges::any_of(app.keywords, [&wanted](const QString& keyword) {
                        return keyword.startsWith(wanted, Qt::CaseInsensitive);
                      });
  return spoken ? 1 : 0;
}

}  // namespace

void paintAppIcon(QPainter& painter, const QRectF& box, const QString& icon, const QString& name,
                  const TileIcons& icons, const ControlLook& look) {
  const double ratio = painter.device()->devicePixelRatio();
  const QPixmap picture = icons ? icons(icon, static_cast<int>(std::lround(box.width())), ratio) : QPixmap();
  if (!picture.isNull()) {
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(box, picture, QRectF(picture.rect()));
    return;
  }
  const PictureColors& colors = look.palette.pictures;
  QLinearGradient plate(box.topLeft(), box.bottomLeft());
  plate.setColorAt(0, colors.plateTop);
  plate.setColorAt(1, colors.plateBottom);
  painter.setPen(Qt::NoPen);
  painter.setBrush(plate);
  painter.drawRoundedRect(box, box.width() * kPlateCorner, box.width() * kPlateCorner);
  drawInnerLine(painter, box, box.width() * kPlateCorner, hairline(painter), colors.plateRim);
  const TextStyle style = box.width() > 30 ? TextStyle::Figure17 : TextStyle::BadgeInitial;
  drawTextIn(painter, box, name.left(1).toUpper(), style, colors.plateInk, Qt::AlignHCenter);
}

AppItems::AppItems(ItemView& view, TileIcons icons) : view_(view) {
  view.setPicture([this, &view, icons = std::move(icons)](QPainter& painter, const QRectF& box, const ViewItem& item) {
    paintAppIcon(painter, box, icons_.value(item.id), item.title, icons, lookOf(view));
  });
}

void AppItems::set(const QList<AppItem>& apps) {
  icons_.clear();
  QList<ViewItem> items;
  items.reserve(apps.size());
  for (const AppItem& app : apps) {
    icons_.insert(app.path, app.icon);
    ViewItem item{app.path, app.name};
    item.tip = app.comment.isEmpty() ? app.name : QStringLiteral("%1 · %2").arg(app.name, app.comment);
    // Dropped on the dock, an entry becomes a tile.
    if (app.path.startsWith(u'/')) item.drag = QUrl::fromLocalFile(app.path);
    items.append(item);
  }
  view_.setItems(items);
}

QList<AppItem> AppItems::fitting(const AppIndex& index, const QString& wanted) {
  std::array<QList<AppItem>, 4> byFitness;
  for (const DesktopEntry& app : index.applications())
    if (index.isVisible(app))
      byFitness[static_cast<std::size_t>(fitness(app, wanted))].append({app.path, app.name, app.iconName, app.comment});
  return byFitness[3] + byFitness[2] + byFitness[1];
}

}  // namespace tarnwick
