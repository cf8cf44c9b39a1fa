#pragma once

#include <QWebEngineView>

#include "browser/ServicePage.h"

namespace tarnwick {

/// The window in which the user signs in to a service. Its title says at which host it is, once that is another one.
class SignInWindow final {
 public:
  SignInWindow(const QUrl& home, const QString& title, QWebEngineProfile& profile);
  Q_DISABLE_COPY_MOVE(SignInWindow)
  ~SignInWindow() = default;

  void show();

 private:
  void showTitle();

  QString title_;
  ServicePage page_;
  QWebEngineView view_;
};

}  // namespace tarnwick
