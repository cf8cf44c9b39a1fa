#include "app/FolderQuestion.h"

#include <QImageReader>

#include "views/dock/DockWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

FolderQuestion::~FolderQuestion() { delete dialog_; }

void FolderQuestion::ask(const QString& title, std::function<void(const QString& path)> chosen) {
  const auto forFolders = [](QFileDialog& dialog) {
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
  };
  open(title, QStandardPaths::HomeLocation, forFolders, std::move(chosen));
}

void FolderQuestion::askPicture(const QString& title, std::function<void(const QString& path)> chosen) {
  const auto forPictures = [](QFileDialog& dialog) {
    QString patterns;
    for (const QByteArray& format : QImageReader::supportedImageFormats())
      patterns += u" *."_s + QString::fromLatin1(format);
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setNameFilter(DockWords::tr("Pictures") + u" ("_s + patterns.trimmed() + u')');
  };
  open(title, QStandardPaths::PicturesLocation, forPictures, std::move(chosen));
}

void FolderQuestion::open(const QString& title, QStandardPaths::StandardLocation start,
                          const std::function<void(QFileDialog&)>& dress,
                          std::function<void(const QString& path)> chosen) {
  if (dialog_) {
    dialog_->raise();
    dialog_->activateWindow();
    return;
  }
  dialog_ = new QFileDialog(nullptr, title, QStandardPaths::writableLocation(start));
  dialog_->setAttribute(Qt::WA_DeleteOnClose);
  dress(*dialog_);
  QObject::connect(dialog_, &QFileDialog::fileSelected, dialog_, [chosen = std::move(chosen)](const QString& path) {
    if (!path.isEmpty()) chosen(path);
  });
  dialog_->show();
}

}  // namespace tarnwick
