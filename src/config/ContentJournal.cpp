#include "config/ContentJournal.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <cstdio>

#include "base/DomainError.h"
#include "base/DurableFile.h"
#include "base/FileDescriptor.h"
#include "base/SmallFile.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

qint64 sizeOf(const QByteArray& path) {
  struct stat status;
  return ::lstat(path.constData(), &status) == 0 ? status.st_size : 0;
}

QByteArray contentOf(const QByteArray& path) {
  const FileDescriptor file(::open(path.constData(), O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC));
  if (!file) return {};
  return SmallFile::read(file.number(), ContentJournal::kMostBytes).value_or(QByteArray());
}

QByteArray textOf(const QList<ContentLine>& lines) {
  QByteArray text;
  for (const ContentLine& line : lines) text += line.text();
  return text;
}

/// All of it or nothing.
bool appendTo(const QByteArray& path, QByteArrayView text) {
  const FileDescriptor file(::open(
      path.constData(), O_WRONLY | O_APPEND | O_CREAT | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC, DurableFile::kPrivate));
  struct stat before;
  if (!file || ::fstat(file.number(), &before) != 0 || !S_ISREG(before.st_mode)) return false;
  while (!text.isEmpty()) {
    const ssize_t written = ::write(file.number(), text.data(), static_cast<std::size_t>(text.size()));
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) {
      // Half a line would end the reading there.
      [[maybe_unused]] const int cut = ::ftruncate(file.number(), before.st_size);
      return false;
    }
    text = text.sliced(written);
  }
  return true;
}

}  // namespace

ContentJournal::ContentJournal(const QString& settingsFile) {
  const QByteArray beside = QFile::encodeName(QFileInfo(settingsFile).path()) + '/';
  older_ = beside + "content-journal-older.json";
  newer_ = beside + "content-journal.json";
}

bool ContentJournal::isEmpty() const { return sizeOf(older_) == 0 && sizeOf(newer_) == 0; }

QList<ContentLine> ContentJournal::read() const {
  return ContentLine::parse(contentOf(older_)) + ContentLine::parse(contentOf(newer_));
}

QList<ContentLine> ContentJournal::kept(const QString& file) {
  return ContentLine::parse(contentOf(QFile::encodeName(file)));
}

bool ContentJournal::isFullFor(const QList<ContentLine>& lines) const {
  return sizeOf(older_) + sizeOf(newer_) + textOf(lines).size() > kMostBytes;
}

bool ContentJournal::append(const QList<ContentLine>& lines) {
  return !isFullFor(lines) && appendTo(newer_, textOf(lines));
}

bool ContentJournal::replace(const QList<ContentLine>& lines) {
  QByteArray text;
  for (const ContentLine& line : lines) {
    if (const QByteArray each = line.text(); text.size() + each.size() <= kMostBytes) text += each;
  }
  try {
    DurableFile::writeAtomically(text, QFile::decodeName(older_), DurableFile::kPrivate);
  } catch (const DomainError&) {
    return false;
  }
  ::unlink(newer_.constData());
  return true;
}

void ContentJournal::setAside(const QList<ContentLine>& all) {
  if (sizeOf(newer_) == 0) return;
  if (sizeOf(older_) == 0) {
    std::rename(newer_.constData(), older_.constData());
  } else {
    replace(all);
  }
}

void ContentJournal::forgetAside() { ::unlink(older_.constData()); }

void ContentJournal::removeAll() {
  ::unlink(older_.constData());
  ::unlink(newer_.constData());
}

void ContentJournal::preserve(const QString& name) {
  const QByteArray text = textOf(read());
  if (text.isEmpty()) return;
  try {
    DurableFile::writeAtomically(text, QFileInfo(QFile::decodeName(newer_)).path() + u'/' + name,
                                 DurableFile::kPrivate);
    removeAll();
  } catch (const DomainError&) {
    // It stays where it is.
  }
}

}  // namespace tarnwick
