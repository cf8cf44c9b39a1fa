#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>
#include <stop_token>

#include "usage/LocalTokens.h"

namespace tarnwick {

/// The tokens that Gemini CLI noted in its recordings of sessions. All of them are read or none: never a part of a
/// total. Throws DomainError and Cancelled; not for the main thread.
struct GeminiHistory {
  static constexpr qsizetype kMostRecordings = 2000;
  static constexpr quint64 kMostBytesEach = 8'000'000;
  static constexpr quint64 kMostBytes = 32'000'000;

  static RemoteValue read(const QString& directory, const QDateTime& now, const std::stop_token& stop = {});
  /// What is shown of all answers that so many recordings held.
  static RemoteValue shown(const QList<LocalTokenRecord>& records, qsizetype recordings, const QDateTime& now);
  /// The answers in one recording; as lines of JSON, or as one object.
  static QList<LocalTokenRecord> decode(const QByteArray& data, bool jsonLines);
};

}  // namespace tarnwick
