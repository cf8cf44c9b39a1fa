#include "views/families/calendar/ReminderRow.h"

#include "views/controls/PlainTip.h"
#include "views/controls/Rows.h"
#include "views/panels/PanelWords.h"

namespace tarnwick {

QWidget* makeReminderRow(const Reminder& reminder, const QString& when, bool parted,
                         const std::function<void(const Reminder& reminder, bool done)>& complete) {
  if (!reminder.canComplete || !complete) {
    auto* row = new ListRow(reminder.title);
    row->setValue(when, Tone::Secondary);
    row->setParted(parted);
    setPlainTip(*row, PanelWords::tr("“%1” cannot be changed here.").arg(reminder.calendar));
    return row;
  }
  auto* row = new CheckRow(reminder.title);
  row->setValue(when);
  row->setChecked(reminder.completed);
  row->setParted(parted);
  QObject::connect(row, &QAbstractButton::clicked, row, [complete, reminder](bool done) { complete(reminder, done); });
  return row;
}

}  // namespace tarnwick
