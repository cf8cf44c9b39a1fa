#pragma once

#include <xcb/xcb.h>

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QStringList>
#include <deque>

#include "platform/x11/X11Properties.h"

namespace tarnwick {

/// A connection of the clipboard's own: what other programs do to it meets no window of ours, and the server takes this
/// program for two, so that it can paste what it copied itself. Main thread only.
class X11ClipboardLink {
 public:
  /// A property is read and written in pieces of this: each takes well under a frame, and fits into any request.
  static constexpr quint32 kPiece = 192 * 1024;

  /// To the display that DISPLAY names. See isOpen().
  X11ClipboardLink();
  ~X11ClipboardLink();
  X11ClipboardLink(const X11ClipboardLink&) = delete;
  X11ClipboardLink& operator=(const X11ClipboardLink&) = delete;

  /// Whether the server answers, and tells who owns a selection.
  bool isOpen() const;
  xcb_connection_t* connection() const { return connection_; }
  /// The window that owns what we put on the clipboard.
  xcb_window_t window() const { return window_; }
  xcb_atom_t clipboard() const { return clipboard_; }
  /// The first number of the events that tell of selections.
  int fixesEvent() const { return fixesEvent_; }

  xcb_atom_t atom(const QByteArray& name);
  /// In one round trip; one without a name is left out.
  QStringList names(const QList<quint32>& atoms);

  /// A window that is seen nowhere, with news of its properties.
  xcb_window_t makeWindow() const;
  /// Whether a window is one of these.
  bool made(xcb_window_t window) const;
  xcb_window_t owner(xcb_atom_t selection) const;
  /// The process of this machine that made a window; 0 where the server does not tell.
  qint64 processOf(xcb_window_t window) const;

  /// The next event that has arrived, or null.
  XcbReply<xcb_generic_event_t> next();
  /// Whether the news that the clipboard has another owner has arrived and was not handled yet.
  bool hasNewsOfOwner();
  void flush() const { xcb_flush(connection_); }

 private:
  xcb_connection_t* connection_;
  const xcb_screen_t* screen_ = nullptr;
  xcb_window_t window_ = XCB_WINDOW_NONE;
  xcb_atom_t clipboard_ = XCB_ATOM_NONE;
  int fixesEvent_ = 0;
  bool tellsProcesses_ = false;
  QHash<QByteArray, xcb_atom_t> atoms_;
  QHash<xcb_atom_t, QString> names_;
  std::deque<XcbReply<xcb_generic_event_t>> waiting_;
};

}  // namespace tarnwick
