#include "usage/ClaudeActivity.h"

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <QFile>
#include <QTimeZone>
#include <algorithm>
#include <cmath>
#include <memory>

#include "base/FileDescriptor.h"
#include "base/SmallFile.h"
#include "usage/ClaudeRecordFolder.h"
#include "usage/UsageReaderWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr std::string_view kPermission = "permission";

struct CloseFolder {
  void operator()(DIR* folder) const { ::closedir(folder); }
};
using Folder = std::unique_ptr<DIR, CloseFolder>;

/// What a file holds, if it is an ordinary one that small: nothing waits for it and nothing is followed.
std::optional<ClaudeActivityRecord> recordIn(int folder, const char* name) {
  const auto bytes = SmallFile::readUnlinked(folder, name, ClaudeActivityRecord::kMostFileBytes);
  if (!bytes) return std::nullopt;
  return ClaudeActivityRecord::decoded({bytes->constData(), static_cast<std::size_t>(bytes->size())});
}

QString labelOf(const ClaudeActivityRecord& record, double age) {
  if (age >= ClaudeActivity::kRecent) return UsageReaderWords::tr("No recent activity");
  if (record.state == kPermission) return UsageReaderWords::tr("Awaiting permission");
  if (record.state == "thinking") return UsageReaderWords::tr("Thinking");
  if (record.state != "tool") return UsageReaderWords::tr("Idle");
  return record.tool.empty() ? UsageReaderWords::tr("Using a tool") : QString::fromStdString(record.tool);
}

bool isActive(const ClaudeActivityRecord& record, double age) {
  return record.state != "idle" && record.state != "ended" && age < ClaudeActivity::kRecent;
}

}  // namespace

double ClaudeActivity::secondsOf(const QDateTime& time) {
  return static_cast<double>(time.toMSecsSinceEpoch()) / 1000 - ClaudeActivityRecord::kReferenceDate;
}

QDateTime ClaudeActivity::dateOf(double seconds) {
  return QDateTime::fromMSecsSinceEpoch(std::llround((seconds + ClaudeActivityRecord::kReferenceDate) * 1000));
}

ClaudeActivity::Found ClaudeActivity::find(const QString& directory, const QDateTime& now,
                                           const std::stop_token& stop) {
  return ClaudeRecordFolder(directory).find(now, stop);
}

bool ClaudeActivity::isWaiting(const ClaudeActivityRecord& record, const QDateTime& now) {
  return record.state == kPermission && isActive(record, secondsOf(now) - record.time);
}

RemoteValue ClaudeActivity::value(const QList<ClaudeActivityRecord>& records, const QDateTime& now,
                                  const QLocale& locale) {
  const double present = secondsOf(now);
  const auto timeOf = [&](const ClaudeActivityRecord& record) {
    return locale.toString(dateOf(record.time).toTimeZone(now.timeZone()).time(), QLocale::ShortFormat);
  };
  const auto label = [&](const ClaudeActivityRecord& record) { return labelOf(record, present - record.time); };

  RemoteValue value;
  value.subtitle = UsageReaderWords::tr("Claude Code · local activity");
  value.symbol = u"cloud.sun.fill"_s;
  value.updated = now;
  value.activity = Activity::Idle;
  if (records.isEmpty()) {
    value.value = UsageReaderWords::tr("No activity yet");
    value.detail = UsageReaderWords::tr("Start a new Claude Code session after installing hooks.");
    return value;
  }
  const auto active = std::ranges::find_if(
      records, [&](const ClaudeActivityRecord& record) { return isActive(record, present - record.time); });
  const bool isAnyActive = active != records.end();
  value.value = label(isAnyActive ? *active : records.first());
  if (isAnyActive) value.activity = active->state == kPermission ? Activity::Waiting : Activity::Busy;
  value.detail = UsageReaderWords::tr("Last event %1").arg(timeOf(records.first()));
  for (const ClaudeActivityRecord& record : records.first(std::min(records.size(), kMostRows))) {
    const QString tool = record.tool.empty() ? UsageReaderWords::tr("Session") : QString::fromStdString(record.tool);
    value.rows.append({.id = QString::fromStdString(record.session),
                       .title = label(record),
                       .subtitle = tool + u" · "_s + timeOf(record),
                       .url = std::nullopt,
                       .at = dateOf(record.time)});
  }
  return value;
}

RemoteValue ClaudeActivity::read(const QString& directory, const QDateTime& now, const QLocale& locale) {
  return value(find(directory, now).records, now, locale);
}

qsizetype ClaudeActivity::removeOld(const QString& directory, const QDateTime& now) {
  const FileDescriptor place(
      ::open(QFile::encodeName(directory).constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
  if (!place) return 0;
  FileDescriptor listed(::fcntl(place.number(), F_DUPFD_CLOEXEC, 0));
  const Folder folder(listed ? ::fdopendir(listed.number()) : nullptr);
  if (!folder) return 0;
  listed.release();  // The folder's now.
  const double present = secondsOf(now);
  QList<QByteArray> old;
  while (const dirent* entry = ::readdir(folder.get())) {
    const char* name = entry->d_name;
    if (!ClaudeActivityRecord::isFileName(name)) continue;
    const auto record = recordIn(place.number(), name);
    if (record && record->session + ".json" == name && present - record->time > kRemoved) old.append(name);
  }
  qsizetype removed = 0;
  for (const QByteArray& name : old) removed += ::unlinkat(place.number(), name.constData(), 0) == 0;
  return removed;
}

}  // namespace tarnwick
