#include "views/library/HooksPart.h"

#include <QAccessible>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QVBoxLayout>
#include <utility>

#include "base/DomainError.h"
#include "views/controls/Buttons.h"
#include "views/controls/ControlTheme.h"
#include "views/controls/Labels.h"
#include "views/window/Cards.h"
#include "widgets/LibraryWords.h"

namespace tarnwick {

HooksPart::HooksPart(ClaudeActivityConnect connect, Form form, Card& card)
    : connect_(std::move(connect)),
      form_(std::move(form)),
      install_(new Button(LibraryWords::tr("Install Activity Hooks…"))),
      remove_(new Button(LibraryWords::tr("Remove Tarnwick Hooks"))),
      sentence_(makeSentence({}, TextStyle::Caption, Tone::Secondary)) {
  auto* all = new QWidget;
  auto* buttons = new QHBoxLayout;
  buttons->setSpacing(theme::kRowOverhang);
  buttons->addWidget(install_);
  buttons->addWidget(remove_);
  buttons->addStretch(1);
  auto* column = new QVBoxLayout(all);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(theme::kRowOverhang);
  column->addLayout(buttons);
  column->addWidget(sentence_);
  row_ = FormRow::wide(LibraryWords::tr("Claude Code activity"), all,
                       LibraryWords::tr("Install local hooks to show thinking, tool use and permission requests. "
                                        "Tarnwick records only a session identifier, state, tool name and time."));
  sentence_->setText(LibraryWords::tr(
      "Choose your Claude configuration folder. Tarnwick adds activity hooks to settings.json and saves "
      "a backup of existing settings."));
  card.add(row_);
  QObject::connect(install_, &QPushButton::clicked, this, &HooksPart::choose);
  QObject::connect(remove_, &QPushButton::clicked, this, &HooksPart::remove);
}

HooksPart::~HooksPart() {
  disk_.finish();
  // What was changed is known to the widget, whoever looks.
  if (running_ && running_->widget) form_.store(ClaudeActivityConnect::connected(form_.stored(), *running_->widget));
}

void HooksPart::setThere(bool there) { row_->setVisible(there); }

void HooksPart::follow(const DockWidget& stored) { remove_->setVisible(ClaudeActivityConnect::isInstalled(stored)); }

void HooksPart::choose() {
  const QString usual = ClaudeActivityConnect::usualConfiguration();
  auto* dialog = new QFileDialog(row_->window(), LibraryWords::tr("Install Hooks"),
                                 QFileInfo::exists(usual) ? usual : QFileInfo(usual).path());
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setFileMode(QFileDialog::Directory);
  dialog->setOption(QFileDialog::ShowDirsOnly);
  dialog->setFilter(dialog->filter() | QDir::Hidden);
  dialog->setLabelText(QFileDialog::Accept, LibraryWords::tr("Install Hooks"));
  QObject::connect(dialog, &QFileDialog::fileSelected, this, &HooksPart::install);
  dialog->open();
}

void HooksPart::install(const QString& configuration) {
  run([connect = connect_, widget = form_.stored(),
       configuration] { return connect.installed(widget, QDir::cleanPath(configuration)); },
      LibraryWords::tr("Hooks installed. Start a new Claude Code session."));
}

void HooksPart::remove() {
  run([connect = connect_, widget = form_.stored()] { return connect.removed(widget); },
      LibraryWords::tr("Tarnwick’s hooks were removed. Other hooks were preserved."));
}

void HooksPart::run(const std::function<DockWidget()>& change, const QString& done) {
  if (running_) return;
  running_ = std::make_shared<Outcome>();
  install_->setEnabled(false);
  remove_->setEnabled(false);
  disk_.start(
      [change, outcome = running_] {
        try {
          outcome->widget = change();
        } catch (const DomainError& failure) {
          outcome->fault = failure.message();
        }
        return true;
      },
      [this, done](bool) { take(done); });
}

void HooksPart::take(const QString& done) {
  const auto outcome = std::exchange(running_, nullptr);
  install_->setEnabled(true);
  remove_->setEnabled(true);
  if (outcome->widget) form_.store(ClaudeActivityConnect::connected(form_.stored(), *outcome->widget));
  if (!install_->hasFocus()) install_->setFocus(Qt::OtherFocusReason);
  say(outcome->widget ? done : outcome->fault, !outcome->widget);
}

void HooksPart::say(const QString& sentence, bool isFault) {
  sentence_->setTone(isFault ? Tone::Fault : Tone::Secondary);
  sentence_->setText(sentence);
  sentence_->show();
  QAccessibleEvent alert(sentence_, QAccessible::Alert);
  QAccessible::updateAccessibility(&alert);
}

}  // namespace tarnwick
