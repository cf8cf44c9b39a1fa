#pragma once

#include <QList>
#include <memory>
#include <optional>
#include <vector>

#include "base/Scheduler.h"
#include "clipboard/ports/Pasteboard.h"
#include "platform/x11/X11ClipboardLink.h"

namespace tarnwick {

/// Gives other programs what this one put on the clipboard. What is larger than a piece is given piece by piece, as
/// fast as it is taken; who stops taking is given up. The link and the scheduler must outlive it.
class X11Supply {
 public:
  X11Supply(X11ClipboardLink& link, Scheduler& scheduler) : link_(link), scheduler_(scheduler) {}
  ~X11Supply();
  X11Supply(const X11Supply&) = delete;
  X11Supply& operator=(const X11Supply&) = delete;

  /// What is given from now on; those who take something already get the rest of it.
  void offer(const PasteboardOffer& offer);
  void withdraw() { forms_.clear(); }
  bool isEmpty() const { return forms_.isEmpty(); }
  /// The server's time at which it was put there.
  void setTime(xcb_timestamp_t time) { time_ = time; }
  /// All names under which it is given.
  QList<quint32> targets() const;

  void requested(const xcb_selection_request_event_t& event);
  void propertyChanged(const xcb_property_notify_event_t& event);
  void windowGone(xcb_window_t window);

 private:
  struct Form {
    xcb_atom_t target;
    xcb_atom_t type;  ///< What the property says of itself.
    QByteArray bytes;
  };
  struct Delivery {
    xcb_window_t window;
    xcb_atom_t property;
    xcb_atom_t type;
    QByteArray bytes;
    qsizetype given = 0;
    bool hasEnded = false;
    JobHandle patience;
  };

  void add(const QByteArray& target, const QByteArray& type, const QByteArray& bytes);
  bool answer(xcb_window_t window, xcb_atom_t target, xcb_atom_t property);
  bool answerMultiple(xcb_window_t window, xcb_atom_t property);
  void give(xcb_window_t window, xcb_atom_t property, const Form& form);
  void giveNext(Delivery& delivery);
  void end(Delivery& delivery);
  void putWords(xcb_window_t window, xcb_atom_t property, xcb_atom_t type, const QList<quint32>& words);
  void sweep();

  X11ClipboardLink& link_;
  Scheduler& scheduler_;
  QList<Form> forms_;
  xcb_timestamp_t time_ = XCB_CURRENT_TIME;
  std::vector<std::unique_ptr<Delivery>> deliveries_;
};

}  // namespace tarnwick
