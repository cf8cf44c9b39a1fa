#include "views/panels/PanelDrafts.h"

#include <QLineEdit>
#include <utility>

#include "views/controls/Fields.h"

namespace tarnwick {

void PanelDrafts::keep(const QUuid& widget, QLineEdit& field, std::function<bool()> isUnfinished) {
  const QString name = field.accessibleName();
  if (const QString left = texts_.value(widget).value(name); !left.isEmpty()) {
    field.setText(left);
    // A search may go on or begin anew; anything else goes on.
    if (qobject_cast<SearchField*>(&field)) field.selectAll();
  }
  QObject::connect(&field, &QLineEdit::textChanged, &field,
                   [this, widget, name, isUnfinished = std::move(isUnfinished)](const QString& text) {
                     const bool stays = isUnfinished ? isUnfinished() : !text.trimmed().isEmpty();
                     if (stays)
                       texts_[widget].insert(name, text);
                     else
                       texts_[widget].remove(name);
                   });
}

}  // namespace tarnwick
