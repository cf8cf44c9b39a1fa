#include "views/snapshot/Snapshot.h"

#include <QCoreApplication>
#include <QDir>
#include <QSet>
#include <array>
#include <vector>

#include "base/DomainError.h"
#include "views/snapshot/SnapshotPainting.h"
#include "widgets/catalog/Catalog.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// Between speed and size of the files.
constexpr int kPngQuality = 85;

struct StyleName {
  const char* name;
  DockStyle style;
};
constexpr std::array kStyles = {
    StyleName{"darkGlass", DockStyle::DarkGlass},
    StyleName{"lightGlass", DockStyle::LightGlass},
    StyleName{"liquidGlass", DockStyle::LiquidGlass},
    StyleName{"black", DockStyle::Black},
    StyleName{"white", DockStyle::White},
    StyleName{"transparent", DockStyle::Transparent},
};

const QList<SnapshotScheme>& schemes() {
  static const QList<SnapshotScheme> all = {{u"dark"_s, DockStyle::DarkGlass, false},
                                            {u"light"_s, DockStyle::LightGlass, false},
                                            {u"monochrome"_s, DockStyle::DarkGlass, true}};
  return all;
}

struct Group {
  QString name;
  QStringList kinds;
};

/// The library's groups, then everything that is in none.
QList<Group> groups() {
  QList<Group> all;
  for (const WidgetGroup& group : Catalog::groups()) all << Group{group.name, group.kinds};
  Group rest{QCoreApplication::translate("Snapshot", "More"), {}};
  for (const WidgetDefinition& definition : Catalog::items())
    if (!Catalog::referenceKinds().contains(definition.id)) rest.kinds << definition.id;
  if (!rest.kinds.isEmpty()) all << rest;
  return all;
}

QString fileName(const QString& text) {
  QString name;
  for (const QChar letter : text.toLower())
    if (letter.isLetterOrNumber())
      name += letter;
    else if (!name.isEmpty() && !name.endsWith(u'-'))
      name += u'-';
  while (name.endsWith(u'-')) name.chop(1);
  return name;
}

/// Writes pictures below the folder and keeps their names.
class Album {
 public:
  explicit Album(const QString& folder) : folder_(folder) {}

  void add(const QString& part, const QString& name, double density, const QImage& image) {
    const QString file = u"%1/%2@%3x.png"_s.arg(part, name, QString::number(density));
    const QString path = folder_.filePath(file);
    if (!folder_.mkpath(part) || !image.save(path, "PNG", kPngQuality))
      throw DomainError::invalid(
          QCoreApplication::translate("Snapshot", "The picture %1 could not be written.").arg(path));
    files_ << file;
  }
  const QStringList& files() const { return files_; }

 private:
  QDir folder_;
  QStringList files_;
};

}  // namespace

QStringList takeSnapshot(const SnapshotOptions& options) {
  SnapshotStore fixture;
  Album album(options.folder);
  for (const double density : options.densities) {
    std::vector<SnapshotPainter> painters;
    for (const SnapshotScheme& scheme : schemes()) painters.emplace_back(scheme, density);
    SnapshotPainter& dark = painters[0];
    for (const WidgetDefinition& definition : Catalog::items()) {
      if (options.tiles) album.add(u"tiles"_s, definition.id, density, dark.onGround(dark.tile(definition.id)));
      if (options.panels)
        album.add(u"panels"_s, definition.id, density, dark.onGround(dark.panel(fixture, definition.id)));
    }
    if (options.tiles || options.panels)
      for (const Group& group : groups())
        for (SnapshotPainter& painter : painters)
          album.add(u"sheets"_s, fileName(group.name) + u'-' + painter.scheme().name, density,
                    painter.sheet(fixture, group.name, group.kinds, options.tiles, options.panels));
    if (options.docks)
      for (const StyleName& style : kStyles)
        album.add(u"docks"_s, QString::fromLatin1(style.name), density, dark.dock(style.style));
    if (options.windows)
      for (const SnapshotWindow& window : options.windowList)
        for (const bool isDark : {true, false})
          album.add(u"windows"_s, window.name + (isDark ? u"-dark"_s : u"-light"_s), density,
                    painters[isDark ? 0 : 1].onGround(painters[isDark ? 0 : 1].picture(*window.make(isDark))));
  }
  return album.files();
}

}  // namespace tarnwick
