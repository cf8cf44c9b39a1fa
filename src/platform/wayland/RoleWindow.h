#pragma once

#include <QPointer>
#include <QRegion>
#include <QWindow>
#include <optional>

#include "platform/wayland/WaylandSession.h"

namespace tarnwick {

/// Gives the surface of one window of Qt's a role that Qt doesn't know: each time that the window is shown it has a new
/// surface, which gets the role before the first picture. It belongs to the window and ends with it. The session must
/// outlive it.
class RoleWindow : public QObject {
  Q_OBJECT
 public:
  /// The one of this window, or null.
  static RoleWindow* of(const QWindow* window);

  QWindow& window() const { return window_; }
  /// What takes the pointer, in the window's coordinates; nothing stands for the whole window.
  void setInput(const std::optional<QRegion>& region);
  /// Right before the window is shown.
  void prepare();

 Q_SIGNALS:
  /// The compositor took the place away. The window must be hidden; never emitted from within a call.
  void closed();
  /// The role is about to go, and with it what else was made for the surface.
  void dropped();
  /// The picture went with the old role: the window must be painted again.
  void cleared();

 protected:
  RoleWindow(const WaylandSession& session, QWindow& window);

  /// Gives the role. The surface has neither a role nor a picture. False where there is no place for it.
  virtual bool assign(wl_surface* surface) = 0;
  virtual void release() = 0;
  virtual bool hasRole() const = 0;

  /// Takes the role away and gives it anew, for what can't be changed while it is there.
  void renew();
  void reportClosed();
  bool eventFilter(QObject* watched, QEvent* event) override;
  const WaylandSession& session() const { return session_; }

 protected Q_SLOTS:
  void give();
  void drop();

 private:
  void follow();
  void applyInput(wl_surface* surface) const;

  const WaylandSession& session_;
  QWindow& window_;
  std::optional<QRegion> input_;
};

}  // namespace tarnwick
