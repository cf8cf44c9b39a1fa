#include "views/library/CardLayout.h"

#include <algorithm>
#include <cstdlib>

#include "views/theme/Theme.h"

namespace tarnwick {

namespace {

constexpr int kCardHeight = CardLayout::kPadding + static_cast<int>(theme::kTileHeight) + CardLayout::kNameRow;

/// Of the cards with their top at `top`, the one whose middle is nearest to `x`.
int nearestInRow(const QList<QRect>& cards, int top, int x) {
  int best = -1;
  for (int i = 0; i < cards.size(); ++i) {
    if (cards[i].top() != top) continue;
    if (best < 0 || std::abs(cards[i].center().x() - x) < std::abs(cards[best].center().x() - x)) best = i;
  }
  return best;
}

}  // namespace

CardLayout CardLayout::make(const QList<QList<int>>& widths, int width) {
  CardLayout layout;
  const int most = std::max(1, width - kMargin * 2);
  int y = -kAbove;
  for (const QList<int>& shelf : widths) {
    layout.headings.append(y);
    y += kHeading;
    int x = kMargin;
    for (const int inner : shelf) {
      const int wide = std::min(inner + kPadding * 2, most);
      if (x > kMargin && x + wide > kMargin + most) {
        x = kMargin;
        y += kCardHeight + kGap;
      }
      layout.cards.append(QRect(x, y, wide, kCardHeight));
      x += wide + kGap;
    }
    if (!shelf.isEmpty()) y += kCardHeight;
  }
  layout.height = y + kMargin;
  return layout;
}

int CardLayout::cardAt(const QPoint& point) const {
  const auto [first, last] = between(point.y(), point.y());
  for (int i = first; i < last; ++i)
    if (cards[i].contains(point)) return i;
  return -1;
}

std::pair<int, int> CardLayout::between(int top, int bottom) const {
  const auto begin = std::ranges::lower_bound(cards, top, {}, [](const QRect& card) { return card.bottom(); });
  const auto end = std::ranges::upper_bound(cards, bottom, {}, [](const QRect& card) { return card.top(); });
  return {static_cast<int>(begin - cards.begin()), static_cast<int>(std::max(begin, end) - cards.begin())};
}

int CardLayout::beside(int card, int direction) const {
  if (card < 0 || card >= cards.size()) return card;
  const int top = cards[card].top();
  int row = -1;
  for (const QRect& each : cards) {
    if (direction > 0 ? each.top() <= top : each.top() >= top) continue;
    if (row < 0 || (direction > 0 ? each.top() < row : each.top() > row)) row = each.top();
  }
  return row < 0 ? card : nearestInRow(cards, row, cards[card].center().x());
}

int CardLayout::paged(int card, int distance) const {
  if (card < 0 || card >= cards.size()) return card;
  const int goal = cards[card].top() + distance;
  const auto row =
      std::ranges::min_element(cards, {}, [goal](const QRect& each) { return std::abs(each.top() - goal); });
  const int found = nearestInRow(cards, row->top(), cards[card].center().x());
  // A page shorter than a row still goes on.
  return cards[found].top() == cards[card].top() ? beside(card, distance > 0 ? 1 : -1) : found;
}

}  // namespace tarnwick
