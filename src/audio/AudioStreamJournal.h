#pragma once

#include <QList>
#include <QString>
#include <functional>
#include <optional>

#include "audio/ports/AudioHardware.h"
#include "base/RecoveryJournal.h"

namespace tarnwick {

/// A stream of another program that was bound to a sink of ours, and what it was bound to before.
struct MovedStream {
  quint32 session = 0;  ///< The run of the sound server that `serial` is of.
  quint32 serial = 0;
  QString identity;  ///< By which the server remembers it beyond its end.
  QString key;       ///< As in AudioHardware::Stream, like `node`.
  QString node;
  int slot = 0;  ///< To whose sink it was bound.

  bool operator==(const MovedStream&) const = default;

  static constexpr auto fields() {
    using M = MovedStream;
    return std::tuple(field::required("session", &M::session), field::required("serial", &M::serial),
                      field::required("identity", &M::identity), field::required("key", &M::key),
                      field::required("node", &M::node), field::required("slot", &M::slot));
  }
};

/// Which streams of other programs are bound to sinks of ours, on the disk before the first of them is: whoever comes
/// after a run that died binds them as they were. Belongs to one thread.
class AudioStreamJournal {
 public:
  static constexpr qint64 kMostBytes = 1'000'000;
  static constexpr qsizetype kMostRecords = 500;
  static constexpr int kSlots = 8;
  static constexpr qint64 kEmptyBytes = 2;  ///< A list without records.
  static constexpr auto kFileName = QLatin1StringView("audio-recovery.json");

  /// The journal of a data folder. Reads it; never fails, but `error` may be set. `patience` is how long another
  /// process that works on it is waited for.
  AudioStreamJournal(const QString& directory, std::chrono::milliseconds patience);

  const QList<MovedStream>& records() const { return journal_.records(); }
  /// Why the journal must not be touched.
  const std::optional<QString>& error() const { return journal_.error(); }

  /// Writes down that streams are about to be bound to the sink of a slot. One that is bound to a sink of ours already
  /// keeps what it had before that. Throws DomainError; then nothing has changed and they must stay.
  void prepare(quint32 session, const QList<AudioHardware::Stream>& streams, int slot);

  /// What became of giving a stream back.
  enum class Fate { Given, Kept };
  /// Tries each record, of one slot where it is given, and forgets what is given back. Throws DomainError; then what
  /// was given back is found there the next time.
  void recover(const std::function<Fate(const MovedStream& record)>& giveBack, std::optional<int> slot = std::nullopt);

  /// Whether a stream is bound to a sink of ours, whichever.
  static bool isOurs(const AudioHardware::Stream& stream);

 private:
  RecoveryJournal<MovedStream> journal_;
};

}  // namespace tarnwick
