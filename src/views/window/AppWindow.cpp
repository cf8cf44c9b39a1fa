#include "views/window/AppWindow.h"

#include <QAccessibleWidget>
#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMenu>
#include <QScreen>
#include <QSizeGrip>
#include <QVBoxLayout>
#ifdef __GLIBC__
#include <malloc.h>
#endif

#include "views/theme/WindowPalette.h"
#include "views/window/MessageStrip.h"
#include "views/window/TitleBar.h"

namespace tarnwick {

namespace {

bool closesWindow(QKeyCombination keys) { return keys == (Qt::CTRL | Qt::Key_W) || keys == (Qt::CTRL | Qt::Key_Q); }

bool isDarkNow() {
  constexpr int half = 128;
  return QApplication::palette().color(QPalette::Window).lightness() < half;
}

/// The colours of text and controls are those of the panels of the same scheme, over a window's grounds.
ControlLook windowLook(bool dark) {
  ControlLook look;
  look.palette = Palette::make(dark ? DockStyle::DarkGlass : DockStyle::LightGlass, Backdrop::Opaque, false);
  look.palette.panel.bodyTop = look.palette.panel.bodyBottom = windowColors(dark).card;
  return look;
}

/// A screen reader reads the title of what says that it is a window.
QAccessibleInterface* makeInterface(const QString& className, QObject* object) {
  if (className != QLatin1StringView(AppWindow::staticMetaObject.className())) return nullptr;
  return new QAccessibleWidget(static_cast<AppWindow*>(object), QAccessible::Window);
}

/// A window leaves holes in the heap, more than it was itself; the C library keeps them unless it is asked.
void giveBackMemory() {
#ifdef __GLIBC__
  malloc_trim(0);
#endif
}

}  // namespace

AppWindow::AppWindow(AppStore& store, const QString& title)
    : QWidget(nullptr, Qt::Window), message_(new MessageStrip(store)) {
  QAccessible::installFactory(makeInterface);  // Known already, it is not taken twice.
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowTitle(title);
  isDark_ = isDarkNow();
  look_ = windowLook(isDark_);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(0);
  column_ = new QVBoxLayout;
  column_->setSpacing(0);
  column_->addWidget(message_);
  row->addLayout(column_, 1);
}

AppWindow::~AppWindow() {
  if (qApp) QMetaObject::invokeMethod(qApp, &giveBackMemory, Qt::QueuedConnection);
}

void AppWindow::setContent(QWidget* side, QWidget* body) {
  side_ = side;
  if (side) {
    static_cast<QHBoxLayout*>(layout())->insertWidget(0, side);
    setTabOrder(side, body);
  }
  column_->addWidget(body, 1);
}

QRect AppWindow::usableArea() const {
  const QRect found = usableArea_ ? usableArea_(frameGeometry().center()) : QRect();
  if (!found.isEmpty()) return found;
  const QScreen* at = screen();
  return at ? at->availableGeometry() : frameGeometry();
}

void AppWindow::setSays(const QString& message) { message_->leaveOut(message); }

void AppWindow::setOpenKept(std::function<void()> open) { message_->setOpenKept(std::move(open)); }

void AppWindow::setBehind(const QMargins& margins) {
  behind_ = margins;
  placeFrame();
}

void AppWindow::giveTitleBar() {
  if (titleBar_) return;
  titleBar_ = new TitleBar(*this);
  corner_ = new QSizeGrip(this);
  placeFrame();
}

void AppWindow::placeFrame() {
  QMargins margins = behind_;
  if (titleBar_) {
    titleBar_->setGeometry(0, behind_.top(), width(), TitleBar::kHeight);
    corner_->adjustSize();
    corner_->move(rect().bottomRight() - corner_->rect().bottomRight());
    corner_->raise();
    margins.setTop(margins.top() + TitleBar::kHeight);
  }
  if (layout()->contentsMargins() != margins) layout()->setContentsMargins(margins);
}

void AppWindow::present() {
  resize(size().boundedTo(usableArea().size()));
  isMinimized() ? showNormal() : show();
  raise();
  activateWindow();
}

bool AppWindow::event(QEvent* event) {
  const bool known = QWidget::event(event);
  if (event->type() == QEvent::Show && !event->spontaneous()) Q_EMIT aboutToAppear();
  if (event->type() == QEvent::Resize) placeFrame();
  return known;
}

void AppWindow::undo() {
  if (undo_) undo_();
}

void AppWindow::redo() {
  if (redo_) redo_();
}

// --- Look -----------------------------------------------------------------------------------------------------------

void AppWindow::takeLook() {
  const bool dark = isDarkNow();
  const ControlLook look = windowLook(dark);
  if (dark == isDark_ && look == look_) return;
  isDark_ = dark;
  look_ = look;
  announceLook(*this);
}

void AppWindow::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) takeLook();
  if (event->type() == QEvent::ActivationChange) watchAlt(false);
}

void AppWindow::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const WindowColors& grounds = windowColors(isDark_);
  painter.fillRect(rect(), grounds.body);
  if (side_ && side_->isVisible()) painter.fillRect(side_->x(), 0, side_->width(), height(), grounds.side);
}

// --- Menu bar and keys ----------------------------------------------------------------------------------------------

void AppWindow::setMenuBar(std::unique_ptr<QMenuBar> bar) {
  delete menuBar_.data();
  menuBar_ = bar.release();
  if (!menuBar_) return;
  adoptShortcuts(menuBar_->actions());
  layout()->setMenuBar(menuBar_);
  menuBar_->hide();
  menuBar_->installEventFilter(this);
  connect(qApp, &QApplication::focusChanged, menuBar_, [bar = menuBar_.data()](QWidget* old, QWidget* now) {
    if (old == bar && !qobject_cast<QMenu*>(now)) bar->hide();
  });
}

/// The keys of a menu that is not seen only work where its entries belong to something that is.
void AppWindow::adoptShortcuts(const QList<QAction*>& actions) {
  for (QAction* action : actions) {
    if (!action->shortcut().isEmpty()) addAction(action);
    if (action->menu()) adoptShortcuts(action->menu()->actions());
  }
}

void AppWindow::openMenuBar() {
  if (!menuBar_ || menuBar_->actions().isEmpty()) return;
  if (focusWidget() != menuBar_) beforeMenuBar_ = focusWidget();
  menuBar_->show();
  menuBar_->raise();
  menuBar_->setFocus(Qt::MenuBarFocusReason);
  menuBar_->setActiveAction(menuBar_->actions().first());
}

/// A menu bar that was opened by its key would keep the keyboard.
void AppWindow::leaveMenuBar() {
  if (!menuBar_ || !menuBar_->isVisible()) return;
  menuBar_->setActiveAction(nullptr);
  if (beforeMenuBar_) {
    beforeMenuBar_->setFocus(Qt::OtherFocusReason);
  } else {
    menuBar_->clearFocus();
  }
  menuBar_->hide();
}

void AppWindow::mousePressEvent(QMouseEvent* event) {
  leaveMenuBar();
  QWidget::mousePressEvent(event);
}

void AppWindow::keyPressEvent(QKeyEvent* event) {
  watchAlt(event->key() == Qt::Key_Alt && !(event->modifiers() & ~Qt::AltModifier));
  if (event->key() == Qt::Key_F10 && event->modifiers() == Qt::NoModifier) {
    openMenuBar();
  } else if (event->matches(QKeySequence::Undo)) {
    undo();
  } else if (event->matches(QKeySequence::Redo)) {
    redo();
  } else if (closesWindow(event->keyCombination()) || (event->key() == Qt::Key_Escape && escapeCloses_)) {
    close();
  } else {
    QWidget::keyPressEvent(event);
  }
}

void AppWindow::keyReleaseEvent(QKeyEvent* event) {
  const bool opens = event->key() == Qt::Key_Alt && altAlone_;
  watchAlt(false);
  if (opens)
    openMenuBar();
  else
    QWidget::keyReleaseEvent(event);
}

/// What is pressed together with Alt may be taken by something in the window, which then does not receive it.
void AppWindow::watchAlt(bool watch) {
  altAlone_ = watch;
  qApp->removeEventFilter(this);
  if (watch) qApp->installEventFilter(this);
}

bool AppWindow::eventFilter(QObject* watched, QEvent* event) {
  if (watched == menuBar_ && event->type() == QEvent::KeyPress &&
      static_cast<const QKeyEvent*>(event)->key() == Qt::Key_Escape) {
    leaveMenuBar();
    return true;
  }
  const bool isOtherKey =
      event->type() == QEvent::KeyPress && static_cast<const QKeyEvent*>(event)->key() != Qt::Key_Alt;
  if (isOtherKey || event->type() == QEvent::MouseButtonPress || event->type() == QEvent::Wheel) watchAlt(false);
  return QWidget::eventFilter(watched, event);
}

}  // namespace tarnwick
