#pragma once

#include <QPainter>
#include <QPixmap>
#include <QRectF>
#include <QString>

namespace tarnwick {

/// What pictures of the program have around it: icons of applications and landscapes behind glass.
struct SnapshotScenery {
  /// How many landscapes there are; the first is at dusk, the second by day.
  static constexpr int landscapes = 6;
  static void paintLandscape(QPainter& painter, const QRectF& rect, int which);

  /// The icon of one of the fixture's applications, known by its name in small letters; null for others.
  static QPixmap icon(const QString& name, int size, double ratio);
};

}  // namespace tarnwick
