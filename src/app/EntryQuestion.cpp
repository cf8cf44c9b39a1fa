#include "app/EntryQuestion.h"

#include <QCoreApplication>
#include <QPushButton>

namespace tarnwick {
namespace {

QString words(const char* text) { return QCoreApplication::translate("EntryQuestion", text); }

}  // namespace

EntryQuestion::~EntryQuestion() { delete box_; }

void EntryQuestion::ask(const ForeignEntry& entry, const QString& action, std::function<void()> run,
                        std::function<void()> show) {
  delete box_;
  box_ = new QMessageBox(QMessageBox::Question, words(QT_TRANSLATE_NOOP("EntryQuestion", "Run This App?")),
                         words(QT_TRANSLATE_NOOP("EntryQuestion", "“%1” is not one of the installed apps. Run it only "
                                                                  "if you know where it comes from."))
                             .arg(entry.entry.name));
  // Whoever wrote the file must not dress the question.
  box_->setTextFormat(Qt::PlainText);
  box_->setInformativeText(words(QT_TRANSLATE_NOOP("EntryQuestion", "File: %1\nCommand: %2"))
                               .arg(entry.path, entry.commandLine(action)));
  box_->setAttribute(Qt::WA_DeleteOnClose);
  const QPushButton* runs =
      box_->addButton(words(QT_TRANSLATE_NOOP("EntryQuestion", "Run")), QMessageBox::AcceptRole);
  QPushButton* shows =
      box_->addButton(words(QT_TRANSLATE_NOOP("EntryQuestion", "Show in Files")), QMessageBox::ActionRole);
  box_->addButton(QMessageBox::Cancel);
  box_->setDefaultButton(shows);
  QObject::connect(runs, &QPushButton::clicked, box_, [run = std::move(run)] { run(); });
  QObject::connect(shows, &QPushButton::clicked, box_, [show = std::move(show)] { show(); });
  box_->open();
}

}  // namespace tarnwick
