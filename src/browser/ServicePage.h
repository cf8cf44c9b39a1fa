#pragma once

#include <QWebEnginePage>
#include <QWebEngineProfile>
#include <memory>

namespace tarnwick {

/// A session at one service: cookies and what its page stores, in a folder that only the user can read. Nothing that
/// was loaded is kept there, nothing is downloaded.
std::unique_ptr<QWebEngineProfile> makeServiceProfile(const QString& folder);

/// A page of a service. It opens no windows, plays nothing, asks for nothing and starts no other program. Whoever is
/// not signed in to anything may be led away from the service's host, by https; otherwise it stays there.
class ServicePage final : public QWebEnginePage {
 public:
  enum class Roaming { OwnHost, AnyHost };

  ServicePage(const QUrl& home, Roaming roaming, QWebEngineProfile& profile);

  /// Whether it is https, and of the service's host.
  bool isOwn(const QUrl& address) const;
  /// Whether it was to go to another page of the web and did not.
  bool wasLedAway() const { return wasLedAway_; }

 protected:
  bool acceptNavigationRequest(const QUrl& address, NavigationType type, bool isMainFrame) override;
  QWebEnginePage* createWindow(WebWindowType) override { return nullptr; }
  QStringList chooseFiles(FileSelectionMode, const QStringList&, const QStringList&) override { return {}; }
  void javaScriptAlert(const QUrl&, const QString&) override {}
  bool javaScriptConfirm(const QUrl&, const QString&) override { return false; }
  bool javaScriptPrompt(const QUrl&, const QString&, const QString&, QString*) override { return false; }
  void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel, const QString&, int, const QString&) override {}

 private:
  QUrl home_;
  Roaming roaming_;
  bool wasLedAway_ = false;
};

}  // namespace tarnwick
