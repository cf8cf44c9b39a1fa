#pragma once

#include <QButtonGroup>
#include <QStringList>
#include <QWidget>

namespace tarnwick {

/// One of a few words. Each is a button of its own to the keyboard and to screen readers.
class Segments final : public QWidget {
  Q_OBJECT
 public:
  /// `label` names the whole.
  Segments(const QString& label, const QStringList& words, QWidget* parent = nullptr);

  int chosen() const { return group_.checkedId(); }
  /// Chooses without a signal.
  void setChosen(int index);

 Q_SIGNALS:
  /// The user chose another one.
  void chosenChanged(int index);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QButtonGroup group_;
};

}  // namespace tarnwick
