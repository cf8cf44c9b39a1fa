#pragma once

#include <QList>
#include <QRect>
#include <QSize>
#include <array>
#include <optional>

#include "desktop/Panels.h"

namespace tarnwick {

/// A strip along an edge of the root window that a bar keeps free, in root pixels. Pure rules.
struct X11Strut {
  quint32 left = 0, right = 0, top = 0, bottom = 0;  ///< Counted from the edges of the root window.
  quint32 leftStart = 0, leftEnd = 0;                ///< The stretch of each edge that is meant, both ends included.
  quint32 rightStart = 0, rightEnd = 0;
  quint32 topStart = 0, topEnd = 0;
  quint32 bottomStart = 0, bottomEnd = 0;

  /// Reads _NET_WM_STRUT_PARTIAL, or where that is empty _NET_WM_STRUT. Nothing if neither keeps anything.
  static std::optional<X11Strut> read(const QList<quint32>& partial, const QList<quint32>& plain);

  /// What keeps `thickness` pixels along one edge of the display `frame` free. Nothing where another of the `displays`
  /// adjoins there: such a strip would lie across that one.
  static std::optional<X11Strut> along(Edge edge, int thickness, const QRect& frame, const QList<QRect>& displays,
                                       const QSize& root);

  /// What is left of the display `frame`. A strip that lies across the whole display does not count.
  static QRect usable(const QRect& frame, const QList<X11Strut>& struts, const QSize& root);

  /// The values of _NET_WM_STRUT_PARTIAL; the first four are those of _NET_WM_STRUT.
  std::array<quint32, 12> words() const;

  bool operator==(const X11Strut&) const = default;
};

}  // namespace tarnwick
