#pragma once

#include <QObject>
#include <functional>
#include <memory>
#include <optional>

#include "base/Scheduler.h"
#include "desktop/Panels.h"

namespace tarnwick {

class AppStore;
class DockController;
class MessageBubble;
class PanelHost;
class WindowFade;
struct Services;

/// What a bubble is placed beside. All outlive it.
struct DockBubbleParts {
  AppStore& store;
  const Services& services;
  DockController& dock;
  PanelHost& host;
};

/// The window of a bubble above a dock. It follows the dock's place and look, moves to another dock when its own goes,
/// makes space for an open panel, and stays below a full-screen window that covers its display. While no display is
/// connected it waits for one. Its window fades in, and out when this is destroyed.
class DockBubble final : public QObject {
  Q_OBJECT
 public:
  /// Makes the bubble; asked again when the window system took the window.
  using Maker = std::function<std::unique_ptr<MessageBubble>()>;

  DockBubble(DockBubbleParts parts, Maker make);
  ~DockBubble() override;

  /// The display whose dock it prefers; the first one while it is empty.
  void setDisplay(const QString& display) { display_ = display; }
  /// Asked for how far it is lifted over another bubble.
  void setRaised(std::function<int()> raised) { raised_ = std::move(raised); }

  /// Shows it where it belongs now.
  void arrange();
  /// The same once the dock is where a change of the settings or of the displays puts it.
  void arrangeSoon();
  /// Of the bubble; 0 while none is shown.
  int height() const;
  /// Where it is, in desktop coordinates; empty while none is shown.
  QRect frame() const;

 private:
  void make();
  void fadeOut();
  void moveAside();

  DockBubbleParts parts_;
  Maker maker_;
  QString display_;
  std::function<int()> raised_;
  std::unique_ptr<Panel> panel_;
  MessageBubble* bubble_ = nullptr;  // Owned by the panel.
  WindowFade* fade_ = nullptr;       // Owned by the bubble; null where nothing composites.
  std::optional<PanelPlacement> placement_;
  JobHandle arranging_;
};

}  // namespace tarnwick
