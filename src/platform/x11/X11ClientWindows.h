#pragma once

#include <QHash>
#include <QRect>
#include <QSet>

#include "desktop/ClientWindows.h"
#include "platform/x11/X11Events.h"
#include "platform/x11/X11Screens.h"

namespace tarnwick {

/// The windows that the window manager lists, ours left out. Follows every change by events, never by a timer. Moves
/// are followed only where somebody may ask for what they change: of all windows while frames are watched or there are
/// several displays that may show them, of full-screen windows and docks always.
/// The events and the screens must outlive it.
class X11ClientWindows final : public ClientWindows {
  Q_OBJECT
 public:
  /// `moves` says whether windows may be moved: under a Wayland compositor only some of them are known here.
  X11ClientWindows(X11Events& events, const X11Screens& screens, Capability moves = Capability::yes());

  Capability moves() const override { return moves_; }
  Capability pictures() const override;
  QList<ClientWindow> all() const override { return windows_; }
  void watchFrames(bool watched) override;
  void activate(quint64 id) override;
  void close(quint64 id) override;
  void minimise(quint64 id) override;
  void setIconGeometry(const QList<quint64>& windows, const QRectF& tile) override;

 private:
  struct Known {
    ClientWindow window;
    QRect frame;
    QRect outline;
    quint32 desktop = 0;
  };

  void ask(quint64 id, X11Atom request, const std::array<quint32, 5>& data) const;
  void refreshLater();
  void refresh();
  bool needsMoves(const Known& known) const;
  void followMoves();
  QString sandboxOf(qint64 pid);
  void publish(xcb_window_t active, quint32 desktop);
  QRectF reportedFrame(const Known& known) const;

  X11Events& events_;
  const X11Screens& screens_;
  Capability moves_;
  QList<xcb_window_t> order_;
  QHash<xcb_window_t, Known> known_;
  QSet<xcb_window_t> stale_;
  QSet<xcb_window_t> followed_;  ///< Those whose moves are told.
  QHash<qint64, QString> sandboxes_;
  QHash<xcb_window_t, QRect> tiles_;  ///< What was reported of each, in root pixels.
  QList<ClientWindow> windows_;
  bool isRefreshing_ = false;
  bool reportsFrames_ = false;  ///< Of all windows.
};

}  // namespace tarnwick
