#include "widgets/DropRules.h"

#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMimeData>
#include <QStandardPaths>
#include <algorithm>
#include <initializer_list>
#include <optional>

#include "widgets/PinnedTiles.h"
#include "widgets/WidgetFolder.h"
#include "widgets/catalog/Catalog.h"
#include "widgets/catalog/Family.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr auto kWidgetText = "tarnwick-widget:"_L1;

std::optional<struct stat> factsOf(const QString& path) {
  struct stat facts {};
  if (path.isEmpty() || ::stat(QFile::encodeName(path).constData(), &facts) != 0) return std::nullopt;
  return facts;
}

Qt::DropAction firstOf(Qt::DropActions possible, std::initializer_list<Qt::DropAction> wanted) {
  for (const Qt::DropAction action : wanted)
    if (possible.testFlag(action)) return action;
  return Qt::IgnoreAction;
}

}  // namespace

DropRules::Taker DropRules::takerOf(const DockWidget& widget) {
  const Taker taker = KindTraits::of(widget.kind).takes;
  if (taker == Taker::Application && !PinnedTiles::isDesktopEntry(widget.options.value(option::path)))
    return Taker::None;
  return taker == Taker::Folder && folderOf(widget).isEmpty() ? Taker::None : taker;
}

QString DropRules::folderOf(const DockWidget& widget) {
  if (Catalog::find(widget.kind).family != Family::Files) return {};
  return widgetFolder(widget);
}

bool DropRules::carriesWidget(const QMimeData& data) { return data.hasText() && data.text().startsWith(kWidgetText); }

bool DropRules::carriesFiles(const QMimeData& data) { return data.hasUrls(); }

Qt::DropAction DropRules::action(Taker taker, Qt::DropActions possible, Qt::KeyboardModifiers modifiers,
                                 bool sameFileSystem) {
  switch (taker) {
    case Taker::Folder: {
      const bool copies = modifiers.testFlag(Qt::ControlModifier);
      const bool moves = !copies && (modifiers.testFlag(Qt::ShiftModifier) || sameFileSystem);
      return moves ? firstOf(possible, {Qt::MoveAction, Qt::CopyAction})
                   : firstOf(possible, {Qt::CopyAction, Qt::MoveAction});
    }
    case Taker::Trash:
      return firstOf(possible, {Qt::MoveAction, Qt::CopyAction});
    case Taker::Application:
    case Taker::Share:
      return firstOf(possible, {Qt::CopyAction, Qt::LinkAction});
    case Taker::Shelf:
    case Taker::None:
      break;
  }
  return firstOf(possible, {Qt::LinkAction, Qt::CopyAction});
}

DropRules::Folder DropRules::lookAt(const QString& folder, const QList<QUrl>& urls) {
  const auto there = factsOf(folder);
  if (!there || !S_ISDIR(there->st_mode)) return {};
  const auto from = urls.isEmpty() || !urls.first().isLocalFile() ? std::nullopt : factsOf(urls.first().toLocalFile());
  return {true, from && from->st_dev == there->st_dev};
}

bool DropRules::holdsAll(const QString& folder, const QList<QUrl>& urls) {
  const QString clean = QDir::cleanPath(folder);
  return std::ranges::all_of(urls, [&clean](const QUrl& url) {
    const QString path = QDir::cleanPath(url.toLocalFile());
    return url.isLocalFile() && (path == clean || QFileInfo(path).path() == clean);
  });
}

}  // namespace tarnwick
