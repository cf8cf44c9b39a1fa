#include "platform/x11/X11Events.h"

#include <xcb/randr.h>
#include <xcb/xfixes.h>

#include <QtGui/qguiapplication_platform.h>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QWindow>
#include <cstring>
#include <utility>

#include "base/DomainError.h"
#include "platform/x11/X11Properties.h"

namespace tarnwick {
namespace {

struct X11EventsWords {
  Q_DECLARE_TR_FUNCTIONS(X11)
};

// Of the keyboard extension and of XInput 2. Their C headers are no valid C++, or not needed for a number each.
constexpr quint8 kNewKeyboardNotify = 0;
constexpr quint8 kMapNotify = 1;
constexpr quint8 kStateNotify = 2;
constexpr std::size_t kStateNotifyBaseModifiers = 10;
constexpr std::size_t kStateNotifyGroup = 13;
constexpr quint16 kFirstInputEvent = 2;   // key press
constexpr quint16 kLastButtonEvent = 5;   // button release
constexpr quint16 kFirstTouchEvent = 18;  // touch begin
constexpr quint16 kLastTouchEvent = 20;   // touch end

/// A window of ours that another program destroyed: the toolkit takes no notice, and would never show it again. What
/// has no frame belongs to the adapters.
void closeLost(xcb_window_t id) {
  for (QWindow* window : QGuiApplication::topLevelWindows())
    if (window->handle() && window->winId() == id && !window->flags().testFlag(Qt::FramelessWindowHint))
      QMetaObject::invokeMethod(
          window, [window] { window->close(); }, Qt::QueuedConnection);
}

QNativeInterface::QX11Application* native() {
  return qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
}

xcb_connection_t* openConnection() {
  if (!X11Events::isAvailable()) {
    throw DomainError::invalid(X11EventsWords::tr("No X11 display is available."));
  }
  return native()->connection();
}

int screenNumber() {
  char* host = nullptr;
  int display = 0;
  int number = 0;
  if (!xcb_parse_display(nullptr, &host, &display, &number)) return 0;
  std::free(host);
  return number;
}

const xcb_screen_t* screenOf(xcb_connection_t* connection, int number) {
  xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
  while (number-- > 0 && screens.rem > 1) xcb_screen_next(&screens);
  return screens.data;
}

template <typename Event>
const Event* as(const xcb_generic_event_t* event) {
  return reinterpret_cast<const Event*>(event);
}

}  // namespace

bool X11Events::isAvailable() {
  const auto* application = native();
  return application && application->connection();
}

bool X11Events::serverAnswers() {
  xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
  const bool answers = connection && xcb_connection_has_error(connection) == 0;
  xcb_disconnect(connection);
  return answers;
}

X11Events::X11Events()
    : connection_(openConnection()),
      screen_(screenOf(connection_, screenNumber())),
      atoms_(connection_, screenNumber()),
      randr_(extension("RANDR")),
      fixes_(extension("XFIXES")),
      input_(extension("XInputExtension")),
      keyboard_(extension("XKEYBOARD")) {
  rawInput_ = std::make_unique<X11RawInput>(*this, input_ ? std::optional(input_->opcode) : std::nullopt);
  mapRetry_ = std::make_unique<X11MapRetry>(*this);
  selectEvents();
  QCoreApplication::instance()->installNativeEventFilter(this);
}

X11Events::~X11Events() {
  if (QCoreApplication::instance()) QCoreApplication::instance()->removeNativeEventFilter(this);
}

std::optional<X11Events::Extension> X11Events::extension(const char* name) const {
  const auto cookie = xcb_query_extension(connection_, static_cast<quint16>(std::strlen(name)), name);
  const XcbReply reply(xcb_query_extension_reply(connection_, cookie, nullptr));
  if (!reply || !reply->present) return std::nullopt;
  return Extension{reply->major_opcode, reply->first_event};
}

void X11Events::selectEvents() const {
  // The mask is one per client, and Qt's events come over the same connection: ours are added to what it selected.
  const auto cookie = xcb_get_window_attributes(connection_, root());
  if (const XcbReply reply(xcb_get_window_attributes_reply(connection_, cookie, nullptr)); reply) {
    const quint32 mask = reply->your_event_mask | XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection_, root(), XCB_CW_EVENT_MASK, &mask);
  }
  if (fixes_) xcb_discard_reply(connection_, xcb_xfixes_query_version(connection_, 4, 0).sequence);
  watchSelection(X11Atom::CompositorSelection, true);
}

void X11Events::watchSelection(X11Atom selection, bool watched) const {
  if (!fixes_) return;
  constexpr quint32 kAll = XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                           XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                           XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE;
  xcb_xfixes_select_selection_input(connection_, root(), atom(selection), watched ? kAll : 0);
  xcb_flush(connection_);
}

bool X11Events::isOurs(xcb_window_t window) const {
  const xcb_setup_t* setup = xcb_get_setup(connection_);
  return (window & ~setup->resource_id_mask) == setup->resource_id_base;
}

QList<xcb_window_t> X11Events::watchClients() {
  const QList<xcb_window_t> clients =
      PropertyRequest(connection_, root(), atom(X11Atom::NetClientList), 1 << 16).words();
  QSet<xcb_window_t> watched;
  for (const xcb_window_t window : clients) {
    if (isOurs(window)) continue;
    watched.insert(window);
    if (watched_.contains(window)) continue;
    watchMoves(window, false);
  }
  watched_ = watched;
  return clients;
}

void X11Events::watchMoves(xcb_window_t window, bool watched) const {
  const quint32 mask =
      watched ? XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY : XCB_EVENT_MASK_PROPERTY_CHANGE;
  const auto cookie = xcb_change_window_attributes_checked(connection_, window, XCB_CW_EVENT_MASK, &mask);
  xcb_discard_reply(connection_, cookie.sequence);  // It may be gone by now, which is no news.
}

bool X11Events::nativeEventFilter(const QByteArray& type, void* message, qintptr*) {
  if (type != "xcb_generic_event_t") return false;
  const auto* event = static_cast<const xcb_generic_event_t*>(message);
  noteUserTime(event);
  const std::optional<Release> released = std::exchange(lastRelease_, std::nullopt);
  const quint8 kind = event->response_type & 0x7f;
  switch (kind) {
    case XCB_PROPERTY_NOTIFY: {
      const auto* change = as<xcb_property_notify_event_t>(event);
      if (change->window == root()) {
        Q_EMIT rootPropertyChanged(change->atom);
      } else if (!isOurs(change->window)) {
        Q_EMIT windowPropertyChanged(change->window, change->atom);
      }
      return false;
    }
    case XCB_CONFIGURE_NOTIFY: {
      const auto* change = as<xcb_configure_notify_event_t>(event);
      if (change->window == root()) {
        Q_EMIT displaysChanged();
      } else if (!isOurs(change->window)) {
        Q_EMIT windowMoved(change->window);
      }
      return false;
    }
    case XCB_MAP_NOTIFY: {
      const xcb_window_t window = as<xcb_map_notify_event_t>(event)->window;
      if (isOurs(window)) Q_EMIT windowMapped(window);
      return false;
    }
    case XCB_ENTER_NOTIFY:
      Q_EMIT pointerEntered(as<xcb_enter_notify_event_t>(event)->event);
      return false;
    case XCB_LEAVE_NOTIFY:
      Q_EMIT pointerLeft(as<xcb_leave_notify_event_t>(event)->event);
      return false;
    case XCB_BUTTON_PRESS:
      Q_EMIT buttonPressed(as<xcb_button_press_event_t>(event)->event);
      return false;
    case XCB_DESTROY_NOTIFY: {
      const xcb_window_t window = as<xcb_destroy_notify_event_t>(event)->window;
      watched_.remove(window);
      closeLost(window);
      return false;
    }
    case XCB_KEY_PRESS: {
      const auto* key = as<xcb_key_press_event_t>(event);
      // The server makes a repetition of a release and a press at one moment, with nothing between them.
      if (key->event == root()) Q_EMIT keyPressed(key->detail, key->state, released == Release{key->detail, key->time});
      return false;
    }
    case XCB_KEY_RELEASE: {
      // On any window: a menu of ours that takes the keyboard also takes the end of the press that opened it.
      const auto* key = as<xcb_key_release_event_t>(event);
      lastRelease_ = {key->detail, key->time};
      Q_EMIT keyReleased(key->detail);
      return false;
    }
    case XCB_CLIENT_MESSAGE:
    case XCB_GE_GENERIC:
      rawInput_->handle(event);
      return false;
    case XCB_MAPPING_NOTIFY:
      Q_EMIT keyboardChanged();
      return false;
    default:
      break;
  }
  if (keyboard_ && kind == keyboard_->firstEvent) handleKeyboardExtension(event);
  if (fixes_ && kind == fixes_->firstEvent + XCB_XFIXES_SELECTION_NOTIFY) handleOwnerChange(event);
  if (randr_ &&
      (kind == randr_->firstEvent + XCB_RANDR_SCREEN_CHANGE_NOTIFY || kind == randr_->firstEvent + XCB_RANDR_NOTIFY)) {
    Q_EMIT displaysChanged();
  }
  return false;
}

void X11Events::handleKeyboardExtension(const xcb_generic_event_t* event) {
  const quint8 kind = event->pad0;
  if (kind == kNewKeyboardNotify || kind == kMapNotify) {
    Q_EMIT keyboardChanged();
  } else if (kind == kStateNotify) {
    // Qt has the server tell of every change of the state over this connection.
    const auto* bytes = reinterpret_cast<const quint8*>(event);
    const int group = bytes[kStateNotifyGroup];
    const bool isOther = group_ >= 0 && group != group_;
    group_ = group;
    if (isOther) Q_EMIT keyboardChanged();
    const quint8 modifiers = bytes[kStateNotifyBaseModifiers];
    if (std::exchange(modifiers_, modifiers) != modifiers) Q_EMIT modifiersHeld(modifiers);
  }
}

void X11Events::handleOwnerChange(const xcb_generic_event_t* event) {
  const auto* change = as<xcb_xfixes_selection_notify_event_t>(event);
  const bool isTaken = change->subtype == XCB_XFIXES_SELECTION_EVENT_SET_SELECTION_OWNER;
  const xcb_window_t owner = isTaken ? change->owner : xcb_window_t{XCB_WINDOW_NONE};
  if (change->selection == atom(X11Atom::CompositorSelection)) Q_EMIT compositorChanged(owner != XCB_WINDOW_NONE);
  Q_EMIT selectionOwnerChanged(change->selection, owner);
}

void X11Events::noteUserTime(const xcb_generic_event_t* event) {
  const quint8 kind = event->response_type & 0x7f;
  if (kind >= XCB_KEY_PRESS && kind <= XCB_BUTTON_RELEASE) {
    userTime_ = as<xcb_button_press_event_t>(event)->time;
  } else if (kind == XCB_GE_GENERIC && input_ && event->pad0 == input_->opcode) {
    struct Head {
      quint8 type, extension;
      quint16 sequence;
      quint32 length;
      quint16 kind, device;
      quint32 time;
    };
    const auto* input = as<Head>(event);
    const bool isKeyOrButton = input->kind >= kFirstInputEvent && input->kind <= kLastButtonEvent;
    const bool isTouch = input->kind >= kFirstTouchEvent && input->kind <= kLastTouchEvent;
    if (isKeyOrButton || isTouch) userTime_ = input->time;
  }
}

}  // namespace tarnwick
