#include "views/library/SessionField.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "services/PerplexityUsage.h"
#include "views/controls/Buttons.h"
#include "views/controls/ControlTheme.h"
#include "views/controls/Labels.h"
#include "widgets/LibraryWords.h"

namespace tarnwick {

SessionField::SessionField(PerplexityUsage* session)
    : session_(session),
      signIn_(new Button(LibraryWords::tr("Sign In…"))),
      signOut_(new Button(LibraryWords::tr("Sign Out"))),
      message_(new TextLabel({}, TextStyle::Caption, Tone::Secondary)) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(theme::kRowOverhang);
  auto* row = new QHBoxLayout;
  row->setSpacing(theme::kRowOverhang);
  row->addWidget(signIn_);
  row->addWidget(signOut_);
  row->addStretch(1);
  column->addLayout(row);
  column->addWidget(message_);
  setFocusProxy(signIn_);
  message_->setWordWrap(true);
  message_->hide();
  signIn_->setEnabled(session_);
  signOut_->setEnabled(session_);
  if (!session_) return;
  connect(signIn_, &QPushButton::clicked, session_, &PerplexityUsage::showSignIn);
  connect(signOut_, &QPushButton::clicked, session_, &PerplexityUsage::signOut);
  // What was said before this form was opened is old.
  connect(session_, &PerplexityUsage::changed, this, &SessionField::showMessage);
}

void SessionField::showMessage() {
  message_->setText(session_->message());
  message_->setVisible(!session_->message().isEmpty());
}

}  // namespace tarnwick
