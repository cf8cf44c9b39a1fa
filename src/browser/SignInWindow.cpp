#include "browser/SignInWindow.h"

namespace tarnwick {

namespace {

constexpr QSize kWindow{960, 720};

}  // namespace

SignInWindow::SignInWindow(const QUrl& home, const QString& title, QWebEngineProfile& profile)
    : title_(title), page_(home, ServicePage::Roaming::AnyHost, profile) {
  view_.setPage(&page_);
  view_.setContextMenuPolicy(Qt::NoContextMenu);
  view_.resize(kWindow);
  QObject::connect(&page_, &QWebEnginePage::urlChanged, &view_, [this] { showTitle(); });
  showTitle();
  page_.load(home);
}

void SignInWindow::show() {
  view_.show();
  view_.raise();
  view_.activateWindow();
}

/// There is no address bar: who asks for a password is read here.
void SignInWindow::showTitle() {
  const QUrl address = page_.url();
  const bool isOwn = address.isEmpty() || page_.isOwn(address);
  view_.setWindowTitle(isOwn ? title_ : title_ + QStringLiteral(" — ") + address.host());
}

}  // namespace tarnwick
