#pragma once

#include <QRectF>
#include <QString>

#include "base/RecordCodec.h"

namespace tarnwick {

/// A window of another program that was moved out of the dock's way, as the journal keeps it. Frames are those that the
/// window system has, in its own pixels.
struct WindowReservation {
  /// Two places count as one where a window manager may have rounded.
  static constexpr double kNear = 2;
  /// Seconds from 1970 to the beginning of 2001, from where files count.
  static constexpr qint64 kReferenceDate = 978'307'200;

  int pid = 0;
  /// When the process began, in hundredths of a second since 1970: with `pid` it tells a process number that is used
  /// again from the process that was there before.
  qint64 launch = 0;
  quint32 number = 0;  ///< The window system's number of the window.
  QRectF original;     ///< The frame before it was touched.
  QRectF adjusted;     ///< The frame that it was given.

  /// What one window of one process is known by.
  QString key() const;
  static bool near(const QRectF& a, const QRectF& b);

  bool operator==(const WindowReservation&) const = default;
};

/// A rectangle as two pairs: [[x, y], [width, height]].
template <>
struct JsonCodec<QRectF> {
  static QRectF decode(const QJsonValue& value, const JsonPath& path);
  static QJsonValue encode(const QRectF& value, const JsonPath& path);
};

template <>
struct JsonCodec<WindowReservation> {
  static WindowReservation decode(const QJsonValue& value, const JsonPath& path);
  static QJsonValue encode(const WindowReservation& value, const JsonPath& path);
};

}  // namespace tarnwick
