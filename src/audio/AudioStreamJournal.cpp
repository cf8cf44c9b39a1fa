#include "audio/AudioStreamJournal.h"

#include <QCoreApplication>
#include <QSet>
#include <algorithm>

namespace tarnwick {
namespace {

struct StreamJournalWords {
  Q_DECLARE_TR_FUNCTIONS(AudioStreamJournal)
};

bool canBe(const QList<MovedStream>& records) {
  if (records.size() > AudioStreamJournal::kMostRecords) return false;
  QSet<std::pair<quint32, quint32>> serials;
  return std::ranges::all_of(records, [&serials](const MovedStream& record) {
    const std::pair serial(record.session, record.serial);
    const bool isNew = !serials.contains(serial);
    serials.insert(serial);
    // Bound under a key to a node, or to nothing.
    const bool isBound = record.key.isEmpty() == record.node.isEmpty();
    return isNew && isBound && record.serial != 0 && record.slot >= 1 && record.slot <= AudioStreamJournal::kSlots;
  });
}

}  // namespace

AudioStreamJournal::AudioStreamJournal(const QString& directory, std::chrono::milliseconds patience)
    : journal_({.directory = directory,
                .name = kFileName,
                .mostBytes = kMostBytes,
                .patience = patience,
                .busy = StreamJournalWords::tr("Another process is restoring playback. Try again."),
                .tooLarge = StreamJournalWords::tr("Audio recovery journal is too large."),
                .invalid = StreamJournalWords::tr("Invalid audio recovery journal.")},
               &canBe) {}

bool AudioStreamJournal::isOurs(const AudioHardware::Stream& stream) {
  for (int slot = 1; slot <= kSlots; ++slot)
    if (stream.node == AudioHardware::sinkName(slot)) return true;
  return false;
}

void AudioStreamJournal::prepare(quint32 session, const QList<AudioHardware::Stream>& streams, int slot) {
  journal_.change([&](QList<MovedStream> records) {
    for (const AudioHardware::Stream& stream : streams) {
      // Where the node that it was bound to is gone there is nothing to go back to.
      const bool hadNode = !stream.node.isEmpty();
      MovedStream record{session, stream.serial, stream.identity, hadNode ? stream.key : QString(), stream.node, slot};
      const auto isSame = [&](const MovedStream& each) {
        return each.session == session && each.serial == stream.serial;
      };
      if (isOurs(stream)) {
        // The server may have bound it to where others of its kind were when they ended.
        auto before = std::ranges::find_if(records, isSame);
        if (before == records.end()) before = std::ranges::find(records, stream.identity, &MovedStream::identity);
        record.key = before == records.end() ? QString() : before->key;
        record.node = before == records.end() ? QString() : before->node;
      }
      records.removeIf(isSame);
      records.append(record);
    }
    if (records.size() > kMostRecords)
      throw DomainError::invalid(StreamJournalWords::tr("Too many sounds were moved."));
    return records;
  });
}

void AudioStreamJournal::recover(const std::function<Fate(const MovedStream& record)>& giveBack,
                                 std::optional<int> slot) {
  journal_.change([&](QList<MovedStream> records) {
    records.removeIf(
        [&](const MovedStream& record) { return (!slot || record.slot == *slot) && giveBack(record) == Fate::Given; });
    return records;
  });
}

}  // namespace tarnwick
