#pragma once

#include <QListView>

#include "views/controls/ListAccessible.h"

namespace tarnwick {

/// One row of a side bar.
struct SideItem {
  QString id;  ///< Unique in its list.
  QString title;
  QString symbol;            ///< As SymbolTable and drawControlSymbol know it.
  QString count{};           ///< At the end; empty for none.
  bool startsGroup = false;  ///< A line parts it from the row above.

  bool operator==(const SideItem&) const = default;
};

/// The side bar of a window: one row of it is chosen, by the pointer or by the arrow keys.
class SideList final : public QListView, public ItemActions {
  Q_OBJECT
 public:
  /// `label` names the whole for screen readers; `rowHeight` in device-independent pixels.
  SideList(const QString& label, int rowHeight, QWidget* parent = nullptr);
  ~SideList() override;

  /// The chosen row stays so if it is still there, else the first one is.
  void setItems(const QList<SideItem>& items);
  QString chosen() const;
  /// Chooses without a signal.
  void choose(const QString& id);
  /// There is no space for words, which are in the tips then.
  bool showsSymbolsOnly() const;
  QSize sizeHint() const override;
  void pressItem(const QModelIndex& index) override { setCurrentIndex(index); }

 Q_SIGNALS:
  void chosenChanged(const QString& id);

 protected:
  bool viewportEvent(QEvent* event) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  void focusInEvent(QFocusEvent* event) override;

 private:
  class Model;
  class Painter;

  Model* model_;
  bool isQuiet_ = false;
  bool byKeyboard_ = false;
};

}  // namespace tarnwick
