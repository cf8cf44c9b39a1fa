#include "platform/x11/X11Strut.h"

#include <algorithm>
#include <limits>

namespace tarnwick {
namespace {

bool overlaps(quint32 start, quint32 end, int first, int last) {
  return static_cast<qint64>(start) <= last && static_cast<qint64>(end) >= first;
}

bool isWithin(qint64 line, int first, int last) { return line > first && line <= last; }

}  // namespace

std::optional<X11Strut> X11Strut::read(const QList<quint32>& partial, const QList<quint32>& plain) {
  const QList<quint32>& words = partial.size() >= 12 ? partial : plain;
  if (words.size() < 4) return std::nullopt;
  X11Strut strut{.left = words[0], .right = words[1], .top = words[2], .bottom = words[3]};
  if (words.size() >= 12) {
    strut.leftStart = words[4], strut.leftEnd = words[5];
    strut.rightStart = words[6], strut.rightEnd = words[7];
    strut.topStart = words[8], strut.topEnd = words[9];
    strut.bottomStart = words[10], strut.bottomEnd = words[11];
  } else {
    strut.leftEnd = strut.rightEnd = strut.topEnd = strut.bottomEnd = std::numeric_limits<quint32>::max();
  }
  if (strut.left == 0 && strut.right == 0 && strut.top == 0 && strut.bottom == 0) return std::nullopt;
  return strut;
}

std::optional<X11Strut> X11Strut::along(Edge edge, int thickness, const QRect& frame, const QList<QRect>& displays,
                                        const QSize& root) {
  if (thickness <= 0) return std::nullopt;
  const bool isTop = edge == Edge::Top;
  const QRect beyond = isTop
                           ? QRect(frame.left(), 0, frame.width(), frame.top())
                           : QRect(frame.left(), frame.bottom() + 1, frame.width(), root.height() - frame.bottom() - 1);
  const bool adjoins = std::ranges::any_of(displays, [&](const QRect& other) { return other.intersects(beyond); });
  if (adjoins) return std::nullopt;

  X11Strut strut;
  const auto start = static_cast<quint32>(std::max(0, frame.left()));
  const auto end = static_cast<quint32>(std::max(0, frame.right()));
  if (isTop) {
    strut.top = static_cast<quint32>(frame.top() + thickness);
    strut.topStart = start, strut.topEnd = end;
  } else {
    strut.bottom = static_cast<quint32>(std::max(0, root.height() - frame.bottom() - 1) + thickness);
    strut.bottomStart = start, strut.bottomEnd = end;
  }
  return strut;
}

QRect X11Strut::usable(const QRect& frame, const QList<X11Strut>& struts, const QSize& root) {
  int left = frame.left(), top = frame.top(), right = frame.right(), bottom = frame.bottom();
  for (const X11Strut& strut : struts) {
    const qint64 rightLine = root.width() - static_cast<qint64>(strut.right);
    const qint64 bottomLine = root.height() - static_cast<qint64>(strut.bottom);
    if (overlaps(strut.leftStart, strut.leftEnd, frame.top(), frame.bottom()) &&
        isWithin(strut.left, frame.left(), frame.right())) {
      left = std::max(left, static_cast<int>(strut.left));
    }
    if (strut.right > 0 && overlaps(strut.rightStart, strut.rightEnd, frame.top(), frame.bottom()) &&
        isWithin(rightLine, frame.left(), frame.right())) {
      right = std::min(right, static_cast<int>(rightLine) - 1);
    }
    if (overlaps(strut.topStart, strut.topEnd, frame.left(), frame.right()) &&
        isWithin(strut.top, frame.top(), frame.bottom())) {
      top = std::max(top, static_cast<int>(strut.top));
    }
    if (strut.bottom > 0 && overlaps(strut.bottomStart, strut.bottomEnd, frame.left(), frame.right()) &&
        isWithin(bottomLine, frame.top(), frame.bottom())) {
      bottom = std::min(bottom, static_cast<int>(bottomLine) - 1);
    }
  }
  return QRect(QPoint(left, top), QPoint(std::max(left, right), std::max(top, bottom)));
}

std::array<quint32, 12> X11Strut::words() const {
  return {left, right, top, bottom, leftStart, leftEnd, rightStart, rightEnd, topStart, topEnd, bottomStart, bottomEnd};
}

}  // namespace tarnwick
