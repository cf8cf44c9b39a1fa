#pragma once

#include <QList>
#include <QObject>
#include <QRectF>
#include <QString>
#include <QStringList>

#include "desktop/Capability.h"

namespace tarnwick {

/// A window of another program, with what every window system reports of it.
struct ClientWindow {
  quint64 id = 0;  ///< Opaque; valid while the window lives.
  QString title;
  QString applicationId;  ///< What the program calls itself: the desktop-file id it announces, or its window class.
  QString instance;       ///< The second name that X11 programs give; empty elsewhere.
  QString sandboxId;      ///< The id of the Flatpak or Snap that it runs in, where that is known.
  qint64 pid = 0;         ///< 0 where the desktop does not report it.
  bool inTaskbar = true;  ///< False for windows that ask not to be listed: docks, desktops, tool windows.
  bool active = false;
  bool minimised = false;
  bool maximised = false;  ///< In both directions.
  bool fullscreen = false;
  bool elsewhere = false;  ///< On another virtual desktop than the one that is shown.
  QStringList screens;     ///< The identities of the screens that show it.
  bool dock = false;       ///< A bar or dock of the desktop.
  bool desktop = false;    ///< The desktop's own ground, or another part of it that is no window to people.
  /// Of a full-screen window or a dock, and of every window while frames are watched: with its title bar, without its
  /// shadow, in desktop coordinates. Empty for all others, and where the desktop does not tell.
  QRectF frame;
  bool urgent = false;  ///< Asks for attention.
  // Whether the window system would do it; true where that is not told.
  bool closable = true;
  bool minimisable = true;

  bool operator==(const ClientWindow&) const = default;
};

/// The windows of other programs, oldest first.
class ClientWindows : public QObject {
  Q_OBJECT
 public:
  /// Whether the desktop reports windows at all.
  virtual Capability capability() const { return Capability::yes(); }
  /// Whether it reports which windows are on another virtual desktop.
  virtual Capability workspaces() const { return capability(); }
  /// Whether it tells where windows are, and which are maximised.
  virtual Capability frames() const { return capability(); }
  /// Whether it tells which windows ask for attention.
  virtual Capability attention() const { return capability(); }
  /// Whether other programs may move them.
  virtual Capability moves() const;
  /// Whether small pictures of them can be had.
  virtual Capability pictures() const;
  virtual QList<ClientWindow> all() const = 0;
  /// Whether `ClientWindow::frame` is given for every window, or only for full-screen windows and docks, as it is until
  /// this is called. What is known of them is in the list when this returns; nothing is emitted for it.
  virtual void watchFrames(bool) {}
  virtual void activate(quint64 id) = 0;
  virtual void close(quint64 id) = 0;
  virtual void minimise(quint64 id) = 0;
  /// Sets where these windows are seen to go when minimised: the tile of their application, in desktop coordinates.
  virtual void setIconGeometry(const QList<quint64>& windows, const QRectF& tile) = 0;

 Q_SIGNALS:
  /// A window came or went, or a title, state or class changed. Emitted once for a burst of changes.
  void changed();
  /// Nothing changed but where windows are.
  void framesChanged();

 protected:
  /// Takes the windows that were found in place of those that were known, and emits what that changes.
  void replace(QList<ClientWindow>& known, const QList<ClientWindow>& found);
};

}  // namespace tarnwick
