#include "views/families/files/FileItems.h"

#include <QFileInfo>
#include <QMimeDatabase>
#include <QPainterPath>

#include "apps/InstalledApps.h"
#include "base/ForeignText.h"
#include "files/Thumbnails.h"
#include "store/Commands.h"
#include "views/panels/PanelContext.h"
#include "views/panels/PanelWords.h"
#include "views/theme/FilePictures.h"
#include "views/theme/Glass.h"
#include "widgets/FileWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kPictureCorner = 4;
constexpr qsizetype kLongestEnding = 4;
constexpr double kEndingHeight = 0.76;
constexpr double kLeastForEnding = 32;

/// The picture whole, as large as fits.
void paintPicture(QPainter& painter, const QRectF& box, const QImage& picture, const ControlLook& look) {
  QRectF place(QPointF(), QSizeF(picture.size()).scaled(box.size(), Qt::KeepAspectRatio));
  place.moveCenter(box.center());
  painter.save();
  QPainterPath outline;
  outline.addRoundedRect(place, kPictureCorner, kPictureCorner);
  painter.setClipPath(outline, Qt::IntersectClip);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.drawImage(place, picture);
  painter.restore();
  drawInnerLine(painter, place, kPictureCorner, hairline(painter), look.palette.tileEdge);
}

QString captionOf(const FolderEntry& entry, FileItems::Caption caption, const QDateTime& now, const QLocale& locale) {
  const QString folder = shortFolder(QFileInfo(entry.path).path());
  switch (caption) {
    case FileItems::Caption::None:
      return {};
    case FileItems::Caption::AgeOnly:
      return entry.name;
    case FileItems::Caption::Folder:
      return folder;
    case FileItems::Caption::FolderAndAge:
      return u"%1 · %2"_s.arg(folder, agoWord(entry.modified, now, locale));
  }
  return {};
}

QString tipOf(const FolderEntry& entry, const QLocale& locale) {
  QString tip = entry.name;
  if (!entry.isFolder && entry.size > 0)
    tip += u'\n' + locale.formattedDataSize(entry.size, 1, QLocale::DataSizeSIFormat);
  if (entry.modified.isValid()) tip += u'\n' + locale.toString(entry.modified, QLocale::ShortFormat);
  return tip;
}

/// Applications that say they open such a file, the usual one among them. Known by its name alone: nothing is read.
QList<DesktopEntry> appsFor(const FolderEntry& file, InstalledApps& apps) {
  constexpr qsizetype most = 5;
  QList<DesktopEntry> found;
  if (file.path.isEmpty()) return found;
  const auto index = apps.index();
  const QString type = file.isFolder ? u"inode/directory"_s
                                     : QMimeDatabase().mimeTypeForFile(file.path, QMimeDatabase::MatchExtension).name();
  for (const DesktopEntry& app : index->applications())
    if (found.size() < most && app.mimeTypes.contains(type) && index->isVisible(app)) found << app;
  return found;
}

}  // namespace

void paintFile(QPainter& painter, const QRectF& box, const FolderEntry& entry, const QImage& picture,
               const ControlLook& look) {
  if (!picture.isNull()) {
    paintPicture(painter, box, picture, look);
    return;
  }
  const double side = std::min(box.width(), box.height());
  painter.save();
  painter.translate(box.center() - QPointF(side, side) / 2);
  painter.scale(side / kFilePicture, side / kFilePicture);
  if (entry.isFolder) {
    drawFolder(painter, {}, look.palette.pictures);
  } else {
    drawDocument(painter, {}, look.palette.pictures);
    const QString ending = QFileInfo(entry.name).suffix().toUpper();
    if (side >= kLeastForEnding && !ending.isEmpty() && ending.size() <= kLongestEnding) {
      const TextLine word(ending, TextStyle::GaugeLabel);
      word.drawCentred(painter, {kFilePicture / 2, kFilePicture * kEndingHeight + word.capHeight() / 2},
                       look.palette.pictures.faceInk);
    }
  }
  painter.restore();
}

FileItems::FileItems(ItemView& view, const PanelContext& context, std::function<void()> done)
    : view_(view), done_(std::move(done)) {
  Thumbnails& thumbnails = context.readings.thumbnails;
  view_.setElide(Elide::Middle);
  view.setPicture([this, &thumbnails](QPainter& painter, const QRectF& box, const ViewItem& item) {
    const FolderEntry entry = of(item.id);
    QImage picture;
    if (!entry.isFolder) picture = thumbnails.of(entry.path, entry.modified, kPanelThumbnail);
    paintFile(painter, box, entry, picture, lookOf(view_));
  });
  QObject::connect(&thumbnails, &Thumbnails::ready, &view, &ItemView::refreshPictures);
  view.setItemAction(u"folder"_s, PanelWords::tr("Show in Files"), QKeySequence(Qt::CTRL | Qt::Key_R));
  QObject::connect(&view, &ItemView::actionRequested, &view,
                   [&commands = context.commands](const QString& path) { commands.reveal(path); });
  view.setItemMenu([this, context](const QString& path) { return menuOf(path, context); });
}

QList<PaneMenuEntry> FileItems::menuOf(const QString& path, const PanelContext& context) const {
  Commands& commands = context.commands;
  QList<PaneMenuEntry> entries{{PanelWords::tr("Open"), [this, path] { Q_EMIT view_.opened(path); }}};
  for (const DesktopEntry& app : appsFor(of(path), context.readings.apps))
    entries << PaneMenuEntry{PanelWords::tr("Open with %1").arg(app.name), [this, &commands, path, entry = app.path] {
                               commands.openWith(entry, path);
                               done_();
                             }};
  entries << PaneMenuEntry{}
          << PaneMenuEntry{PanelWords::tr("Show in Files"), [&commands, path] { commands.reveal(path); }}
          << PaneMenuEntry{PanelWords::tr("Copy Path"), [&commands, path] { commands.copyText(path); }}
          << PaneMenuEntry{}
          << PaneMenuEntry{PanelWords::tr("Move to Trash"),
                           [&commands, path, display = context.display] { commands.moveToTrash(path, display); }};
  return entries;
}

void FileItems::set(const QList<FolderEntry>& entries, Caption caption, const QDateTime& now, const QLocale& locale) {
  entries_.clear();
  QList<ViewItem> items;
  for (const FolderEntry& entry : entries) {
    entries_.insert(entry.path, entry);
    ViewItem item{entry.path, ForeignText::line(entry.name), captionOf(entry, caption, now, locale),
                  tipOf(entry, locale)};
    if (caption == Caption::AgeOnly) item.title = agoWord(entry.modified, now, locale);
    item.drag = QUrl::fromLocalFile(entry.path);
    items.append(item);
  }
  view_.setItems(items);
}

}  // namespace tarnwick
