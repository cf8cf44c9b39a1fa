#pragma once

#include <xcb/xcb.h>

#include <QAbstractNativeEventFilter>
#include <QList>
#include <QObject>
#include <QSet>
#include <array>
#include <optional>

#include "platform/x11/X11Atoms.h"
#include "platform/x11/X11MapRetry.h"
#include "platform/x11/X11RawInput.h"
#include "platform/x11/X11Server.h"

namespace tarnwick {

/// What all adapters for X11 share: Qt's own connection to the server, the names, and the events that Qt has no use
/// for, as signals. Made once, after the application object; outlives the adapters. Main thread only.
class X11Events final : public QObject, public QAbstractNativeEventFilter {
  Q_OBJECT
 public:
  /// Whether the running application object speaks X11.
  static bool isAvailable();
  /// Whether the server that DISPLAY names takes connections; needs no application object.
  static bool serverAnswers();

  /// Fails (DomainError) where isAvailable() is false.
  X11Events();
  ~X11Events() override;

  xcb_connection_t* connection() const { return connection_; }
  xcb_window_t root() const { return screen_->root; }
  xcb_atom_t atom(X11Atom name) const { return atoms_[name]; }
  /// Whether a window was made by this program.
  bool isOurs(xcb_window_t window) const;
  /// The server's time of the latest thing that the user did to a window of ours; 0 if nothing yet.
  xcb_timestamp_t userTime() const { return userTime_; }

  /// The windows that the window manager looks after, oldest first, ours included. From then on the signals below tell
  /// of the others' changes, but not of their moves.
  QList<xcb_window_t> watchClients();
  /// Whether `windowMoved` tells of a window of another program that is watched.
  void watchMoves(xcb_window_t window, bool watched) const;
  /// Asks the window manager for something about `window`.
  void askManager(xcb_window_t window, X11Atom request, const std::array<quint32, 5>& data) const {
    server().askManager(window, request, data);
  }
  X11Server server() const { return {connection_, screen_->root, atoms_}; }

  /// Says whether `selectionOwnerChanged` is emitted for this selection.
  void watchSelection(X11Atom selection, bool watched) const;
  bool hasKeyboardExtension() const { return keyboard_.has_value(); }
  X11RawInput& rawInput() { return *rawInput_; }

  bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;

 Q_SIGNALS:
  void rootPropertyChanged(quint32 atom);
  void windowPropertyChanged(quint32 window, quint32 atom);
  void windowMoved(quint32 window);
  /// The pointer came into a window of ours or left it, or a button went down on it, that selected these events.
  void pointerEntered(quint32 window);
  void pointerLeft(quint32 window);
  void buttonPressed(quint32 window);
  /// A window of ours came onto the screen: the window manager knows it now.
  void windowMapped(quint32 window);
  void displaysChanged();
  /// A key that is grabbed on the root window. It repeats while the user keeps it down.
  void keyPressed(quint8 code, quint16 state, bool isRepeat);
  void keyReleased(quint8 code);
  /// What the keys mean changed: another layout, other modifiers, another keyboard, another group of the layout.
  void keyboardChanged();
  /// Other modifier keys are down than before, as the server's own mask. Locks and sticky keys do not count.
  void modifiersHeld(quint8 modifiers);
  void compositorChanged(bool isPresent);
  /// `owner` is none while no program has it.
  void selectionOwnerChanged(quint32 selection, quint32 owner);

 private:
  struct Release {
    quint8 code;
    xcb_timestamp_t time;

    bool operator==(const Release&) const = default;
  };
  struct Extension {
    quint8 opcode = 0;
    quint8 firstEvent = 0;
  };

  std::optional<Extension> extension(const char* name) const;
  void selectEvents() const;
  void handleKeyboardExtension(const xcb_generic_event_t* event);
  void handleOwnerChange(const xcb_generic_event_t* event);
  void noteUserTime(const xcb_generic_event_t* event);

  xcb_connection_t* connection_;
  const xcb_screen_t* screen_;
  X11Atoms atoms_;
  std::optional<Extension> randr_;
  std::optional<Extension> fixes_;
  std::optional<Extension> input_;
  std::optional<Extension> keyboard_;
  std::unique_ptr<X11RawInput> rawInput_;
  std::unique_ptr<X11MapRetry> mapRetry_;
  QSet<xcb_window_t> watched_;
  xcb_timestamp_t userTime_ = XCB_CURRENT_TIME;
  std::optional<Release> lastRelease_;  ///< If the latest event was one.
  int group_ = -1;
  quint8 modifiers_ = 0;
};

}  // namespace tarnwick
