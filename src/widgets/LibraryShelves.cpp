#include "widgets/LibraryShelves.h"

#include <algorithm>

#include "base/Text.h"
#include "widgets/LibraryWords.h"
#include "widgets/PinnedTiles.h"
#include "widgets/catalog/Catalog.h"
#include "widgets/catalog/KindTraits.h"
#include "widgets/catalog/Options.h"
#include "widgets/catalog/SearchWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

LibraryItem itemOf(LibraryEntry entry, const QString& group) {
  LibraryItem item;
  if (entry.widget) item.kind = entry.widget->kind;
  QString words = entry.title + u' ' + group + u' ' + item.kind;
  if (!item.kind.isEmpty()) {
    const WidgetDefinition& definition = Catalog::find(item.kind);
    words += u' ' + definition.name + u' ' + searchWords(definition);
  }
  item.words = Text::folded(words);
  // The tile will have the name that the folder has here.
  const QString path = entry.widget ? entry.widget->options.value(option::path) : QString();
  if (KindTraits::of(item.kind).isFolder && !path.isEmpty()) entry.title = PinnedTiles::nameOf(path);
  item.entry = std::move(entry);
  return item;
}

LibraryShelf shelfOf(const QString& name, const QString& symbol, const QList<LibraryEntry>& entries) {
  LibraryShelf shelf{name, symbol, {}};
  shelf.items.reserve(entries.size());
  for (const LibraryEntry& entry : entries) shelf.items.append(itemOf(entry, name));
  return shelf;
}

LibraryShelf shelfOfKinds(const QString& name, const QString& symbol, const QStringList& kinds) {
  QList<LibraryEntry> entries;
  entries.reserve(kinds.size());
  for (const QString& kind : kinds) entries.append(LibraryEntry::ofKind(kind));
  return shelfOf(name, symbol, entries);
}

}  // namespace

QList<LibraryShelf> LibraryShelves::all(const QList<StandardApplication>& applications,
                                        const StandardFolders& folders) {
  const QStringList& names = Catalog::categories();
  QList<LibraryShelf> shelves;
  shelves.append(shelfOf(names.value(1), u"app"_s, LibraryEntry::apps(applications)));
  shelves.append(shelfOf(names.value(2), u"folder"_s, LibraryEntry::folders(folders)));
  for (const WidgetGroup& group : Catalog::groups())
    shelves.append(shelfOfKinds(group.name, group.symbol, group.kinds));
  QStringList extras;
  for (const WidgetDefinition& extra : Catalog::extraItems()) extras.append(extra.id);
  shelves.append(shelfOfKinds(names.last(), u"ellipsis"_s, extras));
  return shelves;
}

LibraryShelf LibraryShelves::toTry() {
  const auto kinds = Catalog::suggestedKinds();
  return shelfOfKinds(LibraryWords::tr("Try these"), u"sparkles"_s, QStringList(kinds.begin(), kinds.end()));
}

QList<LibraryShelf> LibraryShelves::fitting(const QList<LibraryShelf>& shelves, const QString& section,
                                            const QString& search) {
  const bool isShelf = std::ranges::find(shelves, section, &LibraryShelf::name) != shelves.end();
  const QStringList wanted = Text::folded(search).split(u' ', Qt::SkipEmptyParts);
  QList<LibraryShelf> found;
  for (LibraryShelf shelf : shelves) {
    if (isShelf && shelf.name != section) continue;
    shelf.items.removeIf([&wanted](const LibraryItem& item) {
      return !std::ranges::all_of(wanted, [&item](const QString& word) { return item.words.contains(word); });
    });
    if (!shelf.items.isEmpty()) found.append(shelf);
  }
  return found;
}

bool LibraryShelves::isPlaced(const LibraryItem& item, const DockProfile& profile) {
  if (item.kind.isEmpty()) return false;
  const QString path = item.entry.widget->options.value(option::path);
  return std::ranges::any_of(profile.widgets, [&](const DockWidget& placed) {
    return placed.kind == item.kind && (path.isEmpty() || placed.options.value(option::path) == path);
  });
}

std::optional<DockWidget> LibraryShelves::freshWidget(const LibraryItem& item) {
  std::optional<DockWidget> widget = item.entry.widget;
  if (widget) widget->id = QUuid::createUuid();
  return widget;
}

}  // namespace tarnwick
