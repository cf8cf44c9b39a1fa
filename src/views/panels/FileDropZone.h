#pragma once

#include <QObject>
#include <QRect>
#include <QString>
#include <QUrl>
#include <functional>

#include "base/Scheduler.h"
#include "widgets/DropRules.h"

class QDropEvent;

namespace tarnwick {

class TilePanel;

/// Lets files be dropped on a panel that shows a folder: a frame shows which folder takes them, and what they are held
/// over long enough opens. It belongs to the panel; whoever opened that does what dropped() says.
class FileDropZone final : public QObject {
  Q_OBJECT
 public:
  struct Place {
    QString folder{};  ///< That takes what is dropped there; empty for none.
    QRect frame{};     ///< Around what stands for it, in the panel's coordinates.
    QString opens{};   ///< The folder that is shown after a while; empty for none.
  };

  /// `placeAt` says what a point of the panel stands for.
  FileDropZone(TilePanel& panel, std::function<Place(QPoint at)> placeAt);
  ~FileDropZone() override;

 Q_SIGNALS:
  /// The action is what was agreed upon with where the files come from: move or copy.
  void dropped(const QString& folder, const QList<QUrl>& urls, Qt::DropAction action);
  /// Another folder is to be shown, so that they can be dropped further in.
  void openWanted(const QString& folder);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  class Frame;

  void hold(QDropEvent& event);
  void letGo();
  Qt::DropAction actionFor(const QDropEvent& event);

  TilePanel& panel_;
  std::function<Place(QPoint)> placeAt_;
  Frame* frame_;  // Owned by the panel.
  Place place_;
  QString looked_;  ///< The folder that `facts_` is known for.
  DropRules::Folder facts_;
  JobHandle opening_;
};

}  // namespace tarnwick
