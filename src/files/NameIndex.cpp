#include "files/NameIndex.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <QStringDecoder>
#include <QtEndian>
#include <algorithm>
#include <array>
#include <bit>
#include <climits>
#include <cstring>
#include <functional>
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
constexpr qsizetype kOwnPlace = 40 * 1024 * 1024;
constexpr std::size_t kEntryBytes = 16;
constexpr std::size_t kSearchBlock = 64;

struct NameIndexHeader {
  std::array<char, 8> magic{'t', 'w', 'n', 'a', 'm', 'e', 's', '2'};
  quint32 count = 0;
  quint32 foldedBytes = 0;
  quint32 originalBytes = 0;
  quint32 isWhole = 0;
  quint64 sum = 0;  ///< Of all that follows.
};

/// A number that is another one when any byte is. `sum` is that of what stands before.
quint64 sumOf(QByteArrayView bytes, quint64 sum) {
  constexpr quint64 kFactor = 0x9E3779B97F4A7C15;
  constexpr int kTurn = 29;
  const qsizetype words = bytes.size() / 8 * 8;
  quint64 word = 0;
  for (qsizetype at = 0; at < words; at += 8) {
    std::memcpy(&word, bytes.data() + at, sizeof word);
    sum = (sum ^ word) * kFactor;
    sum ^= sum >> kTurn;
  }
  for (const char byte : bytes.sliced(words)) sum = (sum ^ static_cast<unsigned char>(byte)) * kFactor;
  return sum;
}

/// How early one entry is found: by the folder first, then by its time.
quint64 weightOf(bool isFirst, quint32 changed) { return (isFirst ? 1ULL << 32 : 0) | changed; }

/// Where a byte stands in a block and another one so much behind it, a bit each.
quint64 pairsIn(const char* block, qsizetype width, char first, char final, qsizetype apart) {
  std::array<unsigned char, kSearchBlock> marks{};
  if (width == static_cast<qsizetype>(kSearchBlock)) {
    // Of a fixed length, so that the compiler compares many bytes at once.
    const char* behind = block + apart;
    for (std::size_t i = 0; i < kSearchBlock; ++i)
      marks[i] = static_cast<unsigned char>((block[i] == first) & (behind[i] == final));
  } else {
    for (qsizetype i = 0; i < width; ++i)
      marks[static_cast<std::size_t>(i)] = block[i] == first && block[i + apart] == final;
  }
  constexpr std::size_t kBytes = sizeof(quint64);
  constexpr quint64 kGather = 0x0102040810204080;  // Moves the lowest bit of each byte into the highest byte.
  quint64 pairs = 0;
  for (std::size_t i = 0; i < kSearchBlock; i += kBytes) {
    const quint64 eight = qFromLittleEndian<quint64>(marks.data() + i);
    pairs |= ((eight * kGather) >> 56) << i;
  }
  return pairs;
}

/// Calls `found` with the places at which a text stands in another. It gives the place from which to go on.
template <class Found>
void eachMatch(QByteArrayView in, QByteArrayView wanted, const std::stop_token& stop, Found found) {
  constexpr qsizetype kBlock = kSearchBlock;
  const qsizetype last = wanted.size() - 1;
  const auto inner = static_cast<std::size_t>(std::max<qsizetype>(last - 1, 0));
  const qsizetype end = in.size() - last;
  for (qsizetype at = 0; at < end && !stop.stop_requested();) {
    const char* begin = in.data() + at;
    const qsizetype width = std::min(kBlock, end - at);
    qsizetype next = at + width;
    quint64 pairs = pairsIn(begin, width, wanted.front(), wanted.back(), last);
    while (pairs) {
      const int i = std::countr_zero(pairs);
      pairs &= pairs - 1;
      if (std::memcmp(begin + i + 1, wanted.data() + 1, inner) != 0) continue;
      const qsizetype goOn = found(at + i);
      if (goOn - at >= width) {
        next = goOn;
        break;
      }
      pairs &= ~0ULL << (goOn - at);
    }
    at = next;
  }
}

/// Moves the bytes behind others piece by piece, and gives the memory of each piece back: there is never all of them
/// twice.
void moveBehind(QByteArray& all, QByteArray& part) {
  constexpr qsizetype kPiece = 1 << 20;
  static const auto page = static_cast<quintptr>(::sysconf(_SC_PAGESIZE));
  char* const begin = part.data();
  const auto aligned = (reinterpret_cast<quintptr>(begin) + page - 1) / page * page;
  for (qsizetype at = 0; at < part.size(); at += kPiece) {
    const qsizetype count = std::min(kPiece, part.size() - at);
    all.append(begin + at, count);
    const quintptr done = reinterpret_cast<quintptr>(begin + at + count) / page * page;
    // Whole pages alone, so that nothing beside it is touched. They are not read again.
    if (done > aligned) ::madvise(reinterpret_cast<void*>(aligned), done - aligned, MADV_DONTNEED);
  }
  part = QByteArray();
}

QByteArray asFolder(const QByteArray& path) { return path.endsWith('/') ? path : path + '/'; }

NameIndex::Traits traitsOf(quint32 folderBits) {
  return {.isFolder = (folderBits & kFolderBit) != 0, .isHidden = (folderBits & kHiddenBit) != 0};
}

}  // namespace

NameIndex::Builder::Builder(const QByteArray& root) {
  // So large that the system gives each a place of its own, where it grows without being copied. What is not written
  // to takes no memory.
  for (QByteArray* part : {&entries_, &folded_, &originals_}) part->reserve(kOwnPlace);
  append(0, root, {}, kUnread, {.isFolder = true});
}

bool NameIndex::Builder::isFull() const {
  return count_ >= kPlaceBits || folded_.size() > kMostText || originals_.size() > kMostText;
}

void NameIndex::Builder::append(quint32 folder, QByteArrayView name, QByteArrayView folded, quint32 changed,
                                Traits traits) {
  Entry entry;
  entry.folded = static_cast<quint32>(folded_.size());
  entry.original = name == folded ? kAsFolded : static_cast<quint32>(originals_.size());
  entry.folder = folder | (traits.isHidden ? kHiddenBit : 0) | (traits.isFolder ? kFolderBit : 0);
  entry.changed = changed;
  static_assert(sizeof(Entry) == kEntryBytes);
  entries_.append(reinterpret_cast<const char*>(&entry), sizeof entry);
  folded_.append(folded).append('\0');
  if (name != folded) originals_.append(name).append('\0');
  ++count_;
}

std::optional<quint32> NameIndex::Builder::add(quint32 folder, const QByteArray& name, qint64 changed, Traits traits) {
  QStringDecoder decoder(QStringDecoder::Utf8);
  const QString text = decoder(name);
  if (decoder.hasError() || isFull() || folder >= count_ || name.isEmpty()) {
    ++leftOut_;
    return std::nullopt;
  }
  const qint64 most = std::numeric_limits<quint32>::max();
  append(folder, name, Text::folded(text).toUtf8(), static_cast<quint32>(std::clamp<qint64>(changed, 0, most)), traits);
  return count_ - 1;
}

std::optional<quint32> NameIndex::Builder::add(quint32 folder, const NameIndex& other, quint32 place) {
  const QByteArray name = other.name(place);
  if (isFull() || folder >= count_ || name.isEmpty()) {
    ++leftOut_;
    return std::nullopt;
  }
  const Entry known = other.entry(place);
  append(folder, name, other.textAt(other.folded_, known.folded), known.changed, other.traits(place));
  return count_ - 1;
}

NameIndex::Entry NameIndex::Builder::entry(quint32 place) const {
  Entry entry;
  if (place < count_) std::memcpy(&entry, entries_.constData() + place * kEntryBytes, kEntryBytes);
  return entry;
}

void NameIndex::Builder::setChanged(quint32 place, quint32 changed) {
  if (place >= count_) return;
  Entry changing = entry(place);
  changing.changed = changed;
  std::memcpy(entries_.data() + place * kEntryBytes, &changing, kEntryBytes);
}

NameIndex::Traits NameIndex::Builder::traits(quint32 place) const { return traitsOf(entry(place).folder); }

QByteArray NameIndex::Builder::name(quint32 place) const {
  const Entry found = entry(place);
  if (found.original == kAsFolded) return QByteArray(folded_.constData() + found.folded);
  return QByteArray(originals_.constData() + found.original);
}

QByteArray NameIndex::Builder::path(quint32 place) const {
  QByteArray path = name(place);
  while (place > 0 && path.size() <= PATH_MAX) {
    place = entry(place).folder & kPlaceBits;
    path.prepend(asFolder(name(place)));
  }
  return path.size() <= PATH_MAX ? path : QByteArray();
}

QByteArray NameIndex::Builder::begin(bool isWhole) const {
  NameIndexHeader header;
  header.count = count_;
  header.foldedBytes = static_cast<quint32>(folded_.size());
  header.originalBytes = static_cast<quint32>(originals_.size());
  header.isWhole = isWhole ? 1 : 0;
  for (const QByteArray* part : {&entries_, &folded_, &originals_}) header.sum = sumOf(*part, header.sum);
  QByteArray file(reinterpret_cast<const char*>(&header), sizeof header);
  file.reserve(file.size() + entries_.size() + folded_.size() + originals_.size());
  return file;
}

QByteArray NameIndex::Builder::content(bool isWhole) const {
  return begin(isWhole).append(entries_).append(folded_).append(originals_);
}

QByteArray NameIndex::Builder::finish(bool isWhole) {
  QByteArray file = begin(isWhole);
  for (QByteArray* part : {&entries_, &folded_, &originals_}) moveBehind(file, *part);
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
  isWhole_ = header.isWhole != 0;
  folded_ = QByteArrayView(texts, header.foldedBytes);
  originals_ = QByteArrayView(texts + header.foldedBytes, header.originalBytes);
  // So a text that begins within them also ends there.
  return folded_.back() == '\0' && (originals_.isEmpty() || originals_.back() == '\0');
}

bool NameIndex::isSound() const {
  NameIndexHeader header;
  std::memcpy(&header, begin_, sizeof header);
  const auto* entries = reinterpret_cast<const char*>(begin_ + sizeof header);
  quint64 sum = sumOf({entries, static_cast<qsizetype>(count_ * kEntryBytes)}, 0);
  sum = sumOf(originals_, sumOf(folded_, sum));
  return sum == header.sum;
}

void NameIndex::warm() const {
  auto* const begin = const_cast<std::byte*>(begin_);
#ifdef MADV_POPULATE_READ
  if (::madvise(begin, size_, MADV_POPULATE_READ) == 0) return;
#endif
  // Linux before 5.14: read ahead, then page by page.
  ::madvise(begin, size_, MADV_WILLNEED);
  const auto page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
  for (std::size_t at = 0; at < size_; at += page) static_cast<void>(*static_cast<volatile std::byte*>(begin + at));
}

void NameIndex::forgetRead() const { ::madvise(const_cast<std::byte*>(begin_), size_, MADV_DONTNEED); }

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

NameIndex::Traits NameIndex::traits(quint32 place) const { return traitsOf(entry(place).folder); }

quint32 NameIndex::changed(quint32 place) const { return entry(place).changed; }

std::pair<quint32, quint32> NameIndex::contentOf(quint32 folder) const {
  // The first place whose folder is `wanted` or a later one; the root is no content of itself.
  const auto firstOf = [this](quint32 wanted) {
    quint32 low = 1;
    quint32 high = std::max(count_, low);
    while (low < high) {
      const quint32 middle = low + (high - low) / 2;
      if ((entry(middle).folder & kPlaceBits) < wanted)
        low = middle + 1;
      else
        high = middle;
    }
    return low;
  };
  const quint32 first = firstOf(folder);
  return {first, std::max(first, firstOf(folder + 1))};
}

QByteArray NameIndex::name(quint32 place) const {
  const Entry found = entry(place);
  const bool isFolded = found.original == kAsFolded;
  return (isFolded ? textAt(folded_, found.folded) : textAt(originals_, found.original)).toByteArray();
}

QByteArray NameIndex::path(quint32 place) const {
  QByteArray path = name(place);
  while (place > 0 && path.size() <= PATH_MAX) {
    const quint32 folder = entry(place).folder & kPlaceBits;
    if (folder >= place) return {};  // No folder comes behind what is in it: the file is damaged.
    place = folder;
    path.prepend(asFolder(name(place)));
  }
  return path.size() <= PATH_MAX ? path : QByteArray();
}

quint32 NameIndex::placeOf(quint32 offset, quint32 from) const {
  // The one that is looked for is rarely far away.
  constexpr int kNeighbours = 8;
  quint32 low = from;
  for (int i = 0; i < kNeighbours; ++i, ++low)
    if (low + 1 >= count_ || entry(low + 1).folded > offset) return low;
  quint32 step = 1;
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

QList<quint32> NameIndex::newestFolders(qsizetype most) const {
  if (most <= 0) return {};
  using Folder = std::pair<quint32, quint32>;  // When it was changed, and its place.
  std::vector<Folder> best;                    // A heap whose first is the one to go next.
  for (quint32 place = 0; place < count_; ++place) {
    const Entry found = entry(place);
    if (!(found.folder & kFolderBit) || (found.folder & kHiddenBit) || found.changed <= kUnreadable) continue;
    const Folder folder{found.changed, place};
    if (static_cast<qsizetype>(best.size()) >= most) {
      if (folder <= best.front()) continue;
      std::ranges::pop_heap(best, std::greater());
      best.pop_back();
    }
    best.push_back(folder);
    std::ranges::push_heap(best, std::greater());
  }
  std::ranges::sort(best, std::greater());
  QList<quint32> places;
  for (const Folder& folder : best) places.append(folder.second);
  return places;
}

QList<NameIndex::Hit> NameIndex::find(const QString& text, qsizetype most, const std::stop_token& stop,
                                      const Folders& first) const {
  const QByteArray wanted = Text::folded(text).toUtf8();
  if (wanted.isEmpty() || wanted.contains('\0') || most <= 0) return {};
  const bool asksHidden = wanted.startsWith('.');
  using Found = std::pair<quint64, Hit>;
  const auto isEarlier = [](const Found& left, const Found& right) {
    return left.first != right.first ? left.first > right.first : left.second.place < right.second.place;
  };
  std::vector<Found> best;  // A heap whose first is the one to go next.
  quint32 place = 0;
  eachMatch(folded_, wanted, stop, [&](qsizetype at) {
    place = placeOf(static_cast<quint32>(at), place);
    const Entry entryThere = entry(place);
    const quint32 folder = entryThere.folder & kPlaceBits;
    const bool isFirst = folder < first.size() && first[folder];
    const Found found{weightOf(isFirst, entryThere.changed), {place, entryThere.changed}};
    if (asksHidden || !(entryThere.folder & kHiddenBit)) {
      const bool isFull = static_cast<qsizetype>(best.size()) >= most;
      if (isFull && isEarlier(found, best.front())) {
        std::ranges::pop_heap(best, isEarlier);
        best.pop_back();
      }
      if (static_cast<qsizetype>(best.size()) < most) {
        best.push_back(found);
        std::ranges::push_heap(best, isEarlier);
      }
    }
    // On with the next name.
    return at + static_cast<qsizetype>(std::strlen(folded_.data() + at)) + 1;
  });
  if (stop.stop_requested()) return {};
  std::ranges::sort(best, isEarlier);
  QList<Hit> hits;
  hits.reserve(static_cast<qsizetype>(best.size()));
  for (const Found& found : best) hits.append(found.second);
  return hits;
}

}  // namespace tarnwick
