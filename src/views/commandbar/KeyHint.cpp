#include "views/commandbar/KeyHint.h"

#include <algorithm>
#include <ranges>

#include "views/commandbar/CommandBarMeasures.h"
#include "views/controls/ControlLook.h"
#include "views/theme/Glass.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

const QString kReturnKey = u"↩"_s;
constexpr double kReturnSymbol = 13;

/// The keys of a combination; none where it is a word.
QStringList keysIn(const QString& word) {
  if (word == kReturnKey) return {word};
  if (word.size() < 2) return {};
  if (word.startsWith(u'⌘')) return {word.first(1), word.sliced(1)};
  return word.contains(u'+') ? word.split(u'+') : QStringList();
}

}  // namespace

KeyHint::KeyHint(const QString& text) {
  const QStringList words = text.split(u' ', Qt::SkipEmptyParts);
  for (const QString& word : words) {
    const QStringList keys = keysIn(word);
    const bool isKey = !keys.isEmpty();
    const double gap = parts_.isEmpty() ? 0 : theme::kKeyWordGap;
    if (!isKey) {
      add(word, false, gap);
      continue;
    }
    const qsizetype first = parts_.size();
    for (const QString& key : keys) add(key, true, parts_.size() == first ? gap : theme::kKeyCapGap);
    for (Part& part : parts_ | std::views::drop(first)) part.combination = {parts_[first].x, width_};
  }
}

void KeyHint::add(const QString& text, bool isKey, double gap) {
  Part part{TextLine(text, isKey ? TextStyle::KeyCap : TextStyle::CommandCaption)};
  part.isKey = isKey;
  part.x = width_ + gap;
  const double words = text == kReturnKey ? kReturnSymbol : part.line.width();
  part.width = isKey ? std::max(theme::kKeyCapLeast, words + theme::kKeyCapPadding * 2) : words;
  width_ = part.x + part.width;
  part.combination = {part.x, width_};
  parts_.append(part);
}

void KeyHint::draw(QPainter& painter, const QRectF& box, const ControlLook& look, bool mirrored) const {
  for (const Part& part : parts_) {
    // The keys of one combination stand in the order in which they are pressed and named, mirrored or not.
    const auto [begin, end] = part.combination;
    const double left = mirrored ? box.right() - end + (part.x - begin) : box.left() + part.x;
    const QRectF place(left, box.center().y() - theme::kKeyCapHeight / 2, part.width, theme::kKeyCapHeight);
    if (part.isKey) drawRounded(painter, place, theme::kKeyCapCorner, faded(look.palette.primary, theme::kKeyCapShare));
    if (part.line.text() == kReturnKey) {
      QRectF mark(0, 0, kReturnSymbol, kReturnSymbol);
      mark.moveCenter(place.center());
      drawControlSymbol(painter, u"return"_s, mark, look.palette.primary);
      continue;
    }
    const QPointF middle(place.center().x(), place.center().y() + part.line.capHeight() / 2);
    part.line.drawCentred(painter, middle, part.isKey ? look.palette.primary : look.palette.secondary);
  }
}

}  // namespace tarnwick
