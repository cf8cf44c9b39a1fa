#pragma once

#include <QList>
#include <QString>

namespace tarnwick {

/// What ended since it was last shown, as one message: everything is included, and what says the same is combined.
class Announcements {
 public:
  /// `name` is empty for what has none of its own.
  void add(const QString& name, const QString& sentence);
  void clear() { lines_.clear(); }
  /// "Your timer is finished. Tea, Eggs (2): Your timer is finished."
  QString text() const;

 private:
  struct Ended {
    QString name;
    int times = 1;
  };
  /// Those with names stand apart from those without.
  struct Line {
    QString sentence;
    bool isNamed = false;
    QList<Ended> ended;
  };

  QList<Line> lines_;
};

}  // namespace tarnwick
