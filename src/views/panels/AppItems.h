#pragma once

#include <QHash>
#include <QList>
#include <QString>

#include "apps/AppIndex.h"
#include "views/controls/ItemView.h"
#include "views/tiles/TileStyle.h"

namespace tarnwick {

/// An application as panels list it.
struct AppItem {
  QString path;  ///< Of its desktop entry, or whatever else identifies it.
  QString name;
  QString icon;
  QString comment{};  ///< In the tip.

  bool operator==(const AppItem&) const = default;
};

/// Draws the icon of an application, or a plate with its initial where `icons` is empty or has none.
void paintAppIcon(QPainter& painter, const QRectF& box, const QString& icon, const QString& name,
                  const TileIcons& icons, const ControlLook& look);

/// Applications in a view of icons. The view is borrowed; it must outlive this.
class AppItems {
 public:
  AppItems(ItemView& view, TileIcons icons);
  void set(const QList<AppItem>& apps);

  /// Those of the installed applications that belong into a list and whose name, kind or keywords hold `wanted`: names
  /// that begin with it first.
  static QList<AppItem> fitting(const AppIndex& index, const QString& wanted);

 private:
  ItemView& view_;
  QHash<QString, QString> icons_;
};

}  // namespace tarnwick
