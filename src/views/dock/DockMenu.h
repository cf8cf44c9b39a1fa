#pragma once

#include <QMenu>
#include <QPointer>

namespace tarnwick {

class DockView;

/// A menu of a dock. While it is open screen readers find it in its dock, with all its entries: the toolkit leaves
/// popups that belong to no window out of what it gives them.
class DockMenu final : public QMenu {
  Q_OBJECT
 public:
  /// Stays a window of its own, which outlives the dock; `dock` may be null.
  explicit DockMenu(DockView* dock);

  DockView* dock() const { return dock_; }

 protected:
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  QPointer<DockView> dock_;
};

/// Teaches Qt to describe such menus and those that open from them. Safe to call again.
void installMenuAccessibility();

}  // namespace tarnwick
