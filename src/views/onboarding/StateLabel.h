#pragma once

#include <QLabel>

namespace tarnwick {

/// Whether something works, as a mark and a word.
class StateLabel final : public QLabel {
  Q_OBJECT
 public:
  explicit StateLabel(bool works, QWidget* parent = nullptr);

  const QString& word() const { return word_; }
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  bool works_;
  QString word_;
};

}  // namespace tarnwick
