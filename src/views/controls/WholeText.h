#pragma once

#include <QTextLayout>
#include <QWidget>

#include "views/controls/ControlLook.h"

namespace tarnwick {

/// A text that somebody else wrote, shown whole and as it is written: a word that is wider than the widget is broken.
/// It hides itself while it is empty.
class WholeText final : public QWidget {
 public:
  WholeText(TextStyle style, Tone tone);

  void setText(const QString& text);
  /// Gives a part of the text another tone; empty for none. Of a part that is there more than once the first has it.
  void setPart(const QString& part, Tone tone);
  QSize sizeHint() const override { return {kUsualWidth, heightForWidth(kUsualWidth)}; }
  QSize minimumSizeHint() const override { return {0, 0}; }
  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int width) const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  static constexpr int kUsualWidth = 200;

  QString laidText() const;
  /// Gives the height.
  double lay(QTextLayout& layout, int width) const;

  TextStyle style_;
  Tone tone_;
  QString text_;
  QString part_;
  Tone partTone_ = Tone::Primary;
};

}  // namespace tarnwick
