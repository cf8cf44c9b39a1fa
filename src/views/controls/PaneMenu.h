#pragma once

#include <QList>
#include <QPointer>
#include <QString>
#include <QWidget>
#include <functional>

namespace tarnwick {

/// One line of a PaneMenu. Without a text it is a line that parts groups.
struct PaneMenuEntry {
  QString text;
  std::function<void()> run;  ///< Called once the menu has gone.
};

/// A menu within a pane, for what is beside the dock: such a window is closed by a click on any other, a menu's
/// included. It has the keyboard while it is open (arrows, Return, Escape); a click beside it closes it and does
/// nothing else. Deletes itself when it closes.
class PaneMenu final : public QWidget {
  Q_OBJECT
 public:
  /// Opens over the window of `owner`, at a point of `owner`, moved as far as needed to be seen whole. `label` names it
  /// for screen readers. An open one of that window closes. Null where there is nothing to choose from.
  static PaneMenu* open(QWidget& owner, const QPoint& at, const QString& label, const QList<PaneMenuEntry>& entries);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  /// Tab, and the arrows, which the toolkit takes for it on a button.
  bool focusNextPrevChild(bool next) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  PaneMenu(QWidget& owner, const QString& label, const QList<PaneMenuEntry>& entries);
  void step(int by);
  void close(const std::function<void()>& run = {});

  QPointer<QWidget> before_;  ///< What had the keyboard.
  QList<QWidget*> buttons_;
};

}  // namespace tarnwick
