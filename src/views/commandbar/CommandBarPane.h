#pragma once

#include <QKeyEvent>
#include <functional>
#include <memory>

#include "commandbar/CommandBarRows.h"
#include "motion/SpringDriver.h"
#include "views/controls/GlassPane.h"

namespace tarnwick {

class CommandField;
class CommandList;
class FrameClocks;

/// What the command bar looks like: a field, and below it the rows that answer what is written in it. The field has the
/// keyboard. The pane is as high as its rows; it grows and shrinks by the spring of the reveal.
class CommandBarPane final : public GlassPane {
  Q_OBJECT
 public:
  using Picture = std::function<void(QPainter& painter, const QRectF& box, const CommandItem& item)>;

  /// The rows are borrowed and outlive it. `picture` draws what stands before the rows of apps and files; the others
  /// are drawn here.
  CommandBarPane(CommandBarRows& rows, Picture picture, FrameClocks& clocks, const QString& display);
  ~CommandBarPane() override;

  void setPicture(Picture picture) { picture_ = std::move(picture); }
  void setReduceMotion(bool reduce);
  /// Whether windows can be translucent; where not, nothing grows.
  void setComposited(bool composited);
  /// Whether every source is switched off, which is said in place of a promise.
  void setFindsNothing(bool findsNothing);
  /// How high the list may become. It shows whole rows alone and scrolls where that is not enough.
  void setSpaceForRows(int height);
  /// Whether more files may be found soon, which the mark in the field says too.
  void setGrowing(bool growing);
  QSize sizeHint() const override;
  CommandField& field() { return *field_; }
  CommandList& list() { return *list_; }
  /// A symbol on a small plate, as rows without a picture of their own have it.
  void drawSymbolPicture(QPainter& painter, const QRectF& box, const QString& symbol, bool strong = false) const;

 Q_SIGNALS:
  /// What was asked for is done. Its owner hides the bar, not within this signal.
  void done();
  /// It was painted for the first time.
  void appeared();

 protected:
  QRectF pane() const override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void takeText(const QString& text);
  void takeRows();
  bool saysNothingIsOn() const;
  void copyPath(const CommandItem& item);
  void keyPressed(QKeyEvent* event);
  void activate(int row, bool isPressed);
  void reveal(int row);
  void layOut();
  void drawPicture(QPainter& painter, const QRectF& box, const CommandItem& item) const;
  void drawSign(QPainter& painter, const QRectF& box, const QString& sign) const;

  CommandBarRows& rows_;
  Picture picture_;
  CommandField* field_;
  CommandList* list_;
  SpringDriver growth_;
  double listHeight_ = 0;  ///< As it is now.
  QSize shownSize_;        ///< The one that was announced last.
  bool reduceMotion_ = false;
  bool isComposited_ = true;
  bool isGrowing_ = false;
  bool findsNothing_ = false;
  bool hasAppeared_ = false;
};

}  // namespace tarnwick
