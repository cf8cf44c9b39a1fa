#include "views/library/CredentialField.h"

#include <QHBoxLayout>
#include <QSignalBlocker>

#include "views/controls/Buttons.h"
#include "views/controls/ControlTheme.h"
#include "views/controls/Fields.h"
#include "widgets/LibraryWords.h"

namespace tarnwick {

CredentialField::CredentialField(const EditorField& field)
    : line_(new TextField(field.label)),
      remove_(new Button(LibraryWords::tr("Remove"))),
      placeholder_(field.placeholder) {
  line_->setEchoMode(QLineEdit::Password);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(theme::kRowOverhang);
  row->addWidget(line_, 1);
  row->addWidget(remove_);
  setFocusProxy(line_);
  connect(line_, &QLineEdit::textChanged, this, [this](const QString& text) {
    // To empty the field again is to have none.
    isRemoving_ = text.isEmpty() && isKept_;
    showState();
    Q_EMIT changed();
  });
  connect(remove_, &QPushButton::clicked, this, [this] { setRemoving(!isRemoving_); });
  showState();
}

QString CredentialField::value() const { return line_->text().trimmed(); }

void CredentialField::write(DockWidget&, const QString&) const {}

void CredentialField::setFaulty(bool faulty) { line_->setFaulty(faulty); }

void CredentialField::setKept(bool kept) {
  isKept_ = kept;
  if (!kept) isRemoving_ = false;
  showState();
}

void CredentialField::setExample(const QString& example) {
  placeholder_ = example;
  showState();
}

void CredentialField::forgetTyped() {
  const QSignalBlocker quiet(line_);
  line_->clear();
  isRemoving_ = false;
  showState();
}

void CredentialField::setRemoving(bool removing) {
  {
    const QSignalBlocker quiet(line_);
    line_->clear();
  }
  isRemoving_ = removing;
  showState();
  Q_EMIT changed();
}

void CredentialField::showState() {
  remove_->setLabel(isRemoving_ ? LibraryWords::tr("Keep") : LibraryWords::tr("Remove"));
  remove_->setAccessibleName(isRemoving_ ? LibraryWords::tr("Keep the Credential")
                                         : LibraryWords::tr("Remove the Credential"));
  remove_->setVisible(isKept_ && line_->text().isEmpty());
  line_->setPlaceholderText(isKept_ && !isRemoving_ ? QStringLiteral("••••••••") : placeholder_);
}

}  // namespace tarnwick
