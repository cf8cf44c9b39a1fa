#pragma once

#include <QObject>
#include <QPointer>
#include <QRect>
#include <QString>

class QAbstractItemView;

namespace tarnwick {

class TipBubble;
class WindowFade;

/// The tips of what is in a panel or in a window of the program: the tips that the toolkit would show, in the look of
/// the dock's and as softly. There is one at a time; it goes when the pointer leaves what it is about, or with the next
/// press, key or turn of the wheel. Main thread only.
class PanelTip final : public QObject {
  Q_OBJECT
 public:
  /// From now on tips are these, for as long as the application lives. Without it they stay the toolkit's. Where the
  /// desktop alone knows where windows are (`knowsPlaces` is false), it also sees to it that tips stay on the screen.
  static void install(bool knowsPlaces = true);
  /// Shows a tip of a part of `widget`, in its coordinates; an empty text takes away what is seen.
  static void show(QWidget& widget, const QString& text, const QRect& part);
  /// For a list whose items have tips: whether the event asks for one, which is then shown.
  static bool answer(QAbstractItemView& view, QEvent& event);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  explicit PanelTip(QObject* parent);
  static PanelTip* installed();

  bool showFor(QWidget& widget);
  void open(QWidget& widget, const QString& text, const QRect& part);
  void close();
  void drop();

  QPointer<TipBubble> bubble_;    // A child of the window that it is in front of.
  QPointer<WindowFade> fade_;     // Owned by the bubble; null where nothing composites.
  QPointer<const QObject> what_;  ///< The widget that it is about.
  QRect part_;
  bool knowsPlaces_ = true;
};

}  // namespace tarnwick
