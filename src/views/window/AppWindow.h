#pragma once

#include <QMenuBar>
#include <QPointer>
#include <QWidget>
#include <functional>
#include <memory>

#include "views/controls/ControlLook.h"

class QSizeGrip;
class QVBoxLayout;

namespace tarnwick {

class AppStore;
class MessageStrip;
class TitleBar;

/// A window of the program's own: Settings, the library, the first run. It carries the look of all that is in it,
/// which follows the palette of the application, and shows the store's message line as a strip below its content
/// area's top. Its menu bar shows only while it is asked for (F10 or Alt); the shortcuts in it always work. Ctrl+W
/// closes it. It deletes itself when it is closed, so that a closed window costs nothing.
class AppWindow : public QWidget, public LookSource {
  Q_OBJECT
 public:
  /// `store` outlives the window.
  AppWindow(AppStore& store, const QString& title);
  ~AppWindow() override;

  const ControlLook& look() const override { return look_; }
  bool isDark() const { return isDark_; }

  void setMenuBar(std::unique_ptr<QMenuBar> bar);
  /// What undo() and redo() do; nothing while they are empty.
  void setUndo(std::function<void()> undo, std::function<void()> redo = {}) {
    undo_ = std::move(undo);
    redo_ = std::move(redo);
  }
  /// For a window to read: Escape closes it.
  void setEscapeCloses(bool closes) { escapeCloses_ = closes; }
  /// What says which part of the desktop a window at a place may take; its screen's usable part while it is empty.
  void setUsableArea(std::function<QRect(const QPoint& place)> usableArea) { usableArea_ = std::move(usableArea); }
  /// What this window says in a place of its own, so that it need not be shown above its body as well.
  void setSays(const QString& message);
  /// What opens the settings that were kept aside, where the message reports some; it is offered beside that.
  void setOpenKept(std::function<void()> open);
  /// Where the desktop puts no frame around windows: a title of its own, to move and close it by, and a corner to size
  /// it by.
  void giveTitleBar();
  /// How much of it lies behind something else, from its sides; nothing that can be used is there.
  void setBehind(const QMargins& margins);
  /// Where this window can be seen whole.
  QRect usableArea() const;
  /// Shows the window, in front of all others and with the keyboard. It never begins larger than the space it has.
  void present();

 public Q_SLOTS:
  /// Ctrl+Z where no field that has the keyboard takes it: takes back the last change.
  void undo();
  /// Ctrl+Shift+Z, in the same way: makes again what was taken back last.
  void redo();

 Q_SIGNALS:
  /// It has its size and is not seen yet.
  void aboutToAppear();

 protected:
  /// Where the window's content goes. `side` is at the left, in the colour of side bars, and may be null.
  void setContent(QWidget* side, QWidget* body);

  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void takeLook();
  void placeFrame();
  void openMenuBar();
  void leaveMenuBar();
  void watchAlt(bool watch);
  void adoptShortcuts(const QList<QAction*>& actions);

  ControlLook look_;
  bool isDark_ = true;
  std::function<void()> undo_;
  std::function<void()> redo_;
  std::function<QRect(const QPoint&)> usableArea_;
  QPointer<QMenuBar> menuBar_;       // The layout's.
  QPointer<QWidget> beforeMenuBar_;  // What had the keyboard before it.
  MessageStrip* message_;
  QVBoxLayout* column_;  // Beside the side bar: the message above the body.
  QWidget* side_ = nullptr;
  TitleBar* titleBar_ = nullptr;  // Null where the desktop has its own.
  QSizeGrip* corner_ = nullptr;
  QMargins behind_;
  bool escapeCloses_ = false;
  bool altAlone_ = false;  // Alt went down and nothing else since.
};

}  // namespace tarnwick
