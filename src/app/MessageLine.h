#pragma once

#include <QObject>
#include <memory>

#include "desktop/Panels.h"
#include "desktop/Screens.h"

namespace tarnwick {

class AppStore;
class DockController;

/// Shows the store's message in a quiet bubble above the dock until the user dismisses it or it is withdrawn.
class MessageLine : public QObject {
  Q_OBJECT
 public:
  MessageLine(AppStore& store, DockController& dock, Screens& screens, Panels& panels);
  ~MessageLine() override;

  /// Makes the bubble say what the store says now.
  void update();
  bool isShown() const { return panel_ != nullptr; }

 private:
  void place(const QSize& size, const QMargins& margins);

  AppStore& store_;
  DockController& dock_;
  Screens& screens_;
  Panels& panels_;
  std::unique_ptr<Panel> panel_;
  QString text_;
};

}  // namespace tarnwick
