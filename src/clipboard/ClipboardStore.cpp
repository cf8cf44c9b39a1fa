#include "clipboard/ClipboardStore.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>
#include <algorithm>

#include "base/DomainError.h"
#include "base/DurableFile.h"
#include "base/SmallFile.h"
#include "base/Text.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

struct ClipboardStoreWords {
  Q_DECLARE_TR_FUNCTIONS(Clipboard)
};

/// The file of the index.
struct ClipboardIndex {
  int version = 0;
  QList<ClipboardEntry> entries;

  static constexpr auto fields() {
    return std::tuple(field::required("version", &ClipboardIndex::version),
                      field::required("entries", &ClipboardIndex::entries));
  }
};

const QString kIndexName = u"index.json"_s;
const QString kHeldName = u"held"_s;
constexpr qint64 kMostHeldBytes = 64;  ///< An identity and an end of line have space.

auto placeOf(const QList<ClipboardEntry>& items, const QUuid& id) {
  return std::ranges::find(items, id, &ClipboardEntry::id);
}

/// The entry of the same thing.
auto likeOf(const QList<ClipboardEntry>& items, const ClipboardEntry& entry) {
  return std::ranges::find_if(items, [&](const ClipboardEntry& each) {
    if (each.kind != entry.kind) return false;
    return entry.kind == ClipboardEntry::Kind::Image ? each.imageFile == entry.imageFile : each.value == entry.value;
  });
}

bool isWithinLimits(const ClipboardCapture& capture) {
  if (capture.imageData) return capture.imageData->size() <= ClipboardStore::kMostImageBytes;
  return !capture.value.isEmpty() && capture.value.toUtf8().size() <= ClipboardStore::kMostTextBytes;
}

QString digestName(const QByteArray& png) {
  return QString::fromLatin1(QCryptographicHash::hash(png, QCryptographicHash::Sha256).toHex()) + u".png"_s;
}

}  // namespace

QString ClipboardStore::needsRepair() {
  return ClipboardStoreWords::tr("Your clipboard history needs repair before it can change. Nothing has been deleted.");
}

QString ClipboardStore::folder() const { return QDir(root_).filePath(u"Clipboard"_s); }

QString ClipboardStore::indexPath() const { return QDir(folder()).filePath(kIndexName); }

QString ClipboardStore::heldPath() const { return QDir(folder()).filePath(kHeldName); }

void ClipboardStore::load() {
  if (loaded_) {
    if (!readable_) throw DomainError::invalid(needsRepair());
    return;
  }
  loaded_ = true;
  DurableFile::removeLeftovers(indexPath());
  try {
    const auto bytes = DurableFile::readIfPresent(indexPath());
    if (!bytes) return;
    auto index = RecordCodec::fromBytes<ClipboardIndex>(*bytes);
    if (index.version != kIndexVersion) throw DomainError::invalid(ClipboardStoreWords::tr("unsupported format"));
    items_ = std::move(index.entries);
  } catch (const DomainError&) {
    readable_ = false;
    throw DomainError::invalid(
        ClipboardStoreWords::tr("Your clipboard history couldn't be read. It has been kept at %1.").arg(indexPath()));
  }
}

std::optional<ClipboardEntry> ClipboardStore::record(const ClipboardCapture& capture, const QDateTime& now) {
  load();
  if (!isWithinLimits(capture)) return std::nullopt;
  ClipboardEntry entry{.id = QUuid::createUuid(),
                       .kind = capture.kind,
                       .value = capture.value,
                       .imageFile = {},
                       .added = now,
                       .favourite = false};
  bool isNewFile = false;
  if (capture.imageData) {
    entry.imageFile = digestName(*capture.imageData);
    isNewFile = !QFileInfo::exists(QDir(folder()).filePath(entry.imageFile));
    if (isNewFile) savePicture(*capture.imageData, entry.imageFile);
  }
  QList<ClipboardEntry> items = items_;
  const auto old = likeOf(items_, entry);
  const bool isKnown = old != items_.cend();
  if (isKnown) {
    entry = *old;
    entry.added = now;
    items.removeAt(old - items_.cbegin());
  }
  items.prepend(entry);
  try {
    save(isKnown ? items : evict(items));
  } catch (const DomainError&) {
    if (isNewFile) QFile::remove(QDir(folder()).filePath(entry.imageFile));
    throw;
  }
  removeFiles(items);
  return entry;
}

void ClipboardStore::toggleFavourite(const QUuid& id) {
  load();
  const auto found = placeOf(items_, id);
  if (found == items_.cend()) return;
  QList<ClipboardEntry> items = items_;
  ClipboardEntry& entry = items[found - items_.cbegin()];
  entry.favourite = !entry.favourite;
  save(items);
}

std::optional<RemovedClipboardEntry> ClipboardStore::remove(const QUuid& id) {
  load();
  const auto found = placeOf(items_, id);
  if (found == items_.cend()) return std::nullopt;
  const RemovedClipboardEntry removed{*found, found - items_.cbegin(), picture(*found)};
  const QList<ClipboardEntry> before = items_;
  QList<ClipboardEntry> items = items_;
  items.removeAt(removed.place);
  save(items);
  removeFiles(before);
  return removed;
}

void ClipboardStore::putBack(const RemovedClipboardEntry& removed) {
  load();
  QList<ClipboardEntry> items = items_;
  if (const auto again = likeOf(items_, removed.entry); again != items_.cend()) {
    items[again - items_.cbegin()].favourite |= removed.entry.favourite;
    save(items);
    return;
  }
  items.insert(std::min(removed.place, items.size()), removed.entry);
  const auto url = imageURL(removed.entry);
  const bool isNewFile = url && removed.picture && !QFileInfo::exists(url->toLocalFile());
  if (isNewFile) savePicture(*removed.picture, removed.entry.imageFile);
  try {
    save(evict(items));
  } catch (const DomainError&) {
    if (isNewFile) QFile::remove(url->toLocalFile());
    throw;
  }
  removeFiles(items);
}

void ClipboardStore::clear() {
  load();
  try {
    save({});
  } catch (const DomainError&) {
    // A full disk takes no file, but lets one go: without an index there is no history.
    if (!QFile::remove(indexPath())) throw;
    items_.clear();
  }
  if (emptyFolder()) return;
  throw DomainError::invalid(
      ClipboardStoreWords::tr("Some pictures of your clipboard history couldn't be deleted. They are in “%1”.")
          .arg(folder()));
}

bool ClipboardStore::emptyFolder() const {
  bool isEmptied = true;
  const auto all = QDir(folder()).entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
  for (const QFileInfo& each : all) {
    if (each.fileName() == kIndexName) continue;
    const bool isFolder = each.isDir() && !each.isSymLink();
    const bool isGone = isFolder ? QDir(each.filePath()).removeRecursively() : QFile::remove(each.filePath());
    isEmptied = isEmptied && isGone;
  }
  return isEmptied;
}

void ClipboardStore::migrate(const QStringList& texts, const QDateTime& now) {
  load();
  QList<ClipboardEntry> items = items_;
  QSet<QString> known;
  for (const ClipboardEntry& entry : items_) known.insert(entry.value);
  for (const QString& text : texts) {
    if (Text::trimmed(text).isEmpty() || known.contains(text)) continue;
    known.insert(text);
    items.append({.id = QUuid::createUuid(),
                  .kind = ClipboardCapture::kindOfText(text),
                  .value = text,
                  .imageFile = {},
                  .added = now,
                  .favourite = false});
  }
  save(evict(items));
  removeFiles(items);
}

void ClipboardStore::noteHeld(bool isHeld) {
  load();
  if (!isHeld || items_.isEmpty()) {
    QFile::remove(heldPath());
    return;
  }
  DurableFile::makeParent(heldPath());
  DurableFile::writeQuickly(items_.first().id.toByteArray(QUuid::WithoutBraces), heldPath(), DurableFile::kPrivate);
}

QUuid ClipboardStore::takeHeld() {
  const QByteArray noted = SmallFile::read(heldPath(), kMostHeldBytes).value_or(QByteArray());
  QFile::remove(heldPath());
  return QUuid::fromString(QString::fromLatin1(noted).trimmed());
}

std::optional<QUrl> ClipboardStore::imageURL(const ClipboardEntry& entry) const {
  const QString& name = entry.imageFile;
  if (name.isEmpty() || name == u"."_s || name.contains(u'/') || name.contains(u".."_s)) return std::nullopt;
  return QUrl::fromLocalFile(QDir(folder()).filePath(name));
}

std::optional<QByteArray> ClipboardStore::picture(const ClipboardEntry& entry) const {
  const auto url = imageURL(entry);
  return url ? SmallFile::read(url->toLocalFile(), kMostImageBytes) : std::nullopt;
}

void ClipboardStore::save(const QList<ClipboardEntry>& items) {
  if (!readable_) throw DomainError::invalid(needsRepair());
  const QByteArray bytes = RecordCodec::toBytes(ClipboardIndex{kIndexVersion, items}, QJsonDocument::Indented);
  if (bytes.size() > kMostIndexBytes) {
    throw DomainError::invalid(
        ClipboardStoreWords::tr("Your clipboard history is too large to take in more. Remove some favourites first."));
  }
  DurableFile::makeParent(indexPath());
  DurableFile::writeAtomically(bytes, indexPath(), DurableFile::kPrivate);
  items_ = items;
}

void ClipboardStore::savePicture(const QByteArray& png, const QString& name) {
  const QString path = QDir(folder()).filePath(name);
  DurableFile::makeParent(path);
  DurableFile::writeAtomically(png, path, DurableFile::kPrivate);
}

QList<ClipboardEntry> ClipboardStore::evict(const QList<ClipboardEntry>& items) {
  int images = 0;
  int others = 0;
  QList<ClipboardEntry> kept;
  kept.reserve(items.size());
  for (const ClipboardEntry& entry : items) {
    const bool isKept = entry.favourite ||
                        (entry.kind == ClipboardEntry::Kind::Image ? ++images <= kKeptImages : ++others <= kKeptOthers);
    if (isKept) kept.append(entry);
  }
  return kept;
}

void ClipboardStore::removeStrayPictures() {
  load();
  if (!QFileInfo::exists(indexPath())) return;
  static const QRegularExpression digest(u"^[0-9a-f]{64}\\.png$"_s);
  QSet<QString> kept;
  for (const ClipboardEntry& entry : items_) kept.insert(entry.imageFile);
  for (const QString& name : QDir(folder()).entryList(QDir::Files))
    if (!kept.contains(name) && digest.match(name).hasMatch()) QFile::remove(QDir(folder()).filePath(name));
}

void ClipboardStore::removeFiles(const QList<ClipboardEntry>& before) const {
  QSet<QString> kept{kIndexName, kHeldName};
  for (const ClipboardEntry& entry : items_) kept.insert(entry.imageFile);
  for (const ClipboardEntry& entry : before) {
    const auto url = imageURL(entry);
    if (url && !kept.contains(entry.imageFile)) QFile::remove(url->toLocalFile());
  }
}

}  // namespace tarnwick
