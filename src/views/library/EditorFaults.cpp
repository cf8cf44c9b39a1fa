// What the form says is wrong, and at which of its lines.
#include <QAccessible>
#include <algorithm>

#include "base/DomainError.h"
#include "services/ProviderTable.h"
#include "views/controls/Labels.h"
#include "views/library/CredentialPart.h"
#include "views/library/EditorWindow.h"
#include "views/library/FieldControl.h"
#include "views/library/HooksPart.h"
#include "views/library/SignInPart.h"
#include "views/library/TryPart.h"
#include "views/window/Cards.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

/// What a service would not take for one, of what was typed.
QString EditorWindow::faultOfCredential(const DockWidget& widget) const {
  const Provider* provider = connection() == value::native ? providerFor(widget.kind) : nullptr;
  const QString typed = credential_ ? credential_->typed().value_or(QString()) : QString();
  return provider && !typed.isEmpty() ? provider->credential.faultOf(typed) : QString();
}

EditorWindow::Line* EditorWindow::credentialLine() {
  const auto line =
      std::ranges::find_if(lines_, [](const auto& each) { return each->field.shape == FieldShape::Credential; });
  return line == lines_.end() ? nullptr : line->get();
}

/// The line that a failure is about: it says so, its sentence is the line's own, or it ends with the line's option.
EditorWindow::Line* EditorWindow::faultyLine(const DomainError& failure) {
  const auto* about = dynamic_cast<const OptionError*>(&failure);
  const auto isMeant = [&](const std::unique_ptr<Line>& line) {
    const EditorField& field = line->field;
    if (about) return field.key == about->key && isThere(*line);
    const QString& sentence = failure.message();
    return field.fault == sentence || (!field.key.isEmpty() && sentence.endsWith(u' ' + field.key + u'.'));
  };
  const auto line = std::ranges::find_if(lines_, isMeant);
  return line == lines_.end() ? nullptr : line->get();
}

void EditorWindow::showFault(Line* line, const QString& sentence) {
  if (line) {
    line->row->setFault(sentence);
    line->control->setFaulty(true);
    line->control->setFocus(Qt::OtherFocusReason);
    page_->reveal(line->row);
  } else {
    fault_->setText(sentence);
    fault_->show();
    QAccessibleEvent alert(fault_, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
  }
}

void EditorWindow::clearFaults() {
  fault_->hide();
  for (const auto& line : lines_) {
    line->row->setFault({});
    line->control->setFaulty(false);
  }
}

}  // namespace tarnwick
