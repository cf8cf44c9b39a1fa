#include "files/RecentFiles.h"

#include <QFileInfo>
#include <QHash>
#include <QStandardPaths>
#include <QUrl>
#include <QXmlStreamReader>
#include <algorithm>

#include "base/SmallFile.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// The latest time in a bookmark.
QDateTime lastUse(const QXmlStreamAttributes& attributes) {
  QDateTime last;
  for (const QLatin1StringView name : {"visited"_L1, "modified"_L1, "added"_L1}) {
    const QDateTime at = QDateTime::fromString(attributes.value(name).toString(), Qt::ISODateWithMs);
    if (at.isValid() && (!last.isValid() || at > last)) last = at;
  }
  return last;
}

/// Whether the bookmark that the reader is on asks not to be shown to others. Leaves the reader at its end.
bool isPrivate(QXmlStreamReader& xml) {
  bool found = false;
  for (int depth = 1; depth > 0 && !xml.atEnd();) {
    xml.readNext();
    if (xml.isStartElement()) {
      ++depth;
      found = found || xml.name() == "private"_L1;
    } else if (xml.isEndElement()) {
      --depth;
    }
  }
  return found;
}

QList<RecentFile> stillThere(const QList<RecentFile>& all, const std::stop_token& stop) {
  QList<RecentFile> kept;
  for (const RecentFile& each : all) {
    if (kept.size() >= RecentFiles::most || stop.stop_requested()) break;
    if (QFileInfo::exists(each.path)) kept.append(each);
  }
  return kept;
}

}  // namespace

QString RecentFiles::sharedList() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/recently-used.xbel"_s;
}

RecentFiles::RecentFiles(const QString& file, Scheduler& scheduler, QObject* parent)
    : QObject(parent), file_(file), watch_(scheduler) {
  connect(&watch_, &FileWatch::changed, this, &RecentFiles::read);
}

const QList<RecentFile>& RecentFiles::list() {
  if (!asked_) {
    asked_ = true;
    watch_.watch({file_});
    read();
  }
  return list_;
}

void RecentFiles::setFixed(const QList<RecentFile>& list) {
  asked_ = loaded_ = true;
  list_ = list;
}

QStringList RecentFiles::paths(const QString& file) {
  QStringList paths;
  for (const RecentFile& each : parse(SmallFile::read(file, kMostBytes).value_or(QByteArray()))) paths << each.path;
  return paths;
}

void RecentFiles::read() {
  work_.start(
      [file = file_](const std::stop_token& stop) {
        const auto text = SmallFile::read(file, RecentFiles::kMostBytes);
        return stillThere(parse(text.value_or(QByteArray())), stop);
      },
      [this](QList<RecentFile> list) {
        if (loaded_ && list == list_) return;
        loaded_ = true;
        list_ = std::move(list);
        Q_EMIT changed();
      });
}

QList<RecentFile> RecentFiles::parse(const QByteArray& text) {
  QHash<QString, QDateTime> found;
  QXmlStreamReader xml(text);
  while (!xml.atEnd()) {
    xml.readNext();
    if (!xml.isStartElement() || xml.name() != "bookmark"_L1) continue;
    const QXmlStreamAttributes attributes = xml.attributes();
    const QUrl address(attributes.value("href"_L1).toString(), QUrl::StrictMode);
    const QString path = address.host().isEmpty() ? address.toLocalFile() : QString();
    const QDateTime used = lastUse(attributes);
    const bool hidden = isPrivate(xml);
    if (hidden || xml.hasError() || !path.startsWith(u'/') || !used.isValid()) continue;
    QDateTime& last = found[path];
    if (!last.isValid() || used > last) last = used;
  }
  QList<RecentFile> list;
  for (auto each = found.cbegin(); each != found.cend(); ++each) list.append({each.key(), each.value()});
  std::ranges::sort(list, [](const RecentFile& a, const RecentFile& b) {
    return a.used != b.used ? a.used > b.used : a.path < b.path;
  });
  return list;
}

}  // namespace tarnwick
