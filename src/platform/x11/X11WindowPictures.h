#pragma once

#include <QHash>
#include <memory>

#include "platform/x11/X11OwnConnection.h"
#include "windows/ports/WindowPictures.h"

namespace tarnwick {

/// Pictures of windows on X11. A window that is held keeps what is painted in it, also under others, until `rest`; the
/// server makes it small, so that only that crosses the connection.
class X11WindowPictures final : public WindowPictures {
 public:
  /// For what others covered to be painted, in milliseconds.
  static constexpr int kRepaint = 120;

  Capability capability() override;
  void hold(const QList<quint64>& windows) override;
  QImage take(quint64 window) override;
  bool hasChanged(quint64 window) override;
  void rest() override;

 private:
  struct Kept {
    quint32 damage = 0;
    bool hasChanged = true;
  };
  struct Formats {
    quint32 through = 0;  ///< Of pictures with see-through parts.
    QHash<xcb_visualid_t, quint32> ofVisuals;
  };

  X11OwnConnection* connection();
  bool prepare(const X11OwnConnection& server);
  void letGo(const X11OwnConnection& server, xcb_window_t window);
  void note(const xcb_generic_event_t& event);
  QImage scaled(const X11OwnConnection& server, xcb_window_t window, const xcb_get_geometry_reply_t& geometry,
                xcb_visualid_t visual) const;

  std::unique_ptr<X11OwnConnection> connection_;
  bool isAble_ = false;
  quint8 firstDamage_ = 0;
  Formats formats_;
  QHash<xcb_window_t, Kept> kept_;
};

}  // namespace tarnwick
