#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

namespace tarnwick {

/// A window of another program, as far as every window system tells it.
struct ClientWindow {
  quint64 id = 0;  ///< Opaque; valid while the window lives.
  QString title;
  QString applicationId;  ///< What the program calls itself: the desktop-file id it announces, or its window class.
  QString instance;       ///< The second name that X11 programs give; empty elsewhere.
  QString sandboxId;      ///< The id of the Flatpak or Snap that it runs in, where that is known.
  qint64 pid = 0;         ///< 0 where the desktop does not tell.
  bool inTaskbar = true;  ///< False for windows that ask not to be listed: docks, desktops, tool windows.
  bool active = false;
  bool minimised = false;
  bool fullscreen = false;
  QStringList screens;  ///< The identities of the screens that show it.

  bool operator==(const ClientWindow&) const = default;
};

/// The windows of other programs, oldest first.
class ClientWindows : public QObject {
  Q_OBJECT
 public:
  virtual QList<ClientWindow> all() const = 0;
  virtual void activate(quint64 id) = 0;
  virtual void close(quint64 id) = 0;
  virtual void minimise(quint64 id) = 0;

 Q_SIGNALS:
  /// A window came or went, or a title, state or class changed. Emitted once for a burst of changes.
  void changed();
};

}  // namespace tarnwick
