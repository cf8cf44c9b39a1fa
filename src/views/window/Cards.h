#pragma once

#include <QWidget>

#include "views/controls/ControlLook.h"

class QBoxLayout;
class QVBoxLayout;

namespace tarnwick {

/// Whether all the words of `search` occur in what is said, whatever their case and accents. Nothing matches an empty
/// search.
bool matchesSearch(const QString& said, const QString& search);

/// A sentence that wraps.
class TextLabel* makeSentence(const QString& text, TextStyle style, Tone tone);

/// A setting in a card: its label, a sentence of help below it, its control at the right, or below both where the row
/// is too narrow. A wide control is always on a line of its own below both. The control is named after the label for
/// screen readers, unless it has a name already.
class FormRow final : public QWidget {
  Q_OBJECT
 public:
  FormRow(const QString& label, QWidget* control, const QString& help = {}, QWidget* parent = nullptr);

  static FormRow* wide(const QString& label, QWidget* control, const QString& help = {});

  const QString& label() const { return label_; }
  void setLabel(const QString& label);
  const QString& help() const { return help_; }
  void setHelp(const QString& help);
  /// A sentence in red below the control that says what is wrong with it; empty takes it away.
  void setFault(const QString& sentence);
  QString fault() const;
  /// Takes the control out of use and says why in place of the help; empty gives both back.
  void setUnavailable(const QString& why);
  /// Words that find this row beside its label and its help.
  void setSearchWords(const QStringList& words) { words_ = words; }
  /// All that finds it.
  QString said() const { return label_ + u' ' + help_ + u' ' + words_.join(u' '); }
  /// Whether all the words of `search` occur in what the row says, whatever their case and accents.
  bool matches(const QString& search) const;
  /// That of its narrow form.
  QSize minimumSizeHint() const override;

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  FormRow(const QString& label, QWidget* control, const QString& help, bool isWide, QWidget* parent);
  void showHelp(const QString& text);
  void fit();

  QString label_;
  QString help_;
  QString unavailable_;
  QStringList words_;
  QWidget* control_;
  QBoxLayout* line_ = nullptr;  ///< The words and the control beside each other; null without such a control.
  class TextLabel* title_;
  class TextLabel* helpLabel_;
  class TextLabel* fault_;
};

/// A rounded ground with rows on it, parted by hairlines, under an optional heading. One whose rows are all hidden
/// hides too.
class Card final : public QWidget {
  Q_OBJECT
 public:
  explicit Card(const QString& heading = {}, QWidget* parent = nullptr);

  /// Takes a row. Rows that are hidden leave no line behind.
  void add(QWidget* row);
  /// The common case of it.
  FormRow* addRow(const QString& label, QWidget* control, const QString& help = {});
  const QList<FormRow*>& rows() const { return rows_; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool hasVisibleRow() const;

  QVBoxLayout* column_;
  QList<FormRow*> rows_;
  class TextLabel* heading_;
};

/// A page of a window: a heading and cards below each other, which scroll.
class CardPage : public QWidget {
  Q_OBJECT
 public:
  explicit CardPage(const QString& heading, QWidget* parent = nullptr);

  const QString& heading() const { return heading_; }
  Card* addCard(const QString& heading = {});
  void addWidget(QWidget* widget);
  /// For a page to read, without controls: the keyboard scrolls it.
  void takeKeys();
  const QList<Card*>& cards() const { return cards_; }
  /// Scrolls so that `widget`, which is on this page, is seen.
  void reveal(QWidget* widget);

 private:
  QString heading_;
  class ScrollArea* area_;
  QVBoxLayout* column_;
  QList<Card*> cards_;
};

}  // namespace tarnwick
