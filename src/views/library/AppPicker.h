#pragma once

#include <QDialog>
#include <functional>

#include "apps/InstalledApps.h"
#include "views/controls/ControlLook.h"
#include "views/tiles/TileStyle.h"

namespace tarnwick {

class Button;
class ItemView;
class SearchField;
class TextLabel;

/// Lets the user choose one of the installed applications, in a window over the one that asks. It deletes itself.
class AppPicker final : public QDialog, public LookSource {
  Q_OBJECT
 public:
  /// `apps` outlives the window.
  AppPicker(InstalledApps& apps, TileIcons icons, QWidget* parent);
  ~AppPicker() override;

  const ControlLook& look() const override { return lookOf(*parentWidget()); }

 Q_SIGNALS:
  /// The path of a desktop entry.
  void chosen(const QString& path);

 private:
  void refresh();
  void take(const QString& path);

  InstalledApps& apps_;
  TileIcons icons_;
  QHash<QString, QString> iconOf_;
  SearchField* field_;
  ItemView* view_;
  TextLabel* nothing_;
  Button* choose_;
};

}  // namespace tarnwick
