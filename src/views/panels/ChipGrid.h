#pragma once

#include <QButtonGroup>
#include <QStringList>
#include <QWidget>

class QGridLayout;

namespace tarnwick {

/// A few words, of which one may be chosen, in rows of as many columns.
class ChipGrid final : public QWidget {
  Q_OBJECT
 public:
  ChipGrid(const QString& label, int columns, QWidget* parent = nullptr);

  void setWords(const QStringList& words);
  /// Chooses without a signal; -1 for none.
  void setChosen(int index);

 Q_SIGNALS:
  /// The user chose one.
  void chosen(int index);

 private:
  QString label_;
  int columns_;
  QStringList words_;
  QGridLayout* grid_;
  QButtonGroup group_;
};

}  // namespace tarnwick
