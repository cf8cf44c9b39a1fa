#include "views/families/services/ServiceAction.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "base/ForeignText.h"
#include "services/Connections.h"
#include "services/ProviderTable.h"
#include "views/controls/Buttons.h"
#include "views/controls/ControlTheme.h"
#include "views/controls/Fields.h"
#include "views/controls/WholeText.h"
#include "views/panels/PanelWords.h"

namespace tarnwick {

const ProviderAction* ServiceAction::of(const QString& kind) {
  const Provider* provider = providerFor(kind);
  const ProviderTopic* topic = provider ? provider->topic(kind) : nullptr;
  return topic && topic->action ? &*topic->action : nullptr;
}

ServiceAction::ServiceAction(const ProviderAction& action, Panel panel)
    : action_(action),
      panel_(std::move(panel)),
      text_(new TextField(action.placeholder)),
      button_(new Button(action.button)),
      sentence_(new WholeText(TextStyle::Caption, Tone::Secondary)),
      copy_(new Button(PanelWords::tr("Copy"))) {
  auto* row = new QHBoxLayout;
  row->setSpacing(theme::kRowGap);
  row->addWidget(text_, 1);
  row->addWidget(button_);
  auto* below = new QHBoxLayout;
  below->setSpacing(theme::kRowGap);
  below->addWidget(sentence_, 1);
  below->addWidget(copy_);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(theme::kRowGap);
  column->addLayout(row);
  column->addLayout(below);
  text_->setPlaceholderText(action.placeholder);
  text_->setVisible(!action.placeholder.isEmpty());
  if (action.placeholder.isEmpty()) row->addStretch(1);
  say({});
  connect(button_, &QPushButton::clicked, this, &ServiceAction::ask);
  connect(text_, &QLineEdit::returnPressed, this, &ServiceAction::ask);
  connect(text_, &QLineEdit::textEdited, this, [this] { say({}); });
  connect(copy_, &QPushButton::clicked, this, [this] { panel_.copy(result_); });
}

ServiceAction::~ServiceAction() { stop_.request_stop(); }

void ServiceAction::ask() {
  if (!button_->isEnabled()) return;
  button_->setEnabled(false);
  say({});
  tellAnswer<QString>(
      panel_.connections.act(panel_.widget(), text_->text().trimmed(), stop_.get_token()),
      [this](const ServiceAnswer<QString>& answer) { take(answer); }, stop_.get_token());
}

void ServiceAction::take(const ServiceAnswer<QString>& answer) {
  button_->setEnabled(true);
  if (!answer.value) return say(answer.sentence);
  text_->clear();
  say(*answer.value);
  result_ = *answer.value;
  copy_->setVisible(!result_.isEmpty());
  panel_.done();
}

void ServiceAction::say(const QString& sentence) {
  result_.clear();
  copy_->hide();
  sentence_->setText(ForeignText::line(sentence));
}

}  // namespace tarnwick
