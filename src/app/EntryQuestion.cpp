#include "app/EntryQuestion.h"

#include <QCoreApplication>
#include <QPushButton>

namespace tarnwick {
namespace {

struct EntryWords {
  Q_DECLARE_TR_FUNCTIONS(EntryQuestion)
};

}  // namespace

EntryQuestion::~EntryQuestion() { delete box_; }

void EntryQuestion::ask(const ForeignEntry& entry, const QString& action, std::function<void()> run,
                        std::function<void()> show) {
  delete box_;
  box_ = new QMessageBox(QMessageBox::Question, EntryWords::tr("Run This App?"),
                         EntryWords::tr("“%1” is not one of the installed apps. Run it only "
                                        "if you know where it comes from.")
                             .arg(entry.entry.name));
  // Whoever wrote the file must not dress the question.
  box_->setTextFormat(Qt::PlainText);
  box_->setInformativeText(EntryWords::tr("File: %1\nCommand: %2").arg(entry.path, entry.commandLine(action)));
  box_->setAttribute(Qt::WA_DeleteOnClose);
  const QPushButton* runs = box_->addButton(EntryWords::tr("Run"), QMessageBox::AcceptRole);
  QPushButton* shows = box_->addButton(EntryWords::tr("Show in Files"), QMessageBox::ActionRole);
  box_->addButton(QMessageBox::Cancel);
  box_->setDefaultButton(shows);
  QObject::connect(runs, &QPushButton::clicked, box_, [run = std::move(run)] { run(); });
  QObject::connect(shows, &QPushButton::clicked, box_, [show = std::move(show)] { show(); });
  box_->open();
}

}  // namespace tarnwick
