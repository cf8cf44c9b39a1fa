#pragma once

#include <QObject>
#include <QPointer>
#include <functional>
#include <optional>

#include "base/Scheduler.h"
#include "clipboard/ports/ReceivedBytes.h"
#include "clipboard/ports/TransferWatch.h"
#include "platform/x11/X11ClipboardLink.h"

namespace tarnwick {

/// One conversion of a selection that was asked for, in a window of its own: an answer that comes too late finds
/// nobody. What is larger than a piece is fetched a piece at a time, and the server's answers are never waited for:
/// whoever reads the connection calls `look`. The link and the scheduler must outlive it.
class X11Reading final : public QObject {
 public:
  struct Answer {
    PasteboardContent content;
    bool isAtoms = false;  ///< The bytes are numbers of names.
  };
  using Done = std::function<void(const Answer&)>;

  /// Only prepares: `ask` sends the question. `done` is called once, and not once `context` is gone.
  X11Reading(X11ClipboardLink& link, Scheduler& scheduler, qint64 most, QObject* context, Done done);
  ~X11Reading() override;

  xcb_window_t window() const { return window_; }
  bool hasEnded() const { return hasEnded_; }
  /// In one request, which the caller flushes.
  void ask(xcb_atom_t target);
  void notified(const xcb_selection_notify_event_t& event);
  void propertyChanged(const xcb_property_notify_event_t& event);
  /// Takes a piece that has arrived. Whether there was one.
  bool look();
  /// Ends it without a result.
  void end(PasteboardContent::End why);

 private:
  enum class State { Asked, Fetching, WaitingForMore };

  void fetch();
  void take(const xcb_get_property_reply_t* reply);
  void finish(const Answer& answer);

  X11ClipboardLink& link_;
  qint64 most_;
  QPointer<QObject> context_;
  Done done_;
  xcb_window_t window_;
  xcb_atom_t property_;
  TransferWatch watch_;
  State state_ = State::Asked;
  unsigned int fetching_ = 0;  ///< The number of the request that is not answered yet; 0 where there is none.
  bool isPiecewise_ = false;   ///< The owner sends one property after the other.
  bool isAtoms_ = false;
  quint32 offset_ = 0;  ///< Of the present property, in words of four bytes.
  ReceivedBytes bytes_;
  bool hasEnded_ = false;
};

}  // namespace tarnwick
