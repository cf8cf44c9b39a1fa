#pragma once

#include <QObject>
#include <QUuid>
#include <optional>

#include "base/Scheduler.h"
#include "store/DockDrops.h"
#include "views/dock/EdgeScroll.h"
#include "views/dock/RowTiles.h"
#include "widgets/DropRules.h"

class QDropEvent;

namespace tarnwick {

/// Things of other programs, and widgets from the library, that are held over the dock and dropped on it: what would
/// take them, where they would go otherwise, and what opens below a file that is held long enough. The row, the
/// scrolling and what that is counted with are borrowed.
class DropController final : public QObject {
  Q_OBJECT
 public:
  DropController(const RowTiles& tiles, EdgeScroll& edges, Scheduler& scheduler)
      : tiles_(tiles), edges_(edges), scheduler_(scheduler) {}

  /// Takes what is held at the event's place, or refuses it, and tells so by the event and the result.
  bool hold(QDropEvent& event);
  /// What is held was let go here.
  void drop(QDropEvent& event);
  /// The row scrolled on under what is held.
  void follow();
  /// What is held has gone, or may be held here no longer.
  void letGo();

  bool isActive() const { return hover_.has_value(); }
  /// Whether an item would take it.
  bool isOver(qsizetype item) const { return hover_ && hover_->item == item; }
  /// Among the displayed widgets, where it would be put in; none where a tile would take it.
  std::optional<qsizetype> insertion() const;
  /// The widget that is held, and where it would be put in; none where it is none, or one that cannot be read.
  std::optional<RowGuest> guest() const;

 Q_SIGNALS:
  /// Something is held over the dock that was not before.
  void entered();
  /// The row looks different for what is held over it, or no longer is.
  void changed();
  /// The display of the drop is left empty.
  void filesDropped(const DockFileDrop& drop);
  /// `index` among the displayed widgets.
  void widgetTextDropped(const QString& text, qsizetype index);
  /// What was held over long enough is to be opened, so that it can be dropped further in.
  void applicationWanted(quint64 application);
  void tileWanted(const QUuid& widget);

 private:
  struct Hover {
    bool isWidget = false;
    double x = 0;
    std::optional<DockWidget> widget{};
    qsizetype item = -1;  ///< That would take it; -1 for none.
    DropRules::Taker taker = DropRules::Taker::None;
    qsizetype index = 0;    ///< Where it would be put in otherwise.
    qsizetype looked = -1;  ///< The folder's item that `folder` is known for.
    DropRules::Folder folder{};
  };

  void findTaker(Hover& hover, const QDropEvent& event) const;
  DockFileDrop filesOf(const QDropEvent& event) const;
  void springLoad();
  void open(qsizetype item);

  const RowTiles& tiles_;
  EdgeScroll& edges_;
  Scheduler& scheduler_;
  std::optional<Hover> hover_;
  JobHandle opening_;
  qsizetype openingItem_ = -1;  ///< The one that opens soon, or has by now.
};

}  // namespace tarnwick
