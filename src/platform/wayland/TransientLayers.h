#pragma once

#include <QHash>
#include <QObject>
#include <QPointer>
#include <functional>
#include <memory>

#include "platform/wayland/OutsideCatcher.h"
#include "platform/wayland/PopupWindow.h"

class QMenu;
class QWidget;

namespace tarnwick {

/// Menus, lists and tips that open out of our panels: Qt makes windows of them, which here are put above the panel,
/// where Qt wants them. While a menu or a list is open its panel has the keyboard, and a click outside closes all of
/// them. Those of ordinary windows are left alone.
class TransientLayers final : public QObject {
  Q_OBJECT
 public:
  explicit TransientLayers(const WaylandSession& session);
  ~TransientLayers() override;

  /// Opens a menu above a panel. `corner` gives the place for the size that the menu has come to.
  void openMenu(QMenu& menu, LayerWindow& panel, const std::function<QPoint(const QSize&)>& corner);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  RoleWindow* parentOf(const QWidget& widget) const;
  void adopt(QWidget& widget, RoleWindow& parent);
  void place(QWidget& widget);
  void opened(QWidget& widget, LayerWindow* layer);
  void hidden(const QWidget* widget);
  QRegion covered() const;
  static void closeAll();

  const WaylandSession& session_;
  /// While a menu is about to be shown: where it comes from.
  LayerWindow* opener_ = nullptr;
  const QWidget* opening_ = nullptr;
  QHash<const QWidget*, QPointer<LayerWindow>> open_;  ///< Menus and lists, and the panels that they belong to.
  std::unique_ptr<OutsideCatcher> catcher_;
};

}  // namespace tarnwick
