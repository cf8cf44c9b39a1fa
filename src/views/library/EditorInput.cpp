// What the form does as a window: its keys, its focus, its size.
#include <QKeyEvent>
#include <QLayout>
#include <algorithm>

#include "store/AppStore.h"
#include "store/DocumentEdits.h"
#include "views/controls/Fields.h"
#include "views/controls/ScrollArea.h"
#include "views/library/CredentialPart.h"
#include "views/library/EditorWindow.h"
#include "views/library/FieldControl.h"
#include "views/library/SignInPart.h"
#include "views/library/TryPart.h"
#include "views/window/Cards.h"

namespace tarnwick {

void EditorWindow::changeEvent(QEvent* event) {
  AppWindow::changeEvent(event);
  // Back from elsewhere, where a keyring may have been installed or unlocked.
  if (event->type() != QEvent::ActivationChange || !isActiveWindow() || !isVisible()) return;
  if (credential_) credential_->look();
  if (signIn_) signIn_->look();
}

void EditorWindow::closeEvent(QCloseEvent* event) {
  // The window may live on for a moment; what comes then is for nobody.
  if (credential_) credential_->stop();
  if (signIn_) signIn_->stop();
  if (try_) try_->forget();
  AppWindow::closeEvent(event);
}

void EditorWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape)
    close();
  else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
    save();
  else
    AppWindow::keyPressEvent(event);
}

void EditorWindow::showEvent(QShowEvent* event) {
  AppWindow::showEvent(event);
  if (!DocumentEdits::find(store_.config(), widget_)) {
    QMetaObject::invokeMethod(this, &QWidget::close, Qt::QueuedConnection);
    return;
  }
  if (credential_) credential_->look();
  fit();
  if (focusWidget()) return;
  // What the user most likely wants to edit is first, which is rarely the title.
  const auto first = std::ranges::find_if(lines_, [](const auto& line) { return line->control->isEnabled(); });
  (first == lines_.end() ? static_cast<QWidget*>(title_) : (*first)->control)->setFocus(Qt::OtherFocusReason);
}

bool EditorWindow::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::LayoutRequest)
    QMetaObject::invokeMethod(
        this, [this] { fit(); }, Qt::QueuedConnection);
  return AppWindow::eventFilter(watched, event);
}

/// As high as its contents, as far as the screen has space.
void EditorWindow::fit() {
  auto* area = page_->findChild<ScrollArea*>();
  if (!area || !isVisible()) return;
  for (QWidget* outer : {static_cast<QWidget*>(this), page_->parentWidget(), static_cast<QWidget*>(page_)})
    outer->layout()->activate();
  const int rest = height() - area->height();
  const int most = usableArea().height() - (frameGeometry().height() - height());
  const int wanted = std::min(area->contentHeight(width()) + rest, most);
  if (wanted != height()) resize(width(), wanted);
  keepOnScreen();
}

/// What grows, grows downwards.
void EditorWindow::keepOnScreen() {
  const QRect whole = usableArea();
  const int beyond = frameGeometry().bottom() - whole.bottom();
  if (beyond > 0) move(x(), std::max(whole.top(), y() - beyond));
}

}  // namespace tarnwick
