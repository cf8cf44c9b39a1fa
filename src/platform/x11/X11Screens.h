#pragma once

#include <QHash>
#include <QPointer>
#include <QRect>
#include <QScreen>
#include <QSet>
#include <optional>

#include "desktop/Edid.h"
#include "desktop/Panels.h"
#include "desktop/Screens.h"
#include "platform/x11/X11Events.h"
#include "platform/x11/X11Strut.h"

namespace tarnwick {

/// The displays as Qt lays them out, distinguished by what RandR knows of the monitors, less the bars of other
/// programs. Made once; the events must outlive it.
class X11Screens final : public Screens {
  Q_OBJECT
 public:
  /// A display as the window system sees it.
  struct Native {
    QRect frame;  ///< Root pixels.
    double scale = 1;
    QPointer<QScreen> screen;  ///< Null for a moment when a display goes.
    QRectF desktopFrame;       ///< The same in desktop coordinates.

    /// The coordinates of the one for the other, as this display has them, also for places beyond it.
    QPointF toDesktop(const QPoint& root) const;
    QRectF toDesktop(const QRect& root) const;
    QRect toRoot(const QRectF& desktop) const;
  };

  explicit X11Screens(X11Events& events);

  QList<Screen> all() const override { return screens_; }
  QString mainId() const override;
  bool reportsPointer() const override { return true; }

  /// The display of that identity, if it is connected.
  std::optional<Native> native(const QString& id) const;
  /// The display that shows most of the rectangle, given in root or in desktop coordinates.
  std::optional<Native> nativeOf(const QRect& root) const;
  std::optional<Native> nativeOf(const QRectF& desktop) const;
  /// What is left of a display beside the bars of others, in Qt's coordinates; empty for one that is gone.
  QRect usable(const QString& id) const;
  /// All displays, in root pixels.
  QList<QRect> nativeFrames() const;
  /// The identities of the displays that show a part of the rectangle, given in root pixels.
  QStringList showing(const QRect& rectangle) const;
  QSize rootSize() const { return rootSize_; }
  /// A panel of ours keeps space along this edge. From then on the window manager's work area says nothing about others
  /// there.
  void noteReservation(Edge edge);

 private:
  struct Display {
    QPointer<QScreen> screen;
    QString connector;
    std::optional<Edid> edid;
    QRect frame;
  };
  using Strut = std::optional<X11Strut>;

  void follow(QScreen* screen);
  void displaysChanged();
  void refreshLater();
  void refresh();
  void readDisplays();
  void readStruts();
  QMargins workAreaInsets() const;
  QRect usableFrame(const QRect& frame, const QMargins& insets) const;
  void publish();

  X11Events& events_;
  bool hasMonitors_ = false;
  bool isRefreshing_ = false;
  bool displaysAreStale_ = true;
  QSize rootSize_;
  QList<Display> displays_;
  QHash<xcb_window_t, Strut> struts_;  ///< Of the windows of others; an entry without a value keeps nothing.
  QSet<xcb_window_t> staleStruts_;
  bool reservesTop_ = false;
  bool reservesBottom_ = false;
  QList<Screen> screens_;
  QHash<QString, Native> natives_;
};

}  // namespace tarnwick
