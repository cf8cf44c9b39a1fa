#include "app/FolderQuestion.h"

#include <QStandardPaths>

namespace tarnwick {

FolderQuestion::~FolderQuestion() { delete dialog_; }

void FolderQuestion::ask(const QString& title, std::function<void(const QString& path)> chosen) {
  if (dialog_) {
    dialog_->raise();
    dialog_->activateWindow();
    return;
  }
  dialog_ = new QFileDialog(nullptr, title, QStandardPaths::writableLocation(QStandardPaths::HomeLocation));
  dialog_->setAttribute(Qt::WA_DeleteOnClose);
  dialog_->setFileMode(QFileDialog::Directory);
  dialog_->setOption(QFileDialog::ShowDirsOnly);
  QObject::connect(dialog_, &QFileDialog::fileSelected, dialog_, [chosen = std::move(chosen)](const QString& path) {
    if (!path.isEmpty()) chosen(path);
  });
  dialog_->show();
}

}  // namespace tarnwick
