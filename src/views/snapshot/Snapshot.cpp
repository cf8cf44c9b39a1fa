#include "views/snapshot/Snapshot.h"

#include <QCoreApplication>
#include <QDir>
#include <QSemaphore>
#include <QThreadPool>
#include <array>
#include <mutex>
#include <vector>

#include "base/DomainError.h"
#include "views/families/Rooms.h"
#include "views/snapshot/SnapshotPainting.h"
#include "widgets/catalog/Catalog.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

struct SnapshotWords {
  Q_DECLARE_TR_FUNCTIONS(Snapshot)
};

/// Between speed and size of the files.
constexpr int kPngQuality = 85;
/// A picture can be large, so few wait to be written.
constexpr int kMostWaiting = 3;

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
  Group rest{SnapshotWords::tr("More"), {}};
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

/// Writes pictures below the folder, while the next ones are painted, and keeps their names.
class Album {
 public:
  explicit Album(const QString& folder) : folder_(folder) {}

  void add(const QString& part, const QString& name, double density, const QImage& image) {
    const QString file = u"%1/%2@%3x.png"_s.arg(part, name, QString::number(density));
    const QString path = folder_.filePath(file);
    if (!folder_.mkpath(part)) fail(path);
    waiting_.acquire();
    writers_.start([this, path, image] {
      if (!image.save(path, "PNG", kPngQuality)) {
        const std::lock_guard lock(mutex_);
        unwritten_ = path;
      }
      waiting_.release();
    });
    files_ << file;
  }

  /// The files, once all of them are written.
  const QStringList& files() {
    writers_.waitForDone();
    if (!unwritten_.isEmpty()) fail(unwritten_);
    return files_;
  }

 private:
  [[noreturn]] static void fail(const QString& path) {
    throw DomainError::invalid(SnapshotWords::tr("The picture %1 could not be written.").arg(path));
  }

  QDir folder_;
  QStringList files_;
  std::mutex mutex_;
  QString unwritten_;
  QSemaphore waiting_{kMostWaiting};
  QThreadPool writers_;  ///< The last member: the writers use the others.
};

void addDocks(Album& album, SnapshotPainter& painter) {
  QList<SnapshotPicture> rows;
  for (const StyleName& style : kStyles) {
    DockRow row = SnapshotFixture::dock();
    row.style = style.style;
    const QString name = QString::fromLatin1(style.name);
    rows << SnapshotPicture{name, painter.dock(row)};
    album.add(u"docks"_s, name, painter.density(), rows.last().image);
  }
  DockRow row = SnapshotFixture::dock();
  row.monochrome = true;
  rows << SnapshotPicture{u"monochrome"_s, painter.dock(row)};
  row.style = DockStyle::LightGlass;
  rows << SnapshotPicture{u"monochrome, lightGlass"_s, painter.dock(row)};
  row = SnapshotFixture::dock();
  row.tiles = false;
  rows << SnapshotPicture{u"without tiles"_s, painter.dock(row)};
  row = SnapshotFixture::dock();
  row.composited = false;
  rows << SnapshotPicture{u"without a compositor"_s, painter.dock(row)};
  row.style = DockStyle::Transparent;
  rows << SnapshotPicture{u"transparent, without a compositor"_s, painter.dock(row)};
  for (const double scale : {0.5, 0.75, 1.6}) {
    row = SnapshotFixture::starterDock();
    row.scale = scale;
    rows << SnapshotPicture{u"scale %1"_s.arg(scale), painter.dock(row)};
  }
  album.add(u"docks"_s, u"scene"_s, painter.density(), painter.scene(SnapshotFixture::starterDock()));
  album.add(u"sheets"_s, u"docks"_s, painter.density(), painter.list(QStringLiteral("Docks"), rows));
}

/// Panels in their further states, each in dark, and all of a kind on a sheet in each scheme.
void addStates(Album& album, std::vector<SnapshotPainter>& painters) {
  for (const WidgetDefinition& definition : Catalog::items()) {
    const std::span<const PanelState> states = Rooms::states(definition.id);
    if (states.empty()) continue;
    for (SnapshotPainter& painter : painters) {
      QList<SnapshotPicture> tiles;
      QList<SnapshotPicture> pictures;
      for (const PanelState& state : states) {
        if (state.fill) tiles << SnapshotPicture{state.name, painter.tile(definition.id, state)};
        pictures << SnapshotPicture{state.name, painter.panel(definition.id, state)};
        if (&painter == &painters.front())
          album.add(u"panels"_s, definition.id + u'-' + state.name, painter.density(),
                    painter.onGround(pictures.last().image));
      }
      album.add(u"sheets"_s, definition.id + u"-states-"_s + painter.scheme().name, painter.density(),
                painter.sheet(definition.name, tiles, pictures));
    }
  }
}

void addBars(Album& album, SnapshotPainter& painter, const QList<SnapshotPane>& bars) {
  QList<SnapshotPicture> all;
  for (const SnapshotPane& bar : bars) {
    all << SnapshotPicture{bar.name, painter.pane(bar)};
    album.add(u"bars"_s, bar.name + u'-' + painter.scheme().name, painter.density(), all.last().image);
  }
  album.add(u"sheets"_s, u"bars-"_s + painter.scheme().name, painter.density(),
            painter.list(SnapshotWords::tr("Command Bar"), all));
}

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
    if (options.panels) addStates(album, painters);
    if (options.docks) addDocks(album, dark);
    if (options.windows)
      for (const SnapshotWindow& window : options.windowList)
        for (const bool isDark : {true, false})
          album.add(u"windows"_s, window.name + (isDark ? u"-dark"_s : u"-light"_s), density,
                    painters[isDark ? 0 : 1].window(*window.make(isDark)));
    if (options.bars && !options.barList.isEmpty())
      for (SnapshotPainter& painter : painters) addBars(album, painter, options.barList);
  }
  return album.files();
}

}  // namespace tarnwick
