#pragma once

#include <QMargins>
#include <QObject>
#include <QRect>
#include <QRegion>
#include <QString>
#include <memory>

#include "desktop/Capability.h"

class QWidget;

namespace tarnwick {

/// Where a panel stands: a rectangle within one screen, and transparent margins around it that are painted on (a
/// shadow, a lifted tile) but are no part of the panel's place. Device-independent pixels from the screen's top left.
struct PanelPlacement {
  QString screen;  ///< Screen::id
  QRect rectangle;
  QMargins margins;

  bool operator==(const PanelPlacement&) const = default;
};

/// A screen edge that a panel may keep free for itself.
enum class Edge { Top, Bottom };

/// One borderless window of ours that floats above the others on every desktop and never takes the focus by itself.
/// It is hidden when made. Destroying it closes the window and the content with it.
/// Nothing here raises, lowers or moves by absolute coordinates: another window system could not keep that promise.
class Panel : public QObject {
  Q_OBJECT
 public:
  /// Puts the window, grown by the margins, on the screen. The content is laid out to fill the whole window.
  virtual void place(const PanelPlacement& placement) = 0;
  virtual void setShown(bool shown) = 0;
  virtual bool isShown() const = 0;
  /// What takes clicks, in the content's coordinates; everything else lets them through to what lies below.
  /// An empty region lets everything through.
  virtual void setInputRegion(const QRegion& region) = 0;
  /// The visible outline, in the content's coordinates. It is used only while nothing composites the screen, where a
  /// window cannot be translucent and is cut to this shape instead.
  virtual void setOutline(const QRegion& outline) = 0;
  /// Asks the compositor to blur what lies behind this region of the content; empty for none.
  virtual void setBlurBehind(const QRegion& region) = 0;
  /// Keeps `thickness` pixels along the edge free of maximised windows; 0 releases them.
  virtual void reserve(Edge edge, int thickness) = 0;

 Q_SIGNALS:
  /// The window system took the window away, as when its display vanished.
  void closed();
};

/// Makes panels, and says what this desktop can show.
class Panels : public QObject {
  Q_OBJECT
 public:
  /// Takes `content`, which must be a top-level widget that was never shown. Never null.
  virtual std::unique_ptr<Panel> make(std::unique_ptr<QWidget> content) = 0;
  /// Whether windows can be translucent now. A compositor may come and go; `compositingChanged` tells.
  virtual bool isComposited() const = 0;
  /// Whether the compositor blurs what lies behind a panel that asks for it.
  virtual bool canBlur() const = 0;

 Q_SIGNALS:
  void compositingChanged();
};

}  // namespace tarnwick
