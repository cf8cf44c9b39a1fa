#include "apps/KeyFile.h"

#include <tuple>

#include "base/SmallFile.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 kLargestFile = 1 << 20;

QChar unescaped(QChar letter) {
  switch (letter.unicode()) {
    case u's':
      return u' ';
    case u'n':
      return u'\n';
    case u't':
      return u'\t';
    case u'r':
      return u'\r';
    case u'\\':
      return u'\\';
    default:
      return {};
  }
}

/// Resolves escapes and, with `items`, cuts at the semicolons that are not escaped.
QStringList resolved(const QString& raw, bool items) {
  QStringList result;
  QString current;
  for (qsizetype i = 0; i < raw.size(); ++i) {
    const QChar letter = raw[i];
    if (letter == u'\\' && i + 1 < raw.size()) {
      const QChar next = raw[i + 1];
      const QChar plain = items && next == u';' ? QChar(u';') : unescaped(next);
      if (!plain.isNull()) {
        current += plain;
        ++i;
        continue;
      }
    }
    if (items && letter == u';') {
      result << current;
      current.clear();
    } else {
      current += letter;
    }
  }
  result << current;
  return result;
}

}  // namespace

KeyFile KeyFile::parse(QByteArrayView utf8, const QStringList& locales) {
  KeyFile file;
  if (utf8.contains('\0')) return file;
  QHash<QString, Value>* group = nullptr;
  const QString text = QString::fromUtf8(utf8);
  for (QStringView line : QStringView(text).tokenize(u'\n')) {
    line = line.trimmed();
    if (line.isEmpty() || line.startsWith(u'#')) continue;
    if (line.startsWith(u'[')) {
      group = line.endsWith(u']') ? &file.groups_[line.sliced(1, line.size() - 2).toString()] : nullptr;
      continue;
    }
    const qsizetype equals = line.indexOf(u'=');
    if (!group || equals <= 0) continue;
    QStringView key = line.first(equals).trimmed();
    qsizetype rank = locales.size();
    if (const qsizetype bracket = key.indexOf(u'['); bracket >= 0 && key.endsWith(u']')) {
      rank = locales.indexOf(key.sliced(bracket + 1, key.size() - bracket - 2).toString());
      if (rank < 0) continue;
      key = key.first(bracket).trimmed();
    }
    Value& value = (*group)[key.toString()];
    const QString raw = line.sliced(equals + 1).trimmed().toString();
    if (rank == locales.size()) value.untranslated = raw;
    if (rank <= value.rank) std::tie(value.raw, value.rank) = std::tie(raw, rank);
  }
  return file;
}

KeyFile KeyFile::read(const QString& path, const QStringList& locales) {
  const auto bytes = SmallFile::read(path, kLargestFile);
  return bytes ? parse(*bytes, locales) : KeyFile();
}

bool KeyFile::has(const QString& group, const QString& key) const { return groups_.value(group).contains(key); }

QStringList KeyFile::keys(const QString& group) const { return groups_.value(group).keys(); }

QString KeyFile::string(const QString& group, const QString& key) const {
  return resolved(groups_.value(group).value(key).raw, false).constFirst();
}

QString KeyFile::untranslated(const QString& group, const QString& key) const {
  return resolved(groups_.value(group).value(key).untranslated, false).constFirst();
}

QStringList KeyFile::list(const QString& group, const QString& key) const {
  QStringList result;
  for (const QString& item : resolved(groups_.value(group).value(key).raw, true))
    if (const QString trimmed = item.trimmed(); !trimmed.isEmpty()) result << trimmed;
  return result;
}

bool KeyFile::flag(const QString& group, const QString& key) const { return isTrue(string(group, key)); }

bool KeyFile::isTrue(const QString& value) {
  return value.compare("true"_L1, Qt::CaseInsensitive) == 0 || value == "1"_L1;
}

}  // namespace tarnwick
