#include "files/ScreenshotFolder.h"

#include <QDir>
#include <QFileInfo>

namespace tarnwick {

using namespace Qt::StringLiterals;

ScreenshotFolder::ScreenshotFolder(const QString& pictures, Scheduler& scheduler, QObject* parent)
    : QObject(parent), pictures_(pictures), listing_(scheduler) {
  connect(&listing_, &FolderListing::changed, this, &ScreenshotFolder::changed);
}

void ScreenshotFolder::setChosen(const QString& folder) {
  if (folder == chosen_) return;
  chosen_ = folder;
  if (!listing_.request().folder.isEmpty()) listing_.show({find(chosen_, pictures_), FolderOrder::Newest, true, most});
}

const QList<FolderEntry>& ScreenshotFolder::newest() {
  if (listing_.request().folder.isEmpty()) listing_.show({find(chosen_, pictures_), FolderOrder::Newest, true, most});
  return listing_.contents().entries;
}

void ScreenshotFolder::setFixed(const QString& folder, const QList<FolderEntry>& newest) {
  listing_.setFixed({folder, FolderOrder::Newest, true, most}, {newest, newest.size(), {}});
}

QString ScreenshotFolder::find(const QString& chosen, const QString& pictures) {
  if (!chosen.isEmpty()) return chosen;
  const QDir folder(pictures);
  for (const QString& name : {u"Screenshots"_s, u"screenshots"_s, u"Screenshot"_s})
    if (QFileInfo(folder.filePath(name)).isDir()) return folder.filePath(name);
  return folder.filePath(u"Screenshots"_s);
}

}  // namespace tarnwick
