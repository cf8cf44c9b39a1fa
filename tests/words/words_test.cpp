// What a user reads names nothing that another platform has: the catalogue has other words for every such text.
#include <gtest/gtest.h>

#include <QDirIterator>
#include <QFile>
#include <QMultiHash>
#include <QRegularExpression>
#include <QXmlStreamReader>
#include <algorithm>

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

struct Word {
  QString context;
  QString english;
};
using Words = QMultiHash<QString, Word>;  ///< By source.

QString tree() { return QString::fromUtf8(TARNWICK_SOURCES); }

QString readAll(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

bool namesAnotherPlatform(const QString& text) {
  static const QRegularExpression names(u"\\b(Mac|macOS|Finder|Spotlight)\\b|⌘|⌥"_s);
  return names.match(text).hasMatch();
}

Words catalogue() {
  Words words;
  QXmlStreamReader xml(readAll(tree() + u"/resources/i18n/tarnwick_en.ts"_s));
  QString context;
  QString source;
  while (!xml.atEnd()) {
    if (xml.readNext() != QXmlStreamReader::StartElement) continue;
    if (xml.name() == "name"_L1) context = xml.readElementText().section(u"::"_s, -1);
    if (xml.name() == "source"_L1) source = xml.readElementText();
    if (xml.name() == "translation"_L1)
      words.insert(source, {context, xml.readElementText(QXmlStreamReader::IncludeChildElements)});
  }
  EXPECT_FALSE(xml.hasError());
  return words;
}

/// The texts for the user in a file of C++, each in one piece.
QStringList textsIn(QString code) {
  static const QRegularExpression comment(u"^\\s*//.*$"_s, QRegularExpression::MultilineOption);
  static const QRegularExpression text(
      uR"re((?:\btr\(\s*|QT_TRANSLATE_NOOP\(\s*"[^"]*"\s*,\s*)((?:"(?:[^"\\]|\\.)*"\s*)+))re"_s);
  static const QRegularExpression seam(u"(?<!\\\\)\"\\s*\""_s);
  code.remove(comment);
  QStringList texts;
  for (QRegularExpressionMatchIterator each = text.globalMatch(code); each.hasNext();) {
    const QString literal = each.next().captured(1).trimmed().remove(seam);
    texts << literal.sliced(1, literal.size() - 2).replace("\\\""_L1, "\""_L1);
  }
  return texts;
}

/// Under which name the catalogue has the words of a struct of words.
const QHash<QString, QString>& contexts() {
  static const QHash<QString, QString> known = [] {
    static const QRegularExpression declared(
        u"(?:class|struct) (\\w+) (?:final )?\\{\\s*Q_DECLARE_TR_FUNCTIONS\\((\\w+)\\)"_s);
    QHash<QString, QString> found;
    QDirIterator headers(tree() + u"/src"_s, {u"*.h"_s}, QDir::Files, QDirIterator::Subdirectories);
    while (headers.hasNext())
      for (QRegularExpressionMatchIterator each = declared.globalMatch(readAll(headers.next())); each.hasNext();) {
        const QRegularExpressionMatch match = each.next();
        found.insert(match.captured(2), match.captured(1));
      }
    return found;
  }();
  return known;
}

bool hasOwnWords(const Words& words, const QString& text, const QString& code) {
  const QList<Word> all = words.values(text);
  return std::ranges::any_of(all, [&](const Word& word) {
    const QString named = contexts().value(word.context);
    return code.contains(word.context) || (!named.isEmpty() && code.contains(named + u"::tr("_s));
  });
}

TEST(Words, NameThisDesktop) {
  const Words words = catalogue();
  for (const Word& word : words) EXPECT_FALSE(namesAnotherPlatform(word.english)) << qPrintable(word.english);

  int seen = 0;
  QDirIterator files(tree() + u"/src"_s, {u"*.cpp"_s, u"*.h"_s, u"*.inc"_s}, QDir::Files, QDirIterator::Subdirectories);
  while (files.hasNext()) {
    const QString path = files.next();
    if (path.endsWith("/app/RestoreDock.cpp"_L1)) continue;  // Speaks in a terminal, without the catalogue.
    const QString code = readAll(path);
    const QString header = readAll(path.chopped(path.endsWith(".cpp"_L1) ? 4 : 0) + u".h"_s);
    const QStringList texts = textsIn(code);
    seen += static_cast<int>(texts.size());
    for (const QString& text : texts)
      if (namesAnotherPlatform(text)) {
        EXPECT_TRUE(hasOwnWords(words, text, code + header)) << qPrintable(path) << ": " << qPrintable(text);
      }
  }
  EXPECT_GT(seen, 1000) << "the texts were not found";
}

TEST(Words, AreFoundWhereverCodePutsThem) {
  const struct {
    QString code;
    QStringList texts;
  } cases[] = {
      {uR"(tr("One"))"_s, {u"One"_s}},
      {uR"(Some::tr(
             "One "
             "two."))"_s,
       {u"One two."_s}},
      {uR"(QT_TRANSLATE_NOOP("Context", "One"), tr("Two"))"_s, {u"One"_s, u"Two"_s}},
      {uR"(tr("Say \"no\""))"_s, {u"Say \"no\""_s}},
      {uR"(  // tr("gone"))"_s, {}},
      {uR"(str("no text"), "none")"_s, {}},
  };
  for (const auto& each : cases) EXPECT_EQ(textsIn(each.code), each.texts) << qPrintable(each.code);
}

}  // namespace
}  // namespace tarnwick
