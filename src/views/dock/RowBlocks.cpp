#include "views/dock/RowBlocks.h"

#include <algorithm>

#include "views/dock/RowLayout.h"
#include "views/theme/Theme.h"
#include "widgets/catalog/Catalog.h"
#include "widgets/catalog/KindTraits.h"

namespace tarnwick {

namespace {

/// Whether a widget starts apps, or holds them all.
bool isAppTile(const DockWidget& widget) {
  const KindTraits& traits = KindTraits::of(widget.kind);
  return traits.launches() || traits.anchorsRunningApps;
}

RowBlock appBlock(const DockRow& row, bool lineBefore, bool lineAfter) {
  RowBlock block;
  const RowEntry line{RowEntry::Kind::Separator, 0, theme::kSeparatorZone};
  if (lineBefore) block.add(line);
  for (qsizetype i = 0; i < row.runningApps.size(); ++i) block.add({RowEntry::Kind::App, i, theme::kAppSlot});
  if (lineAfter) block.add(line);
  return block;
}

/// Where the running applications are: in front of the widget of this index.
qsizetype appsPosition(const DockRow& row) {
  const auto anchors = [](const DockWidget& widget) { return KindTraits::of(widget.kind).anchorsRunningApps; };
  const auto anchor = std::ranges::find_if(row.widgets, anchors);
  const bool anchored = anchor != row.widgets.end();
  const qsizetype index = anchor - row.widgets.begin();
  switch (row.placement) {
    case RunningAppsPlacement::Left:
      return 0;
    case RunningAppsPlacement::BeforeApps:
      return anchored ? index : row.widgets.size();
    case RunningAppsPlacement::AfterApps:
      return anchored ? index + 1 : row.widgets.size();
    case RunningAppsPlacement::None:
    case RunningAppsPlacement::Right:
      break;
  }
  return row.widgets.size();
}

/// Running applications alone, and a place that asks for widgets where the first of them would be.
QList<RowBlock> invitingBlocks(const DockRow& row) {
  const bool isLast = row.placement == RunningAppsPlacement::Left;
  RowBlock invitation;
  invitation.add(
      {RowEntry::Kind::Invitation, 0, RowLayout::invitationLine(row.scale).width() + theme::kInvitationPadding * 2});
  const RowBlock apps = appBlock(row, !isLast, isLast);
  return isLast ? QList<RowBlock>{apps, invitation} : QList<RowBlock>{invitation, apps};
}

}  // namespace

QList<RowBlock> rowBlocks(const DockRow& row) {
  QList<RowBlock> blocks;
  for (qsizetype i = 0; i < row.widgets.size(); ++i) {
    RowBlock block;
    block.add({RowEntry::Kind::Widget, i, Catalog::find(row.widgets[i].kind).width});
    blocks.append(block);
  }
  if (row.placement == RunningAppsPlacement::None || row.runningApps.isEmpty()) return blocks;
  if (blocks.isEmpty()) return invitingBlocks(row);
  const qsizetype position = appsPosition(row);
  // One line, towards the tiles before; only a block that begins the row, or is right behind its anchor, has it
  // after.
  const bool behindAnchor =
      position > 0 && row.placement == RunningAppsPlacement::AfterApps && position < blocks.size();
  const bool lineAfter = (position == 0 || behindAnchor) && !blocks.isEmpty();
  blocks.insert(position, appBlock(row, position > 0 && !behindAnchor, lineAfter));
  return blocks;
}

double widthOf(const QList<RowBlock>& blocks, double spacing) {
  double width = spacing * static_cast<double>(std::max<qsizetype>(0, blocks.size() - 1));
  for (const RowBlock& block : blocks) width += block.width;
  return width;
}

RowEnds rowEnds(const QList<RowBlock>& blocks, const DockRow& row, double glass, const QUuid& held) {
  QList<RowEnds::Entry> entries;
  std::optional<qsizetype> heldEntry;
  for (const RowBlock& block : blocks) {
    const auto widget = std::ranges::find(block.entries, RowEntry::Kind::Widget, &RowEntry::kind);
    const bool isWidget = widget != block.entries.end();
    const bool isApp =
        isWidget ? isAppTile(row.widgets[widget->index]) : block.entries.first().kind != RowEntry::Kind::Invitation;
    if (isWidget && !held.isNull() && row.widgets[widget->index].id == held) heldEntry = entries.size();
    entries.append({isApp, block.width});
  }
  return RowEnds::of(entries, row.spacing, theme::kInset, glass, heldEntry);
}

}  // namespace tarnwick
