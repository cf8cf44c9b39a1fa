#pragma once

#include <QObject>
#include <QString>
#include <memory>
#include <optional>

#include "desktop/Panels.h"
#include "views/dock/CarriedTile.h"

namespace tarnwick {

class DockController;

/// The window that shows a tile which the pointer holds away from its dock. It lets clicks through.
class CarryHost final : public QObject {
  Q_OBJECT
 public:
  /// Borrowed. Nothing is shown before there is a controller.
  explicit CarryHost(const Panels& panels) : panels_(panels) {}

  void setController(DockController* controller) { controller_ = controller; }
  /// Where the tile of a display's dock is now; nothing takes it away.
  void show(const QString& display, const std::optional<CarriedPicture>& tile);
  void close() { popup_.reset(); }

 private:
  const Panels& panels_;
  DockController* controller_ = nullptr;
  std::unique_ptr<Popup> popup_;
};

}  // namespace tarnwick
