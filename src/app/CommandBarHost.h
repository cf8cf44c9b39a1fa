#pragma once

#include <QObject>
#include <QRectF>
#include <functional>
#include <memory>
#include <optional>

#include "commandbar/CommandBarModel.h"
#include "commandbar/CommandBarRows.h"
#include "commandbar/CommandExtras.h"
#include "commandbar/IndexedFileSearch.h"
#include "desktop/Panels.h"
#include "desktop/Screens.h"
#include "store/Services.h"

namespace tarnwick {

class AppStore;
class ClipboardHistory;
class CommandBarPane;
class Commands;

/// The command bar on the screen. It opens on the display with the pointer, a third of the way down, takes the keyboard
/// and gives it back to the window that had it. A click outside closes it and belongs to what was clicked. The bar is
/// made when it is first shown; its model stays, its window goes when it is hidden. Main thread only.
class CommandBarHost final : public QObject {
  Q_OBJECT
 public:
  /// What it shows and does. All must outlive it.
  struct Parts {
    AppStore& store;
    Commands& commands;
    ClipboardHistory& clipboard;
    IndexedFileSearch& files;
    SettingsPlaces* settings = nullptr;  ///< Null where no places of Settings are found.
    /// The glass of the dock that is seen on a display, in desktop coordinates; empty where none is.
    std::function<QRectF(const QString& display)> dock{};
  };

  CommandBarHost(const Parts& parts, const Services& services);
  ~CommandBarHost() override;

  /// Shows it, or hides it when it is shown.
  void toggle();
  void show();
  void hide();
  bool isShown() const { return popup_ != nullptr; }
  /// What it shows; null before it was shown first.
  CommandBarModel* model() { return model_.get(); }
  /// Null while it is hidden.
  CommandBarPane* pane() { return pane_; }

  /// Where its upper edge is within a display: a line as wide as the bar, one pixel high, above that edge.
  static QRect lineOn(const Screen& screen);

 Q_SIGNALS:
  /// What takes the keyboard or lies where it comes should go.
  void aboutToShow();
  void shown();
  void hidden();

 private:
  void makeModel();
  void takeChoices();
  std::optional<Screen> screenToUse() const;
  int spaceForRows(const Screen& screen) const;
  std::unique_ptr<Panel> makeAnchor(const Screen& screen) const;
  void drawPicture(QPainter& painter, const QRectF& box, const CommandItem& item) const;
  QString iconOf(const CommandItem& item) const;

  Parts parts_;
  const Services& services_;
  std::unique_ptr<CommandBarModel> model_;
  std::unique_ptr<CommandExtras> extras_;
  std::unique_ptr<CommandBarRows> rows_;
  std::unique_ptr<Panel> anchor_;  ///< Unseen, where the bar begins.
  std::unique_ptr<Popup> popup_;
  CommandBarPane* pane_ = nullptr;  ///< Owned by the popup.
};

}  // namespace tarnwick
