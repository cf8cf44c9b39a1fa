#include "dock/rules/DockPlacement.h"

#include <algorithm>

#include "dock/rules/DockMeasures.h"
#include "widgets/catalog/Catalog.h"

namespace tarnwick {
namespace {

constexpr double kRowPadding = 48;
constexpr double kScreenPadding = 24;
constexpr double kLeastContent = 100;
constexpr double kUnknownWidth = 140;

bool standsOnTop(const DockConfiguration& config) {
  return config.layout == DockLayout::RevealTop ||
         (config.layout == DockLayout::Fixed && config.position == QLatin1String("top"));
}

/// The layouts that send the system's own dock away have the whole bottom edge to themselves.
bool ownsTheEdge(DockLayout layout) {
  return layout == DockLayout::Replace || layout == DockLayout::ReplaceAutoHide || layout == DockLayout::Swap;
}

double within(double value, double low, double high) { return std::max(low, std::min(value, high)); }

}  // namespace

DockPlacement::Row DockPlacement::row(const QList<DockWidget>& widgets, int runningApps) {
  Row row{0, static_cast<int>(widgets.size()), runningApps};
  for (const DockWidget& widget : widgets) {
    row.tileWidths += Catalog::contains(widget.kind) ? Catalog::find(widget.kind).width : kUnknownWidth;
  }
  return row;
}

DockPlacement::Size DockPlacement::size(const DockConfiguration& config, const Row& row, double usableWidth,
                                        double leastWidth) {
  const bool showsApps = config.liveApps && config.desktopOptions().runningAppsPlacement != QLatin1String("none");
  const double apps = showsApps ? DockMeasures::kAppSlot * row.runningApps + DockMeasures::kSeparatorZone : 0;
  const double content = apps + config.spacing * row.widgets + row.tileWidths + kRowPadding;
  const double available = usableWidth - kScreenPadding;

  double scale = config.scale;
  if (config.overflow == QLatin1String("fit")) {
    scale = std::max(kLeastScale, std::min(scale, available / std::max(content, kLeastContent)));
  }
  const double width = std::min(available, std::max({content * scale, DockMeasures::kLeastWidth, leastWidth}));
  const double height = (config.profiles.size() > 1 ? DockMeasures::kHeightWithTabs : DockMeasures::kHeight) * scale;
  return {scale, {width, height}};
}

QRectF DockPlacement::place(const DockConfiguration& config, const QSizeF& panel, const QRectF& frame,
                            const QRectF& usable, const std::optional<QPointF>& floating, const QMarginsF& beside) {
  const double gap = config.edgeGap;

  double x = usable.center().x() - panel.width() / 2;
  if (config.alignment == QLatin1String("left")) x = usable.left() + gap - beside.left();
  if (config.alignment == QLatin1String("right")) x = usable.right() - panel.width() - gap + beside.right();

  double y = usable.bottom() - gap - panel.height();
  if (standsOnTop(config)) {
    y = usable.top() + gap;
  } else if (ownsTheEdge(config.layout)) {
    y = frame.bottom() - gap - panel.height();
  }

  if (config.layout == DockLayout::Floating && floating) {
    x = within(frame.left() + floating->x(), usable.left() - beside.left(),
               usable.right() - panel.width() + beside.right());
    y = within(frame.top() + floating->y(), usable.top(), usable.bottom() - panel.height());
  }
  return {QPointF(x, y), panel};
}

bool DockPlacement::hangs(const DockConfiguration& config, const QRectF& slot, const QRectF& usable) {
  return standsOnTop(config) || (config.layout == DockLayout::Floating && slot.top() <= usable.top());
}

QRectF DockPlacement::atRest(const QRectF& slot, double scale, bool hangs) {
  QRectF glass = slot;
  glass.setHeight(DockMeasures::kHeight * scale);
  if (!hangs) glass.moveBottom(slot.bottom());
  return glass;
}

}  // namespace tarnwick
