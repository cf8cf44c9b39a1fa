#include "usage/GeminiHistory.h"

#include <fcntl.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <vector>

#include "base/Cancelled.h"
#include "base/DomainError.h"
#include "base/DurableFile.h"
#include "base/SmallFile.h"
#include "services/ProviderData.h"
#include "usage/UsageReaderWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

DomainError unsupported() {
  return DomainError::invalid(UsageReaderWords::tr("Unsupported Gemini session recording."));
}
DomainError unreadablePart() {
  return DomainError::invalid(
      UsageReaderWords::tr("Part of the selected Gemini directory could not be read. No partial total is shown."));
}

/// Found on the way through the folder.
struct Recording {
  QString path;
  bool jsonLines = false;
};

QList<Recording> recordingsIn(const QString& directory, const std::stop_token& stop) {
  namespace fs = std::filesystem;
  QList<Recording> found;
  quint64 bytes = 0;
  std::vector<fs::path> folders{fs::path(QFile::encodeName(directory).toStdString())};
  const auto isInChats = [](const fs::path& folder) { return std::ranges::find(folder, "chats") != folder.end(); };
  while (!folders.empty()) {
    const fs::path folder = std::move(folders.back());
    folders.pop_back();
    std::error_code fault;
    for (fs::directory_iterator entry(folder, fault), end; !fault && entry != end; entry.increment(fault)) {
      throwIfStopped(stop);
      const fs::file_status status = entry->symlink_status(fault);
      if (fault) break;
      if (fs::is_directory(status)) folders.push_back(entry->path());
      const std::string name = entry->path().filename();
      if (!fs::is_regular_file(status) || !name.starts_with("session-") || !isInChats(folder)) continue;
      const quint64 size = entry->file_size(fault);
      if (fault) break;
      found.append({QFile::decodeName(entry->path().c_str()), entry->path().extension() == ".jsonl"});
      bytes += size;
      if (found.size() > GeminiHistory::kMostRecordings || size > GeminiHistory::kMostBytesEach ||
          bytes > GeminiHistory::kMostBytes)
        throw DomainError::invalid(
            UsageReaderWords::tr("The local history exceeds the refresh limit. Choose a smaller chat directory; no "
                                 "partial total is shown."));
    }
    if (fault) throw unreadablePart();
  }
  return found;
}

LocalTokenRecord messageOf(const QJsonObject& message) {
  const QString id = message.value("id"_L1).toString();
  const auto time = ProviderData::date(message.value("timestamp"_L1).toString());
  if (id.isEmpty() || !time || !message.value("tokens"_L1).isObject())
    throw DomainError::invalid(UsageReaderWords::tr("Gemini returned an incomplete message record."));
  const QJsonValue total = message.value("tokens"_L1).toObject().value("total"_L1);
  if (!total.isDouble() || !LocalTokens::isCount(total.toDouble()))
    throw DomainError::invalid(UsageReaderWords::tr("Invalid Gemini token count."));
  return {id, *time, total.toDouble()};
}

bool isMessage(const QJsonObject& object) { return object.value("type"_L1).toString() == "gemini"_L1; }

QJsonObject objectIn(const QByteArray& text) {
  const QJsonDocument document = QJsonDocument::fromJson(text);
  if (!document.isObject()) throw unsupported();
  return document.object();
}

}  // namespace

QList<LocalTokenRecord> GeminiHistory::decode(const QByteArray& data, bool jsonLines) {
  QString session;
  QList<LocalTokenRecord> records;
  if (jsonLines) {
    for (const QByteArray& line : data.split('\n')) {
      if (line.isEmpty()) continue;
      const QJsonObject object = objectIn(line);
      if (const QJsonValue id = object.value("sessionId"_L1); id.isString() && session.isEmpty())
        session = id.toString();
      if (isMessage(object)) records.append(messageOf(object));
    }
  } else {
    const QJsonObject object = objectIn(data);
    const QJsonValue messages = object.value("messages"_L1);
    if (!messages.isArray()) throw unsupported();
    session = object.value("sessionId"_L1).toString();
    for (const QJsonValue& message : messages.toArray()) {
      if (!message.isObject()) throw unsupported();
      if (isMessage(message.toObject())) records.append(messageOf(message.toObject()));
    }
  }
  if (session.isEmpty()) throw DomainError::invalid(UsageReaderWords::tr("Gemini session identity is missing."));
  for (LocalTokenRecord& record : records) record.id = session + u':' + record.id;
  return records;
}

RemoteValue GeminiHistory::read(const QString& directory, const QDateTime& now, const std::stop_token& stop) {
  const QFileInfo chosen(QDir::cleanPath(directory));  // A slash behind its name would lead through a link.
  if (!chosen.isDir() || chosen.isSymLink() || !chosen.isReadable())
    throw DomainError::invalid(UsageReaderWords::tr("The selected folder cannot be read."));
  const QList<Recording> recordings = recordingsIn(directory, stop);
  if (recordings.isEmpty())
    throw DomainError::invalid(UsageReaderWords::tr("No Gemini CLI session recordings were found in this folder."));

  struct Noted {
    LocalTokenRecord record;
    std::pair<qint64, qint64> changed;  ///< When its recording was.
  };
  QHash<QString, Noted> newest;
  for (const Recording& recording : recordings) {
    throwIfStopped(stop);
    const auto before = DurableFile::stamp(recording.path);
    const auto data = SmallFile::readUnlinked(AT_FDCWD, QFile::encodeName(recording.path).constData(), kMostBytesEach);
    if (!before || (!data && errno != EFBIG)) throw unreadablePart();
    if (!data || DurableFile::stamp(recording.path) != before || data->size() != before->size)
      throw DomainError::invalid(UsageReaderWords::tr(
          "A Gemini recording changed while it was read. Refresh after the current response finishes."));
    const std::pair changed(before->seconds, before->nanoseconds);
    for (const LocalTokenRecord& record : decode(*data, recording.jsonLines)) {
      const auto noted = newest.constFind(record.id);
      if (noted == newest.constEnd() || noted->changed <= changed) newest.insert(record.id, {record, changed});
    }
  }
  QList<LocalTokenRecord> records;
  records.reserve(newest.size());
  for (const Noted& noted : std::as_const(newest)) records.append(noted.record);
  return shown(records, recordings.size(), now);
}

RemoteValue GeminiHistory::shown(const QList<LocalTokenRecord>& records, qsizetype recordings, const QDateTime& now) {
  return LocalTokens::thisMonth(
      records, now,
      UsageReaderWords::tr(
          "Read from %1 Gemini CLI recordings. This can include OAuth sessions and excludes usage from "
          "other tools. It is not Google billing or a quota.")
          .arg(recordings));
}

}  // namespace tarnwick
