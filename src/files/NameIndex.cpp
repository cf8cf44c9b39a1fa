#include "files/NameIndex.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>

#include <QFile>
#include <QStringDecoder>
#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <vector>

#include "base/FileDescriptor.h"
#include "base/Text.h"

namespace tarnwick {

/// One row of the table. Folders come before what is in them, and the texts are in the order of the rows.
struct NameIndex::Entry {
  quint32 folded = 0;    ///< Where its folded name begins.
  quint32 original = 0;  ///< Where its name begins; kAsFolded where that is the same text.
  quint32 folder = 0;    ///< With its traits in the two highest bits.
  quint32 changed = 0;
};

namespace {

constexpr quint32 kAsFolded = std::numeric_limits<quint32>::max();
constexpr quint32 kHiddenBit = 1U << 31;
constexpr quint32 kFolderBit = 1U << 30;
constexpr quint32 kPlaceBits = kFolderBit - 1;
constexpr qsizetype kMostText = 1 << 30;
constexpr std::size_t kEntryBytes = 16;
constexpr std::size_t kSearchBlock = 64;

struct NameIndexHeader {
  std::array<char, 8> magic{'t', 'w', 'n', 'a', 'm', 'e', 's', '1'};
  quint32 count = 0;
  quint32 foldedBytes = 0;
  quint32 originalBytes = 0;
  quint32 spare = 0;
};

/// Calls `found` with the places at which a text stands in another. It gives the place from which to go on.
template <class Found>
void eachMatch(QByteArrayView in, QByteArrayView wanted, const std::stop_token& stop, Found found) {
  constexpr qsizetype kBlock = kSearchBlock;
  const qsizetype last = wanted.size() - 1;
  const char first = wanted.front();
  const char final = wanted.back();
  const qsizetype end = in.size() - last;
  for (qsizetype at = 0; at < end && !stop.stop_requested();) {
    // Blocks of a fixed length, so that the compiler compares many bytes at once.
    const char* begin = in.data() + at;
    const qsizetype width = std::min(kBlock, end - at);
    std::array<unsigned char, kSearchBlock> marks{};
    unsigned char any = 0;
    if (width == kBlock) {
      for (std::size_t i = 0; i < kSearchBlock; ++i)
        marks[i] =
            static_cast<unsigned char>((begin[i] == first) & (begin[i + static_cast<std::size_t>(last)] == final));
      for (std::size_t i = 0; i < kSearchBlock; ++i) any = static_cast<unsigned char>(any | marks[i]);
    } else {
      any = 1;
      for (qsizetype i = 0; i < width; ++i)
        marks[static_cast<std::size_t>(i)] = begin[i] == first && begin[i + last] == final;
    }
    qsizetype next = at + width;
    for (qsizetype i = 0; any && i < width; ++i) {
      if (!marks[static_cast<std::size_t>(i)]) continue;
      if (std::memcmp(begin + i, wanted.data(), static_cast<std::size_t>(wanted.size())) != 0) continue;
      next = found(at + i);
      break;
    }
    at = next;
  }
}

}  // namespace

NameIndex::Builder::Builder(const QByteArray& root) { append(0, root, {}, 0, {.isFolder = true}); }

void NameIndex::Builder::append(quint32 folder, const QByteArray& name, const QByteArray& folded, qint64 changed,
                                Traits traits) {
  Entry entry;
  entry.folded = static_cast<quint32>(folded_.size());
  entry.original = name == folded ? kAsFolded : static_cast<quint32>(originals_.size());
  entry.folder = folder | (traits.isHidden ? kHiddenBit : 0) | (traits.isFolder ? kFolderBit : 0);
  entry.changed = static_cast<quint32>(std::clamp<qint64>(changed, 0, std::numeric_limits<quint32>::max()));
  static_assert(sizeof(Entry) == kEntryBytes);
  entries_.append(reinterpret_cast<const char*>(&entry), sizeof entry);
  folded_.append(folded).append('\0');
  if (name != folded) originals_.append(name).append('\0');
  ++count_;
}

std::optional<quint32> NameIndex::Builder::add(quint32 folder, const QByteArray& name, qint64 changed, Traits traits) {
  QStringDecoder decoder(QStringDecoder::Utf8);
  const QString text = decoder(name);
  const bool isFull = count_ >= kPlaceBits || folded_.size() > kMostText || originals_.size() > kMostText;
  if (decoder.hasError() || isFull || folder >= count_ || name.isEmpty()) {
    ++leftOut_;
    return std::nullopt;
  }
  append(folder, name, Text::folded(text).toUtf8(), changed, traits);
  return count_ - 1;
}

QByteArray NameIndex::Builder::finish() {
  NameIndexHeader header;
  header.count = count_;
  header.foldedBytes = static_cast<quint32>(folded_.size());
  header.originalBytes = static_cast<quint32>(originals_.size());
  QByteArray file(reinterpret_cast<const char*>(&header), sizeof header);
  file.reserve(file.size() + entries_.size() + folded_.size() + originals_.size());
  for (QByteArray* part : {&entries_, &folded_, &originals_}) {
    file.append(*part);
    *part = QByteArray();
  }
  count_ = 0;
  return file;
}

std::unique_ptr<NameIndex> NameIndex::open(const QString& path, const QByteArray& root) {
  const FileDescriptor file(::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
  struct stat status {};
  if (!file || ::fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode)) return nullptr;
  const auto size = static_cast<std::size_t>(status.st_size);
  if (size < sizeof(NameIndexHeader)) return nullptr;
  void* mapped = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file.number(), 0);
  if (mapped == MAP_FAILED) return nullptr;
  std::unique_ptr<NameIndex> index(new NameIndex(static_cast<const std::byte*>(mapped), size));
  return index->readHeader() && index->name(0) == root ? std::move(index) : nullptr;
}

NameIndex::~NameIndex() { ::munmap(const_cast<std::byte*>(begin_), size_); }

bool NameIndex::readHeader() {
  NameIndexHeader header;
  std::memcpy(&header, begin_, sizeof header);
  if (header.magic != NameIndexHeader().magic || header.count == 0 || header.foldedBytes == 0) return false;
  const std::size_t entries = header.count * kEntryBytes;
  if (size_ != sizeof header + entries + header.foldedBytes + header.originalBytes) return false;
  const auto* texts = reinterpret_cast<const char*>(begin_ + sizeof header + entries);
  count_ = header.count;
  folded_ = QByteArrayView(texts, header.foldedBytes);
  originals_ = QByteArrayView(texts + header.foldedBytes, header.originalBytes);
  // So a text that begins within them also ends there.
  return folded_.back() == '\0' && (originals_.isEmpty() || originals_.back() == '\0');
}

NameIndex::Entry NameIndex::entry(quint32 place) const {
  Entry entry;
  if (place < count_) std::memcpy(&entry, begin_ + sizeof(NameIndexHeader) + place * kEntryBytes, kEntryBytes);
  return entry;
}

QByteArrayView NameIndex::textAt(QByteArrayView texts, quint32 offset) const {
  if (offset >= texts.size()) return {};
  const char* begin = texts.data() + offset;
  return {begin, static_cast<qsizetype>(std::strlen(begin))};
}

NameIndex::Traits NameIndex::traits(quint32 place) const {
  const quint32 bits = entry(place).folder;
  return {.isFolder = (bits & kFolderBit) != 0, .isHidden = (bits & kHiddenBit) != 0};
}

QByteArray NameIndex::name(quint32 place) const {
  const Entry found = entry(place);
  const bool isFolded = found.original == kAsFolded;
  return (isFolded ? textAt(folded_, found.folded) : textAt(originals_, found.original)).toByteArray();
}

QByteArray NameIndex::path(quint32 place) const {
  QByteArray path = name(place);
  while (place > 0) {
    const quint32 folder = entry(place).folder & kPlaceBits;
    if (folder >= place) return {};  // No folder comes behind what is in it: the file is damaged.
    place = folder;
    const QByteArray above = name(place);
    path.prepend(above.endsWith('/') ? above : above + '/');
  }
  return path;
}

quint32 NameIndex::placeOf(quint32 offset, quint32 from) const {
  // The one that is looked for is rarely far away.
  quint32 step = 1;
  quint32 low = from;
  while (step < count_ - low && entry(low + step).folded <= offset) {
    low += step;
    step *= 2;
  }
  quint32 high = std::min(count_, low + step);
  while (high - low > 1) {
    const quint32 middle = low + (high - low) / 2;
    (entry(middle).folded <= offset ? low : high) = middle;
  }
  return low;
}

QList<NameIndex::Hit> NameIndex::find(const QString& text, qsizetype most, const std::stop_token& stop) const {
  const QByteArray wanted = Text::folded(text).toUtf8();
  if (wanted.isEmpty() || wanted.contains('\0') || most <= 0) return {};
  const bool asksHidden = wanted.startsWith('.');
  const auto isNewer = [](const Hit& left, const Hit& right) {
    return left.changed != right.changed ? left.changed > right.changed : left.place < right.place;
  };
  std::vector<Hit> best;  // A heap whose first is the one to go next.
  quint32 place = 0;
  eachMatch(folded_, wanted, stop, [&](qsizetype at) {
    place = placeOf(static_cast<quint32>(at), place);
    const Entry found = entry(place);
    const Hit hit{place, found.changed};
    if (asksHidden || !(found.folder & kHiddenBit)) {
      const bool isFull = static_cast<qsizetype>(best.size()) >= most;
      if (isFull && isNewer(hit, best.front())) {
        std::ranges::pop_heap(best, isNewer);
        best.pop_back();
      }
      if (static_cast<qsizetype>(best.size()) < most) {
        best.push_back(hit);
        std::ranges::push_heap(best, isNewer);
      }
    }
    // On with the next name.
    return at + static_cast<qsizetype>(std::strlen(folded_.data() + at)) + 1;
  });
  if (stop.stop_requested()) return {};
  std::ranges::sort(best, isNewer);
  return QList<Hit>(best.begin(), best.end());
}

}  // namespace tarnwick
