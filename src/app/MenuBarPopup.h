#pragma once

#include <QObject>
#include <functional>
#include <memory>
#include <optional>

#include "desktop/Panels.h"
#include "desktop/Screens.h"
#include "views/onboarding/MenuBarPanel.h"

namespace tarnwick {

/// Opens the small window below the status item, and closes it when the user turns elsewhere. Where the tray does not
/// tell where its icons stand, it opens at the pointer, and at the screen's upper corner where that is not known
/// either.
class MenuBarPopup final : public QObject {
  Q_OBJECT
 public:
  /// All are borrowed.
  MenuBarPopup(AppStore& store, Panels& panels, Screens& screens, MenuBarPanelActions actions);
  ~MenuBarPopup() override;

  /// Opens it beside the status item's place, which may be empty, or closes it.
  void toggle(const QRect& item, bool dark);
  void hide();
  bool isShown() const { return popup_ != nullptr; }

 private:
  std::optional<PanelPlacement> placeOf(const QRect& item) const;
  void open(const PanelPlacement& place, bool dark);

  AppStore& store_;
  Panels& panels_;
  Screens& screens_;
  MenuBarPanelActions actions_;
  std::unique_ptr<Panel> anchor_;  // Unseen, where the item is.
  std::unique_ptr<Popup> popup_;
  double closedAt_ = 0;  // On the reference clock.
};

}  // namespace tarnwick
