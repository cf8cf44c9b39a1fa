#pragma once

#include <QLabel>
#include <QVarLengthArray>
#include <utility>

#include "views/controls/ControlLook.h"

namespace tarnwick {

/// A text of the theme: one line that is elided, or a sentence that wraps.
class TextLabel : public QLabel {
  Q_OBJECT
 public:
  explicit TextLabel(const QString& text = {}, TextStyle style = TextStyle::Body, Tone tone = Tone::Primary,
                     QWidget* parent = nullptr);

  void setStyle(TextStyle style);
  void setTone(Tone tone);
  /// Where a line that is too long loses characters; the end unless set otherwise.
  void setElide(Elide elide);
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;
  int heightForWidth(int width) const override;

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  void takeLook();

  struct Heights {
    QString text;
    QVarLengthArray<std::pair<int, int>, 8> known;  ///< Of a width, the height.
  };
  mutable Heights heights_;

  TextStyle style_;
  Tone tone_;
  Elide elide_ = Elide::End;
};

/// The heading of a section, with space above it and perhaps a word at its end.
class SectionLabel final : public QWidget {
  Q_OBJECT
 public:
  explicit SectionLabel(const QString& text, const QString& trailing = {}, QWidget* parent = nullptr);

  void setText(const QString& text);
  void setTrailing(const QString& text, Tone tone = Tone::Secondary);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString text_;
  QString trailing_;
  Tone trailingTone_ = Tone::Secondary;
};

/// The mark before a message about something that went wrong.
class WarningMark final : public QWidget {
  Q_OBJECT
 public:
  explicit WarningMark(QWidget* parent = nullptr);

 protected:
  void paintEvent(QPaintEvent* event) override;
};

/// A figure that a panel is about, its small unit behind it and up to two short lines at the right.
class FigureView final : public QWidget {
  Q_OBJECT
 public:
  explicit FigureView(QWidget* parent = nullptr);

  void setFigure(const QString& figure, const QString& unit = {});
  void setLines(const QString& first, const QString& second = {});
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void describe();

  QString figure_;
  QString unit_;
  QString first_;
  QString second_;
};

}  // namespace tarnwick
