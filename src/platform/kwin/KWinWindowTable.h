#pragma once

#include <QHash>
#include <QRectF>
#include <QString>
#include <chrono>
#include <mutex>

namespace tarnwick {

/// What KWin's other interfaces are asked with and told of the windows that it lists: its own names for them, and where
/// those stood that it moved when something of a display was reserved. Any thread.
class KWinWindowTable {
 public:
  void insert(quint64 window, const QString& id);
  void remove(quint64 window);
  void setFrame(quint64 window, const QRectF& frame);
  /// KWin is about to learn that something of a display is reserved: what it moves soon after stands elsewhere now.
  void keepPlaces();

  /// KWin's name for it; empty for one that is gone, and where this KWin does not tell.
  QString idOf(quint64 window) const;
  /// Where the window of that name stood before KWin moved it for what was reserved; empty where it did not.
  QRectF before(const QString& id) const;

 private:
  /// For what is reserved to be known to KWin, and for us to hear what it moved.
  static constexpr std::chrono::seconds kSoon{5};

  struct Window {
    QString id;
    QRectF frame;
    QRectF before;
  };

  mutable std::mutex mutex_;
  QHash<quint64, Window> windows_;
  std::chrono::steady_clock::time_point kept_;
};

}  // namespace tarnwick
