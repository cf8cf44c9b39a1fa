#pragma once

#include <QList>
#include <QRect>

namespace tarnwick {

/// Where the cards of the library are: shelf below shelf, each with a heading and rows of cards that wrap. In
/// device-independent pixels from the top left of all; left is the side on which reading begins.
struct CardLayout {
  static constexpr int kPadding = 12;  ///< Inside a card.
  static constexpr int kNameRow = 36;  ///< Below the tile.
  static constexpr int kGap = 10;      ///< Between cards.
  static constexpr int kMargin = 24;   ///< Beside the shelves and below the last.
  static constexpr int kHeading = 45;  ///< The space above the cards of a shelf.
  static constexpr int kHeadingMiddle = 27;
  static constexpr int kAbove = 8;  ///< Clear space that the first heading needs no more.

  QList<QRect> cards;   ///< One for each item, in their order.
  QList<int> headings;  ///< The top of each shelf.
  int height = 0;

  /// `widths`: of what each card holds, shelf by shelf.
  static CardLayout make(const QList<QList<int>>& widths, int width);

  /// The card at a point; -1 for none.
  int cardAt(const QPoint& point) const;
  /// The first and the one behind the last card that may touch the heights `top` to `bottom`.
  std::pair<int, int> between(int top, int bottom) const;
  /// The card that lies nearest above (-1) or below (1) one; itself where there is none.
  int beside(int card, int direction) const;
  /// The card nearest to the middle of `from` whose row lies about `distance` away from it.
  int paged(int card, int distance) const;

  bool operator==(const CardLayout&) const = default;
};

}  // namespace tarnwick
