#pragma once

#include <QComboBox>

namespace tarnwick {

/// One of several words, chosen from a list that opens below it.
class DropDown final : public QComboBox {
  Q_OBJECT
 public:
  /// `label` is read by screen readers.
  explicit DropDown(const QString& label, QWidget* parent = nullptr);

  /// Adds a word; `value` is what chosenValue gives while it is chosen.
  void addChoice(const QString& word, const QString& value);
  QString chosenValue() const { return currentData().toString(); }
  /// Chooses without a signal; an unknown value leaves none chosen.
  void chooseValue(const QString& value);
  QSize sizeHint() const override;
  void showPopup() override;

 Q_SIGNALS:
  /// The user chose another one.
  void valueChosen(const QString& value);

 protected:
  void paintEvent(QPaintEvent* event) override;
  /// A wheel that passes over a page changes nothing.
  void wheelEvent(QWheelEvent* event) override;
};

}  // namespace tarnwick
