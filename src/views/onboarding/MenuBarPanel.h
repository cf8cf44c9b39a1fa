#pragma once

#include <functional>

#include "config/DockLayout.h"
#include "views/controls/GlassPane.h"

class QVBoxLayout;

namespace tarnwick {

class AppStore;
class Commands;
class ListRow;
class ScrollArea;
class SectionLabel;
class Switch;
class TextLabel;

/// The small window below the status item: the dock, its layout and its profiles at a glance, and the ways to all else.
/// It takes the size of its content.
class MenuBarPanel final : public GlassPane {
  Q_OBJECT
 public:
  /// Both must outlive it. With `reduceMotion` its pictures stand still.
  MenuBarPanel(AppStore& store, Commands& commands, bool reduceMotion);
  ~MenuBarPanel() override;

  /// Where nothing composites, the panel is cut to its outline and has no shadow.
  void setScheme(bool dark, Backdrop backdrop);
  QSize sizeHint() const override;

 Q_SIGNALS:
  /// Something was chosen that is not seen in the panel itself. Its owner closes it, not within this signal.
  void closeRequested();

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void addHeader();
  void addLayouts();
  void addEntries();
  ListRow* addEntry(const QString& title, const std::function<void()>& act);
  void fill();
  void fillProfiles();

  AppStore& store_;
  Commands& commands_;
  bool reduceMotion_;
  QWidget* content_;
  ScrollArea* scroll_;
  QVBoxLayout* column_;
  QWidget* message_;
  TextLabel* messageText_;
  Switch* dock_;
  SectionLabel* layoutName_;
  ListRow* continueSetup_ = nullptr;
  QWidget* profiles_;
};

}  // namespace tarnwick
