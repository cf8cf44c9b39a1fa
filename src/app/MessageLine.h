#pragma once

#include <QObject>
#include <memory>
#include <optional>

#include "base/Scheduler.h"
#include "desktop/Panels.h"
#include "desktop/Screens.h"

namespace tarnwick {

class AppStore;
class DockController;
class MessageBubble;

/// Shows the store's message in a quiet bubble above the dock until the user dismisses it or it is withdrawn. The
/// bubble follows the dock; while no display is connected it waits for one.
class MessageLine : public QObject {
  Q_OBJECT
 public:
  MessageLine(AppStore& store, DockController& dock, Screens& screens, Panels& panels);
  ~MessageLine() override;

  /// Makes the bubble say what the store says now.
  void update();
  bool isShown() const { return panel_ != nullptr; }
  /// Of the bubble; 0 while none is shown.
  int height() const;

 private:
  void arrangeSoon();
  void arrange();
  void make();

  AppStore& store_;
  DockController& dock_;
  Screens& screens_;
  Panels& panels_;
  std::unique_ptr<Panel> panel_;
  MessageBubble* bubble_ = nullptr;  // Owned by the panel.
  std::optional<PanelPlacement> placement_;
  JobHandle arranging_;
  QString text_;
};

}  // namespace tarnwick
