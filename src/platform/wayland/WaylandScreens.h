#pragma once

#include <QHash>
#include <QPointer>
#include <QScreen>
#include <map>
#include <memory>

#include "desktop/Panels.h"
#include "desktop/Screens.h"
#include "platform/wayland/UsableProbe.h"

namespace tarnwick {

/// The displays as Qt lays them out, distinguished by what the kernel knows of the monitors, less the bars of other
/// programs. The main display is the first that the compositor names. The session must outlive it.
class WaylandScreens final : public Screens {
  Q_OBJECT
 public:
  explicit WaylandScreens(const WaylandSession& session);
  ~WaylandScreens() override;

  QList<Screen> all() const override { return screens_; }
  QString mainId() const override { return screens_.isEmpty() ? QString() : screens_.first().id; }
  bool placesWindows() const override { return true; }
  QString activeId() const override;

  /// The display of that identity; null if it is not connected.
  QScreen* native(const QString& id) const { return natives_.value(id); }
  /// The display with that identity, or an empty one.
  Screen screen(const QString& id) const;
  /// The identity of a display; empty for one that is gone.
  QString idOf(const QScreen* screen) const;
  QString idOf(const wl_output* output) const;
  /// We keep so much of a display free ourselves, beside what others do; it is left out of what is usable.
  void noteReservation(const QString& id, Edge edge, int zone);

 Q_SIGNALS:
  /// We are about to keep more or less of a display free.
  void reserving();

 private:
  struct Kept {
    int top = 0;
    int bottom = 0;

    bool operator==(const Kept&) const = default;
  };

  void follow(QScreen* screen);
  void forget(QScreen* screen);
  void publishLater();
  void publish();

  const WaylandSession& session_;
  std::map<QScreen*, std::unique_ptr<UsableProbe>> probes_;
  QHash<QString, Kept> kept_;
  QList<Screen> screens_;
  QHash<QString, QPointer<QScreen>> natives_;
  bool isPublishing_ = false;
};

}  // namespace tarnwick
