#pragma once

#include <QScrollArea>
#include <QTimer>

namespace tarnwick {

/// A clear area that scrolls its content upright. Its bar lies over the content and shows only while something moves.
/// Wants to be as high as its content.
class ScrollArea final : public QScrollArea {
  Q_OBJECT
 public:
  explicit ScrollArea(QWidget* parent = nullptr);

  /// The content, through which what lies behind the area is seen: the toolkit would put a ground below it.
  void setWidget(QWidget* content);
  /// For the page of a window, which nothing else parts from what is above and below it: its edges fade where it goes
  /// on, the lower one under an arrow.
  void setShowsMore(bool shows);
  /// The height that the content has in a width.
  int contentHeight(int width) const;
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return {0, 0}; }

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void moveThumb();
  void placeEdges();

  QWidget* thumb_;
  QWidget* above_ = nullptr;  ///< The fading edges; null where there are none.
  QWidget* below_ = nullptr;
  QTimer stays_;
};

}  // namespace tarnwick
