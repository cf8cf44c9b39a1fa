#pragma once

#include "views/library/FieldControl.h"

class QVBoxLayout;

namespace tarnwick {

class Button;
class Segments;
class TextLabel;

/// Which history on this computer a widget reads: of which program, and where it lies. It holds the options
/// `historySource` and `historyDirectory` together.
class HistoryField final : public FieldControl {
  Q_OBJECT
 public:
  HistoryField();

  QString value() const override { return path_; }
  void setValue(const QString& path) override;
  void read(const DockWidget& widget, const QString& key) override;
  void write(DockWidget& widget, const QString& key) const override;
  QString fault() const override;

 private:
  void showChoice();
  void choose();
  bool isDatabase() const;

  Segments* source_;
  TextLabel* about_;
  QVBoxLayout* rows_;
  Button* choose_;
  QString path_;
};

}  // namespace tarnwick
