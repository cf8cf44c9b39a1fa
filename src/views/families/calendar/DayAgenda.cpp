#include "views/families/calendar/DayAgenda.h"

#include <algorithm>

#include "base/ForeignText.h"
#include "store/Commands.h"
#include "views/families/calendar/EventWords.h"
#include "views/panels/PanelWords.h"

namespace tarnwick {

DayAgenda::DayAgenda(Commands& commands, qsizetype most) : commands_(commands), most_(most), rows_(new RowList) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(rows_);
}

QList<DayAgenda::Occasion> DayAgenda::occasions(const QDate& day, const CalendarDigest& digest,
                                                const TileSources& sources) {
  QList<Occasion> found;
  for (const CalendarEvent& event : CalendarModel::onDay(digest.events, day)) {
    Occasion occasion;
    occasion.words = {event.allDay ? PanelWords::tr("All day") : EventWords::time(event.start, sources),
                      event.allDay || event.end <= event.start ? QString() : EventWords::time(event.end, sources),
                      event.title,
                      ForeignText::line(event.location),
                      event.colour,
                      event.end < sources.now && day <= sources.now.date()};
    if (!occasion.words.past) occasion.link = event.meetingLink;
    occasion.next = digest.nextMeeting && *digest.nextMeeting == event;
    found << occasion;
  }
  return found;
}

void DayAgenda::showDay(const QDate& day, const CalendarDigest& digest, const TileSources& sources) {
  QList<Occasion> wanted = occasions(day, digest, sources);
  all_ = wanted.size();
  while (wanted.size() > most_ && wanted.first().words.past) wanted.removeFirst();
  wanted.resize(std::min(wanted.size(), most_));
  if (wanted == shown_) return;
  shown_ = wanted;
  double column = 0;
  for (const Occasion& occasion : wanted) column = std::max(column, AgendaRow::columnOf(occasion.words));
  QList<QWidget*> rows;
  for (const Occasion& occasion : wanted) {
    auto* row = new AgendaRow(occasion.words, column, joining(occasion.link), occasion.next);
    row->setParted(!rows.isEmpty());
    rows << row;
  }
  rows_->setRows(rows);
}

std::function<void()> DayAgenda::joining(const QString& link) const {
  if (link.isEmpty()) return {};
  return [&commands = commands_, url = QUrl(link)] { commands.openUrl(url); };
}

}  // namespace tarnwick
