#include "app/EntryQuestion.h"

#include <QCoreApplication>
#include <QLabel>
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
                             .arg(entry.shownName()));
  box_->setInformativeText(entry.facts(action));
  // Whoever wrote the file must not dress the question: the box sets the format of one of its labels only.
  for (QLabel* label : box_->findChildren<QLabel*>()) label->setTextFormat(Qt::PlainText);
  box_->setAttribute(Qt::WA_DeleteOnClose);
  QPushButton* runs = box_->addButton(EntryWords::tr("Run"), QMessageBox::AcceptRole);
  QPushButton* shows = box_->addButton(EntryWords::tr("Show in Files"), QMessageBox::RejectRole);
  box_->setDefaultButton(shows);
  box_->setEscapeButton(shows);
  QObject::connect(box_, &QMessageBox::finished, box_,
                   [box = box_.data(), runs, run = std::move(run), show = std::move(show)] {
                     box->clickedButton() == runs ? run() : show();
                   });
  box_->open();
}

}  // namespace tarnwick
