#include "apps/TrustedEntries.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <array>

#include "base/DomainError.h"
#include "base/DurableFile.h"
#include "base/FileDescriptor.h"
#include "base/SmallFile.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

struct TrustedEntriesWords {
  Q_DECLARE_TR_FUNCTIONS(TrustedEntries)
};

constexpr qsizetype kMostBytes = 1024 * 1024;

QString words(const char* text, const QString& path) {
  return TrustedEntriesWords::tr(text).arg(QFileInfo(path).fileName());
}

/// Why a file with these facts may not be run; null where it may.
const char* refusalOf(const struct stat& facts) {
  if (!S_ISREG(facts.st_mode) || facts.st_uid != ::getuid())
    return QT_TRANSLATE_NOOP("TrustedEntries", "“%1” is not a file of yours, so it is not started.");
  if ((facts.st_mode & (S_IWGRP | S_IWOTH)) != 0)
    return QT_TRANSLATE_NOOP("TrustedEntries", "“%1” can be changed by others, so it is not started.");
  if ((facts.st_mode & S_IXUSR) == 0)
    return QT_TRANSLATE_NOOP("TrustedEntries", "“%1” is not marked as executable, so it is not started.");
  return nullptr;
}

/// Whether a font has nothing to paint for a character, or something that is not its own. Those that Unicode calls
/// ignorable are not all of the categories that have no look, and some letters, marks and signs are empty by design.
bool paintsNothing(char32_t c) {
  switch (QChar::category(c)) {
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Other_Surrogate:
    case QChar::Other_PrivateUse:
    case QChar::Other_NotAssigned:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
      return true;
    case QChar::Separator_Space:
      return c != U' ';
    default:
      break;
  }
  struct Range {
    char32_t first, last;
  };
  static constexpr std::array kEmpty{
      Range{0x034F, 0x034F},    // Combining grapheme joiner.
      Range{0x115F, 0x1160},    // Hangul fillers.
      Range{0x17B4, 0x17B5},    // Khmer inherent vowels.
      Range{0x180B, 0x180F},    // Mongolian variation selectors.
      Range{0x2800, 0x2800},    // The empty Braille cell.
      Range{0x3164, 0x3164},    // Hangul filler.
      Range{0xFE00, 0xFE0F},    // Variation selectors.
      Range{0xFFA0, 0xFFA0},    // Halfwidth Hangul filler.
      Range{0xFFFC, 0xFFFC},    // Stands for an object that is not there.
      Range{0x13441, 0x13442},  // Blank hieroglyphs.
      Range{0x16FE4, 0x16FE4},  // Khitan filler.
      Range{0x1D159, 0x1D159},  // The null notehead.
      Range{0xE0100, 0xE01EF},  // Variation selectors.
  };
  return std::ranges::any_of(kEmpty, [c](const Range& range) { return c >= range.first && c <= range.last; });
}

/// A text of which everything is seen.
QString visible(const QString& text) {
  QString shown;
  for (const char32_t c : text.toUcs4()) {
    if (paintsNothing(c))
      shown += u"⟨U+%1⟩"_s.arg(static_cast<uint>(c), 4, 16, QChar(u'0')).toUpper();
    else
      shown += QString::fromUcs4(&c, 1);
  }
  return shown;
}

/// Whether a user can be expected to read all that would run.
bool canBeRead(const DesktopEntry& entry) {
  constexpr qsizetype kMostRead = 600;
  const auto isShort = [](const QString& text) { return text.size() <= kMostRead; };
  return isShort(entry.exec) && isShort(entry.url) && isShort(entry.workingDirectory) &&
         std::ranges::all_of(entry.actions, isShort, &DesktopAction::exec);
}

}  // namespace

QString ForeignEntry::facts(const QString& action) const {
  const auto translated = [](const char* text) { return TrustedEntriesWords::tr(text); };
  QStringList lines{translated(QT_TRANSLATE_NOOP("TrustedEntries", "File: %1")).arg(visible(path))};
  if (entry.type == DesktopEntry::Type::Link) {
    lines << translated(QT_TRANSLATE_NOOP("TrustedEntries", "Address: %1")).arg(visible(entry.url));
    return lines.join(u'\n');
  }
  const auto chosen = entry.action(action);
  lines << translated(QT_TRANSLATE_NOOP("TrustedEntries", "Command: %1"))
               .arg(visible(chosen ? chosen->exec : entry.exec));
  if (!entry.workingDirectory.isEmpty())
    lines << translated(QT_TRANSLATE_NOOP("TrustedEntries", "In the folder: %1")).arg(visible(entry.workingDirectory));
  if (entry.terminal) lines << translated(QT_TRANSLATE_NOOP("TrustedEntries", "It runs in a terminal."));
  return lines.join(u'\n');
}

QString ForeignEntry::shownName() const {
  constexpr qsizetype kMostShown = 80;
  const QString shown = visible(entry.name.left(kMostShown));
  return entry.name.size() > kMostShown ? shown + u'…' : shown;
}

ForeignEntry ForeignEntry::look(const QString& path, const QStringList& locales) {
  ForeignEntry found;
  found.path = path;
  // A pipe must not hold the look up, and what a link points to is another file.
  const FileDescriptor file(
      ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
  struct stat facts {};
  if (!file || ::fstat(file.number(), &facts) != 0) {
    found.refusal = QFileInfo::exists(path)
                        ? words(QT_TRANSLATE_NOOP("TrustedEntries", "“%1” cannot be read, so it is not started."), path)
                        : words(QT_TRANSLATE_NOOP("TrustedEntries", "“%1” no longer exists."), path);
    return found;
  }
  if (const char* refusal = refusalOf(facts)) {
    found.refusal = words(refusal, path);
    return found;
  }
  const auto bytes = SmallFile::read(file.number(), kMostBytes);
  auto entry = bytes ? DesktopEntry::parse(*bytes, locales) : std::nullopt;
  if (!entry || entry->hidden) {
    found.refusal = words(QT_TRANSLATE_NOOP("TrustedEntries", "“%1” is not an app."), path);
    return found;
  }
  if (!canBeRead(*entry)) {
    found.refusal = words(
        QT_TRANSLATE_NOOP("TrustedEntries", "“%1” runs a command that is too long to be read, so it is not started."),
        path);
    return found;
  }
  // What runs is the command line that the user was shown.
  entry->dbusActivatable = false;
  entry->path = path;
  found.entry = *entry;
  found.digest = QString::fromLatin1(QCryptographicHash::hash(*bytes, QCryptographicHash::Sha256).toHex());
  return found;
}

QList<TrustedEntries::Item>& TrustedEntries::items() const {
  if (items_) return *items_;
  items_.emplace();
  try {
    const QByteArray bytes = DurableFile::readIfPresent(file_).value_or(QByteArray());
    for (const QJsonValue& value : QJsonDocument::fromJson(bytes).object().value("entries"_L1).toArray()) {
      const QJsonObject item = value.toObject();
      const Item read{item.value("path"_L1).toString(), item.value("sha256"_L1).toString()};
      if (!read.path.isEmpty() && !read.digest.isEmpty()) items_->append(read);
    }
    if (items_->size() > kMost) items_->remove(0, items_->size() - kMost);
  } catch (const DomainError&) {
    // Where it cannot be read what was confirmed, the user is asked again.
  }
  return *items_;
}

bool TrustedEntries::isTrusted(const QString& path, const QString& digest) const {
  return !digest.isEmpty() &&
         std::ranges::any_of(items(), [&](const Item& item) { return item.path == path && item.digest == digest; });
}

void TrustedEntries::trust(const QString& path, const QString& digest) {
  QList<Item>& all = items();
  all.removeIf([&](const Item& item) { return item.path == path; });
  all.append({path, digest});
  if (all.size() > kMost) all.remove(0, all.size() - kMost);
  QJsonArray entries;
  for (const Item& item : std::as_const(all))
    entries.append(QJsonObject{{u"path"_s, item.path}, {u"sha256"_s, item.digest}});
  DurableFile::write(QJsonDocument(QJsonObject{{u"entries"_s, entries}}).toJson(QJsonDocument::Compact), file_);
}

}  // namespace tarnwick
