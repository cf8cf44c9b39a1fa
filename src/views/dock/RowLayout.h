#pragma once

#include <QList>
#include <QRectF>
#include <QUuid>
#include <optional>

#include "views/dock/DockRow.h"
#include "views/theme/Typography.h"

namespace tarnwick {

/// One place of the row: a widget's tile or a running application.
struct RowItem {
  enum class Kind { Widget, App };

  Kind kind = Kind::Widget;
  qsizetype index = 0;  ///< In DockRow::widgets or DockRow::runningApps.
  QRectF rect;
  bool stays = false;  ///< At an end of a row that scrolls, while what lies between the ends moves under it.

  bool operator==(const RowItem&) const = default;
};

/// A widget of elsewhere that is held over a row, and where it would be put in among the displayed widgets.
struct RowGuest {
  DockWidget widget;
  qsizetype index = 0;

  bool operator==(const RowGuest&) const = default;
};

/// What moves a row in its glass without changing what is in it.
struct RowPose {
  double scroll = 0;                ///< Of a row that is wider than its glass.
  double tabs = 0;                  ///< How far the tabs have come out, from 0 to 1.
  bool mirrored = false;            ///< For people who read from the right: the row begins there.
  QUuid held{};                     ///< A widget on its way, which breaks no run of apps; null for none.
  std::optional<RowGuest> guest{};  ///< Makes the others move aside.
};

/// Where everything of a dock is, in the units of its window. All edges lie on whole device pixels.
struct RowLayout {
  QRectF glass;
  QList<RowItem> items;  ///< In the order of reading: from left to right, or from right to left where it is mirrored.
  QRectF separator;      ///< The line between tiles and running applications; empty where there is none.
  bool separatorStays = false;  ///< With the running applications, at an end of a row that scrolls.
  QRectF invitation;    ///< To add widgets, where a row holds nothing but running applications; empty elsewhere.
  QRectF gap;           ///< That is kept for a guest; empty where there is none, or nothing else in the row.
  QList<QRectF> tabs;   ///< None while they are in; one that there is no space for is empty.
  double overflow = 0;  ///< How far the row is wider than its glass; it scrolls that far.
  double scroll = 0;    ///< How far it is scrolled.
  QRectF middle;        ///< What is seen of all that scrolls: the glass without the ends that stay.
  QRectF backArrow;     ///< Says that there is more towards the beginning, and goes there; empty where there is none.
  QRectF onArrow;       ///< The same towards the end.
  bool mirrored = false;

  /// The width that the glass takes when nothing limits it, never below the dock's least, whatever the scale, and never
  /// less than the tabs need that it may show.
  static double idealWidth(const DockRow& row);
  /// The width that the glass takes for the tabs of these profiles, each with its whole name unless that is very long.
  static double tabsWidth(const QStringList& names, double scale);
  /// The row as it would be.
  static DockRow withGuest(const DockRow& row, const RowGuest& guest);
  /// The words of that invitation, and of a dock that is empty.
  static TextLine invitationLine(double scale);
  /// Lays the row out in the middle of `slot`. `ratio` is device pixels per unit.
  static RowLayout of(const DockRow& row, const QRectF& slot, double ratio, const RowPose& pose = {});

  /// What is seen of an item; empty for one that is scrolled out of sight.
  QRectF seen(const RowItem& item) const;
  /// The middle of an item along the row; one that is out of sight stands at the edge beyond which it is.
  double seenMiddle(const RowItem& item) const;
  /// -1 over the arrow towards the beginning, 1 over the one towards the end, 0 elsewhere.
  int arrowAt(QPointF point) const;
  /// The item at a point, if any. It covers its first edges but not its last, and nothing that is out of sight.
  std::optional<qsizetype> itemAt(QPointF point) const;
  /// The item for things that are held over the dock: by its stretch of the row alone, but not beside the tabs.
  std::optional<qsizetype> itemUnder(QPointF point, double scale) const;
  std::optional<qsizetype> tabAt(QPointF point) const;
  /// The grounds that a dock without glass is cut to: one of each widget that shows something, and one of all running
  /// applications.
  QList<QRectF> plates(const DockRow& row) const;
  /// The lines that part tiles, each with space for a ring of one device pixel.
  QList<QRectF> lines(const DockRow& row, double ratio) const;
  /// The item of a widget or a running application; -1 for none.
  qsizetype itemOf(RowItem::Kind kind, qsizetype index) const;
  /// The number of widgets whose middle is read before `x`: where something dropped there goes.
  qsizetype widgetsBefore(double x) const;
  /// Where the line is drawn that says so: the middle of the gap before the widget of that index.
  double insertionX(qsizetype index, double spacing) const;

 private:
  static RowLayout aroundGuest(const DockRow& row, const QRectF& slot, double ratio, RowPose pose);
  static double scrollToGuest(const DockRow& whole, const QRectF& slot, double ratio, RowPose pose, qsizetype index);
  void mirror();
  bool isInMiddle(QPointF point) const { return point.x() >= middle.left() && point.x() < middle.right(); }
  /// How far something lies along the row, for comparisons.
  double along(double x) const { return mirrored ? -x : x; }
  double beginOf(const QRectF& rect) const { return mirrored ? -rect.right() : rect.left(); }
  double endOf(const QRectF& rect) const { return mirrored ? -rect.left() : rect.right(); }
};

/// What an item is known by for as long as its widget or its application is in the row.
QString itemKey(const DockRow& row, const RowItem& item);
/// The item of a key; -1 for none.
qsizetype itemWithKey(const DockRow& row, const RowLayout& layout, const QString& key);

}  // namespace tarnwick
