#include "platform/x11/X11Tray.h"

#include <QGuiApplication>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace tarnwick {
namespace {

struct Free {
  void operator()(void* reply) const { std::free(reply); }
};
template <class T>
using Reply = std::unique_ptr<T, Free>;

xcb_atom_t atom(xcb_connection_t* connection, const char* name) {
  const auto cookie = xcb_intern_atom(connection, 0, static_cast<quint16>(std::strlen(name)), name);
  const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection, cookie, nullptr));
  return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

}  // namespace

void X11Tray::look() {
  if (!connection_) listen();
  isThere() ? Q_EMIT found() : Q_EMIT missing();
}

void X11Tray::listen() {
  const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  if (!x11) return;
  connection_ = x11->connection();
  selection_ = atom(connection_, "_NET_SYSTEM_TRAY_S0");
  manager_ = atom(connection_, "MANAGER");
  QCoreApplication::instance()->installNativeEventFilter(this);
}

X11Tray::~X11Tray() {
  if (connection_) QCoreApplication::instance()->removeNativeEventFilter(this);
}

bool X11Tray::isThere() const {
  if (!connection_) return false;
  const auto cookie = xcb_get_selection_owner(connection_, selection_);
  const Reply<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(connection_, cookie, nullptr));
  return owner && owner->owner != XCB_WINDOW_NONE;
}

bool X11Tray::nativeEventFilter(const QByteArray&, void* message, qintptr*) {
  const auto* event = static_cast<const xcb_client_message_event_t*>(message);
  const bool announces = (event->response_type & 0x7f) == XCB_CLIENT_MESSAGE && event->type == manager_ &&
                         event->data.data32[1] == selection_;
  if (announces) QMetaObject::invokeMethod(this, &X11Tray::found, Qt::QueuedConnection);
  return false;
}

}  // namespace tarnwick
