#include "views/families/apps/AppTiles.h"

#include <QFileInfo>

#include "views/theme/Glass.h"
#include "views/tiles/AppPainting.h"
#include "views/tiles/TileCanvas.h"
#include "widgets/TileWords.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kGridMark = 9;
constexpr double kGridPitch = 12.5;
constexpr double kGridCorner = 2.8;

constexpr double kWell = 44;
constexpr double kWellCorner = 11;
constexpr double kSmallIcon = 15;
constexpr double kSmallInset = 5;
constexpr double kSmallPitch = 19;
constexpr qsizetype kSmallIcons = 4;

QString nameAt(const QString& path) { return QFileInfo(path).completeBaseName(); }

}  // namespace

ApplicationsContent makeApplications(const TileRequest&) { return {}; }
TileText describe(const ApplicationsContent&, const QString& name) { return {name, {}}; }

void paint(TileCanvas& canvas, const ApplicationsContent&) {
  const double side = kGridPitch * 2 + kGridMark;
  const QPointF origin((canvas.width() - side) / 2, theme::kTileMiddle - side / 2);
  for (int row = 0; row < 3; ++row)
    for (int column = 0; column < 3; ++column) {
      const QPointF corner = origin + QPointF(column, row) * kGridPitch;
      const bool middle = row == 1 && column == 1;
      drawRounded(canvas.painter(), QRectF(corner, QSizeF(kGridMark, kGridMark)), kGridCorner,
                  middle ? canvas.accent() : canvas.colors().mark);
    }
}

LauncherContent makeLauncher(const TileRequest& request) {
  const QString path = request.widget.options.value(option::path);
  const ApplicationFacts facts = request.sources.applications.value(path, {nameAt(path), path, 0, {}});
  const QString& given = request.widget.title;
  return {given.isEmpty() ? facts.name : given, facts.icon, facts.identity, facts.marks};
}

TileText describe(const LauncherContent& content, const QString&) {
  const QString marks = describe(content.marks);
  if (!marks.isEmpty() || !content.marks.running) return {content.name, marks};
  return {content.name, TileWords::tr("Running")};
}

void paint(TileCanvas& canvas, const LauncherContent& content) {
  const double left = (canvas.width() - theme::kAppIcon) / 2;
  const QRectF icon(left, theme::kTileMiddle - theme::kAppIcon / 2, theme::kAppIcon, theme::kAppIcon);
  drawAppIcon(canvas, icon, content.icon, content.name);
  drawAppMarks(canvas, icon, content.marks);
}

TileApplication standsFor(const LauncherContent& content) {
  return {content.application, content.marks.launching, content.marks.front};
}

AppFolderContent makeAppFolder(const TileRequest& request) {
  AppFolderContent content;
  const QStringList paths = request.widget.options.value(option::paths).split(u'\n', Qt::SkipEmptyParts);
  for (const QString& path : paths.mid(0, kSmallIcons)) {
    const ApplicationFacts facts = request.sources.applications.value(path, {nameAt(path), path, 0, {}});
    content.entries.append({facts.name, facts.icon});
  }
  return content;
}

TileText describe(const AppFolderContent& content, const QString& name) {
  QStringList names;
  for (const AppFolderContent::Entry& entry : content.entries) names.append(entry.name);
  return {name, names.join(u", "_s)};
}

void paint(TileCanvas& canvas, const AppFolderContent& content) {
  const QRectF well((canvas.width() - kWell) / 2, theme::kTileMiddle - kWell / 2, kWell, kWell);
  drawRounded(canvas.painter(), well, kWellCorner, canvas.colors().tab);
  if (content.entries.isEmpty()) {
    canvas.symbol(u"square.grid.2x2"_s, well.center(), theme::kSymbolSize, canvas.accent());
    return;
  }
  for (qsizetype i = 0; i < content.entries.size(); ++i) {
    const QPointF corner = well.topLeft() + QPointF(kSmallInset + kSmallPitch * static_cast<double>(i % 2),
                                                    kSmallInset + kSmallPitch * static_cast<double>(i / 2));
    drawAppIcon(canvas, QRectF(corner, QSizeF(kSmallIcon, kSmallIcon)), content.entries[i].icon,
                content.entries[i].name);
  }
}

}  // namespace tarnwick
