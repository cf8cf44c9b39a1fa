#pragma once

#include <xcb/xcb.h>

#include <QObject>
#include <QPoint>
#include <QPointF>
#include <memory>
#include <optional>

namespace tarnwick {

class X11Events;

/// What the pointer does anywhere on the display, whatever window it is over and whichever program holds a grab. The
/// server is asked to send nothing while there is no listener. It belongs to the events, which must outlive every
/// subscription.
class X11RawInput final : public QObject {
  Q_OBJECT
 public:
  struct Pointer {
    QPoint place;  ///< Root pixels.
    bool hasButton = false;
    quint64 question = 0;  ///< Which one this answers.
  };
  /// Listening goes on for as long as one of these is kept.
  using Subscription = std::shared_ptr<void>;

  /// `opcode`: the number of XInput, none on a server without it, where nothing ever arrives.
  X11RawInput(X11Events& events, std::optional<quint8> opcode);
  ~X11RawInput() override;

  Subscription subscribeToMotion() { return subscribe(motionSubscribers_); }
  Subscription subscribeToButtons() { return subscribe(buttonSubscribers_); }

  /// Asks where the pointer is without waiting; `answered` follows, with the number that is given here or a greater
  /// one. At most one question is open; what is asked meanwhile is answered by one more.
  quint64 ask();
  /// Waits for the server.
  Pointer read() const;

  /// Takes what Qt has no use for; called by the events.
  void handle(const xcb_generic_event_t* event);

 Q_SIGNALS:
  /// Where to, the server does not say. `way`: what the device reports; of a mouse, pixels.
  void moved(quint16 device, const QPointF& way);
  /// A button other than the wheel. `time`: the server's.
  void buttonChanged(bool isDown, quint32 time);
  void answered(const tarnwick::X11RawInput::Pointer& pointer);

 private:
  Subscription subscribe(int& count);
  void select() const;
  void finish();

  X11Events& events_;
  std::optional<quint8> opcode_;
  xcb_window_t mark_ = XCB_WINDOW_NONE;  ///< Never shown; takes the message that follows an answer.
  int motionSubscribers_ = 0;
  int buttonSubscribers_ = 0;
  std::optional<xcb_query_pointer_cookie_t> question_;
  quint64 number_ = 0;  ///< Of the latest question.
  bool asksAgain_ = false;
};

}  // namespace tarnwick
