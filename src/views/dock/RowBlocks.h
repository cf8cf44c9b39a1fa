#pragma once

#include <QList>
#include <QUuid>

#include "dock/rules/RowEnds.h"
#include "views/dock/DockRow.h"

namespace tarnwick {

/// An entry of the row at scale 1, without a place yet.
struct RowEntry {
  enum class Kind { Widget, App, Separator, Invitation };
  Kind kind;
  qsizetype index = 0;
  double width = 0;
};

/// What is only ever together: a widget, or all running applications, which have no gaps between them and a zone with a
/// line on the side of other tiles.
struct RowBlock {
  QList<RowEntry> entries;
  double width = 0;

  void add(const RowEntry& entry) {
    entries.append(entry);
    width += entry.width;
  }
};

/// What is in a row, in its order.
QList<RowBlock> rowBlocks(const DockRow& row);
/// What they take with the gaps between them, at scale 1.
double widthOf(const QList<RowBlock>& blocks, double spacing);
/// The ends of a row that stay while the rest of it scrolls in a glass of this width; see RowEnds. `held` is a widget
/// on its way, null for none.
RowEnds rowEnds(const QList<RowBlock>& blocks, const DockRow& row, double glass, const QUuid& held);

}  // namespace tarnwick
