#include "commandbar/EmojiTable.h"

#include <QFile>
#include <QLocale>
#include <algorithm>
#include <iterator>
#include <optional>
#include <string>
#include <utility>

#include "base/ModuleLoader.h"
#include "commandbar/EmojiWords.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

constexpr std::string_view kHeading = "emoji 1 ";
constexpr char kGroup = '\t';  ///< A line of a group begins so.
constexpr char kEndOfName = '\t';
/// No table is so large; another file is none.
constexpr qint64 kMostBytes = 4'000'000;

QString textOf(std::string_view bytes) { return QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size())); }

std::string_view firstLine(std::string_view text) { return text.substr(0, text.find('\n')); }

bool isInWord(char32_t character) { return QChar::isLetterOrNumber(character) || QChar::isMark(character); }

bool isAccent(char32_t character) { return character >= 0x300 && character <= 0x36F; }

/// The table of the user's language, mapped for as long as the program runs.
class LanguageFile {
 public:
  LanguageFile() {
    for (const QString& name : EmojiTable::fileNames(QLocale().uiLanguages())) {
      file_.setFileName(ModuleLoader::find(name));
      if (file_.fileName().isEmpty() || !file_.open(QIODevice::ReadOnly)) continue;
      const qint64 size = file_.size();
      const uchar* bytes = size > 0 && size <= kMostBytes ? file_.map(0, size) : nullptr;
      if (bytes) text_ = {reinterpret_cast<const char*>(bytes), static_cast<size_t>(size)};
      file_.close();  // What is mapped stays.
      return;
    }
  }

  std::string_view text() const { return text_; }

 private:
  QFile file_;
  std::string_view text_;
};

}  // namespace

EmojiTable::Part EmojiTable::Part::of(std::string_view text) {
  Part part;
  if (!text.starts_with(kHeading) || !text.ends_with('\n')) return part;
  part.text = text;
  for (size_t at = text.find('\n') + 1; at < text.size(); at = text.find('\n', at) + 1)
    if (text[at] != kGroup) part.lines.push_back(at);
  return part;
}

std::string_view EmojiTable::Part::line(size_t index) const { return firstLine(text.substr(lines[index])); }

std::string_view EmojiTable::Part::emoji(size_t index) const {
  const std::string_view whole = line(index);
  return whole.substr(0, whole.find(' '));
}

std::string_view EmojiTable::Part::name(size_t index) const {
  const std::string_view whole = line(index);
  const size_t begin = std::min(whole.find(' '), whole.size() - 1) + 1;
  return whole.substr(begin, whole.find(kEndOfName, begin) - begin);
}

std::vector<size_t> EmojiTable::Part::thatHave(std::string_view wordBeginning) const {
  std::vector<size_t> found;
  if (lines.empty()) return found;
  const std::string wanted = ' ' + std::string(wordBeginning);
  size_t at = text.find(wanted, lines.front());
  while (at != std::string_view::npos) {
    const auto beyond = std::ranges::upper_bound(lines, at);
    const auto index = static_cast<size_t>(beyond - lines.begin()) - 1;
    // Between two emoji there may be a group.
    if (at < lines[index] + line(index).size()) found.push_back(index);
    if (beyond == lines.end()) break;
    at = text.find(wanted, *beyond);
  }
  return found;
}

bool EmojiTable::Part::isCalled(size_t index, std::string_view folded) const {
  if (lines.empty()) return false;
  if (name(index) == folded) return true;
  const std::string first = kEndOfName + (' ' + std::string(folded)) + ',';
  return line(index).find(first) != std::string_view::npos &&
         EmojiTable::folded(textOf(name(index))).toStdString() == folded;
}

const EmojiTable& EmojiTable::shared() {
  static const LanguageFile file;
  static const EmojiTable table(kEnglishEmoji, file.text());
  return table;
}

EmojiTable::EmojiTable(std::string_view english, std::string_view other) : english_(Part::of(english)) {
  if (firstLine(other) != firstLine(english)) return;
  other_ = Part::of(other);
  if (other_.lines.size() != english_.lines.size()) other_ = {};
}

QString EmojiTable::emoji(qsizetype index) const { return textOf(english_.emoji(static_cast<size_t>(index))); }

QString EmojiTable::name(qsizetype index) const {
  return textOf((other_.lines.empty() ? english_ : other_).name(static_cast<size_t>(index)));
}

QString EmojiTable::group(qsizetype index) const {
  const std::string_view before = english_.text.substr(0, english_.lines[static_cast<size_t>(index)]);
  const size_t at = before.rfind(std::string("\n") + kGroup);
  return at == std::string_view::npos ? QString() : textOf(firstLine(before.substr(at + 2)));
}

qsizetype EmojiTable::indexOf(const QString& emoji) const {
  const std::string wanted = '\n' + emoji.toStdString() + ' ';
  const size_t at = english_.text.find(wanted);
  if (emoji.isEmpty() || at == std::string_view::npos) return -1;
  const auto line = std::ranges::lower_bound(english_.lines, at + 1);
  return line != english_.lines.end() && *line == at + 1 ? line - english_.lines.begin() : -1;
}

bool EmojiTable::isCalled(qsizetype index, std::string_view folded) const {
  const auto at = static_cast<size_t>(index);
  return english_.isCalled(at, folded) || other_.isCalled(at, folded);
}

QList<qsizetype> EmojiTable::search(const QString& query, qsizetype most) const {
  if (const qsizetype itself = indexOf(query.trimmed()); itself >= 0) return {itself};
  QList<qsizetype> found;
  const std::string wanted = folded(query).toStdString();
  if (wanted.empty()) {
    // Of signs alone nothing is known.
    if (query.trimmed().isEmpty())
      for (qsizetype i = 0; i < std::min(size(), most); ++i) found.append(i);
    return found;
  }

  std::optional<std::vector<size_t>> kept;
  for (size_t begin = 0; begin < wanted.size();) {
    const size_t end = std::min(wanted.find(' ', begin), wanted.size());
    const std::string_view word = std::string_view(wanted).substr(begin, end - begin);
    begin = end + 1;
    const std::vector<size_t> inEnglish = english_.thatHave(word);
    const std::vector<size_t> inOther = other_.thatHave(word);
    std::vector<size_t> either;
    std::ranges::set_union(inEnglish, inOther, std::back_inserter(either));
    if (kept) {
      std::vector<size_t> both;
      std::ranges::set_intersection(*kept, either, std::back_inserter(both));
      kept = std::move(both);
    } else {
      kept = std::move(either);
    }
  }
  for (const size_t each : *kept) found.append(static_cast<qsizetype>(each));
  std::ranges::stable_partition(found, [&](qsizetype index) { return isCalled(index, wanted); });
  return found.first(std::min(found.size(), most));
}

QString EmojiTable::folded(const QString& text) {
  QString words;
  bool isBetween = false;
  for (const char32_t character : text.normalized(QString::NormalizationForm_KD).toUcs4()) {
    if (isAccent(character)) continue;
    if (!isInWord(character)) {
      isBetween = true;
      continue;
    }
    if (std::exchange(isBetween, false) && !words.isEmpty()) words += u' ';
    const char32_t small = QChar::toCaseFolded(character);
    if (small == U'ß')
      words += "ss"_L1;
    else
      words += QChar::fromUcs4(small);
  }
  return words;
}

QStringList EmojiTable::fileNames(const QStringList& languages) {
  QStringList names;
  for (QString language : languages) {
    language.replace(u'-', u'_');
    if (language == "en"_L1 || language.startsWith("en_"_L1)) break;
    const QString name = "tarnwick-emoji-"_L1 + language;
    if (!names.contains(name)) names << name;
  }
  return names;
}

}  // namespace tarnwick
