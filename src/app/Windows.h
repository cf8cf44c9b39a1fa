#pragma once

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QUuid>
#include <memory>

#include "app/AppDelegate.h"
#include "app/FolderQuestion.h"
#include "app/PictureKeeper.h"
#include "app/WindowPlaces.h"
#include "views/onboarding/DesktopAbilities.h"

namespace tarnwick {

class AboutWindow;
class AppWindow;
class EditorWindow;
class HelpWindow;
class LibraryWindow;
class MenuBarPopup;
class OnboardingWindow;
class SettingsWindow;
struct PreviewSources;

/// The program's own windows: each is open once, and asking for one that is open brings it forward. It tells the
/// delegate how to open them, so it must be made before the delegate's didFinishLaunching, and gone before the
/// delegate.
class Windows final : public QObject {
  Q_OBJECT
 public:
  /// `services` is what the delegate was made of.
  Windows(AppDelegate& delegate, const DelegateSetup& services);
  ~Windows() override;

  void showSettings();
  /// Opens the library with the profile that a display's dock shows to add to; an empty text means the active one.
  void showLibrary(const QString& display);
  /// Opens the form of a widget, over the window that it was asked from. One form a widget.
  void showEditor(const QUuid& widget, AppWindow* over = nullptr);
  void showOnboarding();
  void showAbout();
  void showHelp();
  MenuBarPopup& menuBar();
  /// Whether one is open whose changes are seen on the docks: Settings, the library, a form.
  bool holdsDock() const;
  bool hasEditor() const;

 protected:
  /// Of one of the windows.
  bool eventFilter(QObject* window, QEvent* event) override;

 private:
  template <class Window, class Make>
  void present(QPointer<Window>& window, const QString& name, const WindowPlaces::Wish& wish, const Make& make);
  void dress(AppWindow& window);
  void followMotion();
  QRectF dockOn(const Screen& screen) const;
  void chooseDockPicture();
  QString actedOn() const;
  void keepSetupPage(int page);
  PreviewSources previews();
  DesktopAbilities abilities() const;

  AppDelegate& delegate_;
  DelegateSetup services_;
  WindowPlaces places_;
  PictureKeeper pictures_{delegate_.store()};
  FolderQuestion question_;
  QPointer<SettingsWindow> settings_;
  QPointer<LibraryWindow> library_;
  QHash<QUuid, QPointer<EditorWindow>> editors_;
  QPointer<OnboardingWindow> onboarding_;
  QPointer<AboutWindow> about_;
  QPointer<HelpWindow> help_;
  std::unique_ptr<MenuBarPopup> menuBar_;
};

}  // namespace tarnwick
