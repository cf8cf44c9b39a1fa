#pragma once

#include <QHash>
#include <QObject>
#include <QPointF>
#include <QRegion>
#include <QString>
#include <optional>

namespace tarnwick {

/// What our own panels see of the pointer. The compositor reports it nowhere else. Desktop coordinates.
class PanelPointer final : public QObject {
  Q_OBJECT
 public:
  /// Where a panel takes clicks now; empty where it takes none.
  void setArea(const QObject* panel, const QRegion& area);
  /// Where all of them do.
  QRegion area() const;

  void setPlace(const QObject* panel, const std::optional<QPointF>& place);
  /// The pointer's place over a panel; nothing while it is elsewhere.
  std::optional<QPointF> place() const;
  void setDragging(const QObject* panel, bool isDragging);
  bool isDragging() const;
  void press(const QPointF& place) { Q_EMIT pressed(place); }

  void forget(const QObject* panel);
  /// No event will say that the pointer left.
  void forgetPointer();

 Q_SIGNALS:
  void areaChanged();
  void placeChanged();
  void draggingChanged();
  void pressed(const QPointF& place);

 private:
  struct Known {
    QRegion area;
    std::optional<QPointF> place;
    bool isDragging = false;
  };
  QHash<const QObject*, Known> panels_;
};

}  // namespace tarnwick
