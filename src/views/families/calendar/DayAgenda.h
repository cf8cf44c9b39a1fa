#pragma once

#include <functional>

#include "views/families/calendar/AgendaRow.h"
#include "views/panels/RowList.h"
#include "views/tiles/TileSources.h"

namespace tarnwick {

class Commands;

/// The events of one day, below each other, with buttons that join meetings.
class DayAgenda final : public QWidget {
 public:
  /// `commands` opens the links of meetings and outlives this. Of a full day `most` events are shown, those to come
  /// first.
  DayAgenda(Commands& commands, qsizetype most);

  void showDay(const QDate& day, const CalendarDigest& digest, const TileSources& sources);
  /// How many events the day has, and how many of them are shown.
  qsizetype all() const { return all_; }
  qsizetype shown() const { return shown_.size(); }

 private:
  /// One event on one of the days that it touches.
  struct Occasion {
    AgendaRow::Words words;
    QString link;
    bool next = false;
    bool operator==(const Occasion&) const = default;
  };

  static QList<Occasion> occasions(const QDate& day, const CalendarDigest& digest, const TileSources& sources);
  std::function<void()> joining(const QString& link) const;

  Commands& commands_;
  qsizetype most_;
  RowList* rows_;
  qsizetype all_ = 0;
  QList<Occasion> shown_;
};

}  // namespace tarnwick
