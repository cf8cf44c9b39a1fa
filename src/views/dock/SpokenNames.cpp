#include "views/dock/SpokenNames.h"

#include <QAccessible>
#include <QWidget>
#include <algorithm>
#include <utility>

namespace tarnwick {

namespace {

void tellReaders(QWidget& widget, QAccessible::Event what, qsizetype item = -1) {
  QAccessibleEvent event(&widget, what);
  if (item >= 0) event.setChild(static_cast<int>(item));
  QAccessible::updateAccessibility(&event);
}

}  // namespace

void SpokenNames::tell(QWidget& widget, const QStringList& names) {
  if (names == spoken_) return;
  const QStringList before = std::exchange(spoken_, names);
  if (!QAccessible::isActive()) return;
  if (names.size() != before.size()) tellReaders(widget, QAccessible::ObjectReorder);
  for (qsizetype item = 0; item < std::min(names.size(), before.size()); ++item)
    if (names[item] != before[item]) tellReaders(widget, QAccessible::NameChanged, item);
}

void SpokenNames::tellFocus(QWidget& widget, qsizetype item) { tellReaders(widget, QAccessible::Focus, item); }

}  // namespace tarnwick
