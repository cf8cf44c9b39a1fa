#include "views/panels/FileDropZone.h"

#include <QDropEvent>
#include <QMimeData>
#include <QPainter>
#include <utility>

#include "views/controls/ControlLook.h"
#include "views/panels/TilePanel.h"
#include "views/theme/Theme.h"

namespace tarnwick {

/// Lies over the panel's controls and takes nothing.
class FileDropZone::Frame final : public QWidget {
 public:
  explicit Frame(QWidget& panel) : QWidget(&panel) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
  }

  void showAround(const QRect& place) {
    setGeometry(place);
    setVisible(!place.isEmpty());
    raise();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    drawFocusLine(painter, rect(), theme::kRowCorner, lookOf(*this));
  }
};

FileDropZone::FileDropZone(TilePanel& panel, std::function<Place(QPoint at)> placeAt)
    : QObject(&panel), panel_(panel), placeAt_(std::move(placeAt)), frame_(new Frame(panel)) {
  panel.setAcceptDrops(true);
  panel.installEventFilter(this);
}

FileDropZone::~FileDropZone() = default;

bool FileDropZone::eventFilter(QObject*, QEvent* event) {
  switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
      hold(*static_cast<QDropEvent*>(event));
      return true;
    case QEvent::DragLeave:
      letGo();
      return true;
    case QEvent::Drop: {
      auto& drop = *static_cast<QDropEvent*>(event);
      hold(drop);
      const QString folder = place_.folder;
      letGo();
      if (drop.isAccepted()) Q_EMIT dropped(folder, drop.mimeData()->urls(), drop.dropAction());
      return true;
    }
    default:
      return false;
  }
}

Qt::DropAction FileDropZone::actionFor(const QDropEvent& event) {
  if (place_.folder.isEmpty()) return Qt::IgnoreAction;
  const QList<QUrl> urls = event.mimeData()->urls();
  // The file system is asked when a folder is entered, not with every move.
  if (std::exchange(looked_, place_.folder) != place_.folder) facts_ = DropRules::lookAt(place_.folder, urls);
  if (!facts_.exists) return Qt::IgnoreAction;
  const Qt::DropAction action =
      DropRules::action(DropRules::Taker::Folder, event.possibleActions(), event.modifiers(), facts_.sameFileSystem);
  // A file that is let go where it was taken up stays as it is.
  return action == Qt::MoveAction && DropRules::holdsAll(place_.folder, urls) ? Qt::IgnoreAction : action;
}

void FileDropZone::hold(QDropEvent& event) {
  if (!DropRules::carriesFiles(*event.mimeData()) || DropRules::carriesWidget(*event.mimeData())) {
    letGo();
    event.ignore();
    return;
  }
  const QString opened = place_.opens;
  place_ = placeAt_(event.position().toPoint());
  const Qt::DropAction action = actionFor(event);
  event.setDropAction(action);
  // Who refuses a drag that comes in is told no more of it, and it may go on to a folder that takes it.
  event.setAccepted(action != Qt::IgnoreAction || event.type() == QEvent::DragEnter);
  frame_->showAround(action == Qt::IgnoreAction ? QRect() : place_.frame);
  if (place_.opens == opened) return;
  opening_.reset();
  if (place_.opens.isEmpty()) return;
  opening_ = panel_.context().scheduler.after(theme::kSpringLoad, [this] {
    frame_->hide();
    Q_EMIT openWanted(place_.opens);
  });
}

void FileDropZone::letGo() {
  place_ = {};
  looked_.clear();
  opening_.reset();
  frame_->hide();
}

}  // namespace tarnwick
