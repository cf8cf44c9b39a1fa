#pragma once

#include <QHash>
#include <QRect>
#include <QString>
#include <QUuid>
#include <map>

#include "views/dock/LiveDock.h"

namespace tarnwick {

/// The contents of the docks that are on the screen, and where things are in them. Rectangles are in the coordinates of
/// a dock's content.
class LiveDocks {
 public:
  struct Dock {
    QString display;
    LiveDock* content = nullptr;  ///< Null for none.

    explicit operator bool() const { return content; }
  };

  void add(const QString& display, LiveDock& dock) { docks_[display] = &dock; }
  /// Whether it was still the one of that display.
  bool remove(const QString& display, const LiveDock* dock);

  const std::map<QString, LiveDock*>& all() const { return docks_; }
  /// Null where the display has no dock.
  LiveDock* of(const QString& display) const;
  DockView* view(const QString& display) const;
  /// The dock of this display, or the first one.
  Dock ofOrFirst(const QString& display) const;

  /// Of a dock's glass; empty where there is no dock.
  QRect glass(const QString& display) const;
  /// What belongs to a widget's tile opens beside this; empty where it has none there.
  QRect besideWidget(const QString& display, const QUuid& widget) const;
  /// The same of a running application's tile; the glass where it has none.
  QRect besideApplication(const QString& display, quint64 application) const;

 private:
  std::map<QString, LiveDock*> docks_;
};

}  // namespace tarnwick
