#pragma once

#include <QFont>
#include <QPainter>
#include <QRectF>
#include <QString>
#include <QWidget>
#include <memory>

#include "desktop/FrameClock.h"
#include "views/theme/Palette.h"
#include "views/theme/Typography.h"

namespace tarnwick {

/// What controls are painted with.
struct ControlLook {
  Palette palette = Palette::make(DockStyle::DarkGlass, Backdrop::Plain, false);
  Accent accent = Accent::Blue;

  QColor accentColor() const { return palette.accent(accent); }
  /// Of switches and sliders.
  QColor knob() const;
  bool operator==(const ControlLook&) const = default;
};

/// A widget that says how the controls inside it look, and what they move by: a panel, or the body of a window. After
/// a change of the look it calls announceLook().
class LookSource {
 public:
  virtual ~LookSource() = default;
  virtual const ControlLook& look() const = 0;

  /// Makes what the controls move by; borrowed, it outlives them. Without it they do not move.
  void setClocks(FrameClocks& clocks) { clocks_ = &clocks; }
  FrameClocks* clocks() const { return clocks_; }

 private:
  FrameClocks* clocks_ = nullptr;
};

/// The look of the nearest source above `widget`; dark where there is none.
const ControlLook& lookOf(const QWidget& widget);
/// What `widget` moves by, from the nearest source above it that has it; null where none has.
std::unique_ptr<FrameClock> makeClockFor(const QWidget& widget);
/// Makes every control inside `root` take the look anew.
void announceLook(QWidget& root);

/// How strong a control is that is out of use. With high contrast its words stay at 7 to 1.
double disabledOpacity(const ControlLook& look);

/// Which of the three strengths of text, the accent, or what says that something is wrong.
/// `Rise` and `Fall` are of words that say by their sign what they are.
enum class Tone { Primary, Secondary, Tertiary, AccentWord, Fault, Rise, Fall };
QColor toneColor(const ControlLook& look, Tone tone);

/// The label of buttons: body size, semi-bold.
QFont buttonFont();

/// A line of text in the middle of the height of `box`, elided at its width.
void drawTextIn(QPainter& painter, const QRectF& box, const QString& text, TextStyle style, const QColor& color,
                Qt::Alignment alignment = Qt::AlignLeft, Elide elide = Elide::End);
/// The line around a control that has the keyboard, inside of `rect`.
void drawFocusLine(QPainter& painter, const QRectF& rect, double corner, const ControlLook& look);
/// Draws a symbol by name; knows the marks of controls (chevrons, check mark, minus, dots) beside the catalog's.
void drawControlSymbol(QPainter& painter, const QString& name, const QRectF& box, const QColor& color);

/// Whether the keyboard has just brought the focus here, so that it should be seen.
bool isKeyboardReason(Qt::FocusReason reason);

}  // namespace tarnwick
