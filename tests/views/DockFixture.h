#pragma once

#include <QEvent>
#include <QImage>
#include <QPixmap>
#include <stdexcept>

#include "../support/TestFrameClock.h"
#include "../support/TestScheduler.h"
#include "views/dock/DockView.h"
#include "views/families/Rooms.h"

namespace tarnwick::testing {

/// The widgets that a new user finds, and what they show on a fixed morning.
DockRow starterRow();
TileSources morning();
DockWidget widget(const QString& kind);
QList<DockApp> runningApps();
/// Coloured squares in the place of real icons.
QPixmap icon(const DockApp& app, int size, double ratio);

/// A view that moves when the test says so.
class MovedView : public DockView {
 public:
  explicit MovedView(Scheduler& scheduler);
  /// Lets so many seconds of frames pass, fewer where everything has come to rest before. Returns how many there were.
  int beat(double seconds = test::TestFrameClock::kFrame) { return clock_->beat(seconds); }
  /// Lets frames pass until nothing moves. False where that would take more than a minute.
  bool rest();

 private:
  test::TestFrameClock* clock_;  // Owned by the view.
};

/// A view of the row, filled and laid out in a slot `width` wide; 0 for as wide as the row wants.
std::unique_ptr<MovedView> makeView(const DockRow& row, Scheduler& scheduler, int width = 0);
/// The same where no delay is ever over.
std::unique_ptr<MovedView> makeView(const DockRow& row, int width = 0);
/// By how much one channel of one pixel of two pictures differs at most.
int difference(const QImage& a, const QImage& b);
/// What the view paints, over nothing.
QImage paintedBy(QWidget& view, double ratio = 1);

/// Half night, half day.
QImage wallpaper(const QSize& size, double ratio);
/// The view over a wallpaper, which is blurred behind the glass where the row says so.
QImage over(const QImage& wallpaper, DockView& view, double ratio);

// What a pointer does. A move with a button holds it down.
void mouse(QWidget& view, QEvent::Type type, QPointF at, Qt::MouseButton button = Qt::LeftButton,
           quint64 milliseconds = 0);
void click(QWidget& view, QPointF at, Qt::MouseButton button = Qt::LeftButton);
void press(QWidget& view, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
void wheel(QWidget& view, QPointF at, QPoint angle, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

/// The struct that a tile's content was made from. Throws if it was another.
template <class Content>
Content contentAs(const TileContent& content) {
  if (const auto* found = content.as<Content>()) return *found;
  throw std::logic_error("the tile has another content");
}

/// Writes a picture for a person to look at, and says where.
void keep(const QImage& picture, const QString& name);

}  // namespace tarnwick::testing
