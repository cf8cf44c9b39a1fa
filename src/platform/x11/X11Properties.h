#pragma once

#include <xcb/xcb.h>

#include <QByteArray>
#include <QList>
#include <QString>
#include <cstdlib>
#include <memory>

namespace tarnwick {

/// What stands for a desktop's number in a window that is on all of them.
constexpr quint32 kAllDesktops = 0xFFFFFFFF;

struct XcbFree {
  void operator()(void* memory) const { std::free(memory); }
};

/// A reply or an error of the server, null if there is none.
template <typename T>
struct XcbReply : std::unique_ptr<T, XcbFree> {
  explicit XcbReply(T* reply) : std::unique_ptr<T, XcbFree>(reply) {}
};

/// A property that has been asked for and may be read later, so that many questions cost one round trip.
/// A window that is gone reads as one without the property. The connection must outlive it.
class PropertyRequest {
 public:
  PropertyRequest(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t property, quint32 maxWords = 1024);
  PropertyRequest(PropertyRequest&& other) noexcept;
  PropertyRequest& operator=(PropertyRequest&&) = delete;
  ~PropertyRequest();

  /// Waits for the answer: 32-bit values (cardinals, windows, atoms), or none.
  QList<quint32> words();
  /// The first of them, or `fallback`.
  quint32 word(quint32 fallback = 0);
  /// The raw bytes of an 8-bit property, or none.
  QByteArray bytes();
  /// A text: Latin-1 if the property says that it is a STRING, else UTF-8.
  QString text();

 private:
  xcb_get_property_reply_t* reply(quint8 format);

  xcb_connection_t* connection_;
  xcb_get_property_cookie_t cookie_;
  bool isPending_ = true;
  XcbReply<xcb_get_property_reply_t> reply_{nullptr};
};

}  // namespace tarnwick
