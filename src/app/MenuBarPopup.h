#pragma once

#include <QMenu>
#include <QObject>
#include <memory>
#include <optional>

#include "desktop/Panels.h"
#include "desktop/Screens.h"
#include "store/Services.h"

namespace tarnwick {

class AppStore;
class Commands;

/// Opens the small window below the status item, and closes it when the user turns elsewhere. Where the tray does not
/// report where its icons are, it opens at the pointer, and where that is not known either at the corner of the screen
/// that bars with a tray have it in.
class MenuBarPopup final : public QObject {
  Q_OBJECT
 public:
  /// All must outlive it.
  MenuBarPopup(AppStore& store, const Services& services, Commands& commands);
  ~MenuBarPopup() override;

  /// Opens it beside the status item's place, which may be empty, or closes it.
  void toggle(const QRect& item, bool dark);
  /// Opens a menu there instead; it must live until its aboutToHide. The click that closed it does not open it again.
  void openMenu(QMenu& menu, const QRect& item);
  void hide();
  bool isShown() const { return popup_ != nullptr; }

 private:
  std::optional<PanelPlacement> placeOf(const QRect& item) const;
  std::unique_ptr<Panel> makeAnchor(const PanelPlacement& place) const;
  void open(const PanelPlacement& place, bool dark);

  AppStore& store_;
  const Services& services_;
  Commands& commands_;
  std::unique_ptr<Panel> anchor_;  // Unseen, where the item is.
  std::unique_ptr<Popup> popup_;
  double closedAt_ = 0;  // On the reference clock.
  std::unique_ptr<Panel> menuAnchor_;
  double menuClosedAt_ = -1;
};

}  // namespace tarnwick
