#pragma once

#include <xcb/xfixes.h>

#include <QSocketNotifier>
#include <map>
#include <memory>
#include <optional>

#include "base/Scheduler.h"
#include "clipboard/ports/Pasteboard.h"
#include "platform/x11/X11ClipboardLink.h"
#include "platform/x11/X11Reading.h"
#include "platform/x11/X11Supply.h"

namespace tarnwick {

/// The selection CLIPBOARD, over a connection of its own. The server tells of every change of its owner; no request for
/// content ever reaches an owner that is not the one it was meant for, since the server does nothing else between the
/// last look at the owner and the request. The selection of the clipboard manager is never claimed.
class X11Pasteboard final : public Pasteboard {
  Q_OBJECT
 public:
  /// The scheduler must outlive this object.
  explicit X11Pasteboard(Scheduler& scheduler, QObject* parent = nullptr);
  ~X11Pasteboard() override;

  Capability capability() const override;
  quint64 changeCount() const override { return count_; }
  bool isEmpty() const override { return owner_ == XCB_WINDOW_NONE; }
  bool isOwn() const override { return !isEmpty() && owner_ == link_.window(); }
  void readTypes(quint64 change, QObject* context, Types done) override;
  void readContent(quint64 change, const QString& type, const PasteboardLimits& limits, QObject* context,
                   Content done) override;
  void confirm(quint64 change, QObject* context, Answer done) override;
  PasteboardOwner owner() override;
  quint64 set(const PasteboardOffer& offer) override;
  void clear() override;
  void handOver() override;

 private:
  void dispatch();
  /// What came along with an answer that was waited for makes the connection's descriptor ready no more.
  void dispatchLater();
  void handle(const xcb_generic_event_t& event);
  void ownerChanged(const xcb_xfixes_selection_notify_event_t& event);
  bool isCurrent(quint64 change);
  void ask(quint64 change, xcb_atom_t target, qint64 most, QObject* context, X11Reading::Done done);
  void sweep();

  Scheduler& scheduler_;
  X11ClipboardLink link_;
  std::unique_ptr<QSocketNotifier> notifier_;
  X11Supply supply_;
  std::map<xcb_window_t, std::unique_ptr<X11Reading>> readings_;
  xcb_window_t owner_ = XCB_WINDOW_NONE;
  quint64 count_ = 0;
  int unseenClaims_ = 0;  ///< Times that we took the clipboard and have not heard back of.
  bool isDispatching_ = false;
  std::optional<bool> isSaved_;  ///< The clipboard manager's answer.
};

}  // namespace tarnwick
