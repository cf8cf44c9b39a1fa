#pragma once

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QUuid>
#include <memory>

#include "app/WindowPlaces.h"
#include "store/Services.h"
#include "views/settings/SettingsIndex.h"
#include "views/window/WindowServices.h"

namespace tarnwick {

class AboutWindow;
class AppKeys;
class AppStore;
class AppWindow;
class Appearance;
class Commands;
class Connections;
class DockController;
class DockPreferenceAccess;
class DockPresenter;
class EditorWindow;
class HelpWindow;
class LibraryWindow;
class LoginEntry;
class MenuBarPopup;
class OnboardingWindow;
class SettingsWindow;
class StatusItem;

/// What the windows show and change, beside the services of the desktop. All must outlive them.
struct WindowsParts {
  AppStore& store;
  Commands& commands;
  DockPresenter& presenter;
  AppKeys& keys;
  LoginEntry& loginEntry;
  const Appearance& appearance;
  Connections& connections;           ///< To services on the net.
  DockPreferenceAccess& preferences;  ///< Of the system's own dock.
  bool framesWindows = true;          ///< Whether the desktop puts a frame with a title around windows.
};

/// The program's own windows: each is open once, and asking for one that is open brings it forward.
class Windows final : public QObject {
  Q_OBJECT
 public:
  /// The services must outlive it.
  Windows(const WindowsParts& parts, const Services& services);
  ~Windows() override;

  void showSettings();
  /// The rows of Settings for those who look for them elsewhere.
  SettingsPlaces& settingsPlaces() { return settingsIndex_; }
  /// Opens the library with a profile to add to; a null one means that which the display's dock shows, and an empty
  /// display the active one.
  void showLibrary(const QString& display, const QUuid& profile = {});
  /// Opens the form of a widget, over the window of ours that is active, else where the display's dock is. One form a
  /// widget.
  void showEditor(const QUuid& widget, const QString& display);
  void showOnboarding();
  void showAbout();
  void showHelp();
  /// Opens and closes the small window below the status item as that asks for. It may go before this.
  void followStatusItem(StatusItem& item);
  /// The small window below the status item. Null until it was opened first.
  MenuBarPopup* statusPanel() { return statusPanel_.get(); }
  /// Whether one is open whose changes are seen on the docks: Settings, the library, a form.
  bool holdsDock() const;
  bool hasEditor() const;

 protected:
  /// Of one of the windows.
  bool eventFilter(QObject* window, QEvent* event) override;

 private:
  template <class Window, class Make>
  void present(QPointer<Window>& window, const QString& name, const WindowPlaces::Request& request, const Make& make);
  void dress(AppWindow& window);
  void followMotion();
  void followKeys();
  QRectF dockOn(const Screen& screen) const;
  void keepSetupPage(int page);
  WindowServices windowServices();
  DesktopAbilities abilities() const;
  MenuBarPopup& makeStatusPanel();

  DockController& dock() const;

  const WindowsParts parts_;
  const Services& services_;
  WidgetEditor::Hooks forms_;
  const WindowServices windowServices_;
  SettingsIndex settingsIndex_;
  WindowPlaces places_;
  QPointer<SettingsWindow> settings_;
  QPointer<LibraryWindow> library_;
  QHash<QUuid, QPointer<EditorWindow>> editors_;
  QPointer<OnboardingWindow> onboarding_;
  QPointer<AboutWindow> about_;
  QPointer<HelpWindow> help_;
  QPointer<StatusItem> statusItem_;
  std::unique_ptr<MenuBarPopup> statusPanel_;
};

}  // namespace tarnwick
