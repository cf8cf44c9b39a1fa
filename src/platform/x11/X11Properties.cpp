#include "platform/x11/X11Properties.h"

#include <utility>

namespace tarnwick {

PropertyRequest::PropertyRequest(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t property,
                                 quint32 maxWords)
    : connection_(connection),
      cookie_(xcb_get_property(connection, 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, maxWords)) {}

PropertyRequest::PropertyRequest(PropertyRequest&& other) noexcept
    : connection_(other.connection_),
      cookie_(other.cookie_),
      isPending_(std::exchange(other.isPending_, false)),
      reply_(std::move(other.reply_)) {}

PropertyRequest::~PropertyRequest() {
  if (isPending_) xcb_discard_reply(connection_, cookie_.sequence);
}

xcb_get_property_reply_t* PropertyRequest::reply(quint8 format) {
  if (std::exchange(isPending_, false)) reply_.reset(xcb_get_property_reply(connection_, cookie_, nullptr));
  return reply_ && reply_->format == format ? reply_.get() : nullptr;
}

QList<quint32> PropertyRequest::words() {
  const xcb_get_property_reply_t* answer = reply(32);
  if (!answer) return {};
  const auto* first = static_cast<const quint32*>(xcb_get_property_value(answer));
  return QList<quint32>(first, first + answer->value_len);
}

quint32 PropertyRequest::word(quint32 fallback) {
  const QList<quint32> all = words();
  return all.isEmpty() ? fallback : all.first();
}

QByteArray PropertyRequest::bytes() {
  const xcb_get_property_reply_t* answer = reply(8);
  if (!answer) return {};
  return QByteArray(static_cast<const char*>(xcb_get_property_value(answer)),
                    static_cast<qsizetype>(answer->value_len));
}

QString PropertyRequest::text() {
  QByteArray raw = bytes();
  while (raw.endsWith('\0')) raw.chop(1);
  return reply_ && reply_->type == XCB_ATOM_STRING ? QString::fromLatin1(raw) : QString::fromUtf8(raw);
}

}  // namespace tarnwick
