#include "commandbar/FoldedText.h"

#include <QString>
#include <QTextBoundaryFinder>
#include <algorithm>

#include "base/Text.h"

namespace tarnwick {
namespace {

constexpr char16_t kCaseStep = u'a' - u'A';

char16_t lowered(char16_t unit) {
  const bool isUpper = unit >= u'A' && unit <= u'Z';
  return static_cast<char16_t>(unit + (isUpper ? kCaseStep : 0));
}

}  // namespace

void FoldedText::assign(QStringView text) {
  begins_.clear();
  units_.resize(text.size());
  const char16_t* from = text.utf16();
  char16_t seen = 0;
  bool hasReturn = false;
  for (qsizetype i = 0; i < text.size(); ++i) {
    units_[i] = lowered(from[i]);
    seen = static_cast<char16_t>(seen | from[i]);
    hasReturn = hasReturn || from[i] == u'\r';
  }
  if (seen < 0x80 && !hasReturn) return;

  const QString folded = text.toString().toLower().normalized(QString::NormalizationForm_C);
  units_.clear();
  units_.append(reinterpret_cast<const char16_t*>(folded.utf16()), folded.size());
  if (std::ranges::all_of(folded, Text::standsAlone)) return;
  QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, folded);
  for (qsizetype begin = 0; begin >= 0 && begin < folded.size(); begin = Text::characterEnd(finder, folded, begin))
    begins_.append(begin);
}

qsizetype FoldedText::beginOf(qsizetype character) const {
  if (begins_.isEmpty()) return character;
  return character < begins_.size() ? begins_[character] : units_.size();
}

QStringView FoldedText::at(qsizetype character) const {
  const qsizetype begin = beginOf(character);
  return all().sliced(begin, beginOf(character + 1) - begin);
}

bool FoldedText::has(const FoldedText& characters, qsizetype from) const {
  if (from + characters.size() > size()) return false;
  const qsizetype begin = beginOf(from);
  return all().sliced(begin, beginOf(from + characters.size()) - begin) == characters.all();
}

qsizetype FoldedText::find(QStringView character, qsizetype from) const {
  if (begins_.isEmpty())
    return character.size() == 1 && from < units_.size() ? all().indexOf(character.front(), from) : -1;
  for (qsizetype i = from; i < size(); ++i)
    if (at(i) == character) return i;
  return -1;
}

}  // namespace tarnwick
