#pragma once

#include <map>

#include "views/settings/SettingsServices.h"
#include "views/window/AppWindow.h"

class QHBoxLayout;
class QStackedWidget;
class QVBoxLayout;

namespace tarnwick {

class SearchField;
class SettingsPage;
class SideList;
class TextLabel;

/// Everything that the user can set, in sections. Each is made when it is first shown or searched. Nothing needs to be
/// confirmed: what is changed is stored and seen at once.
class SettingsWindow final : public AppWindow {
  Q_OBJECT
 public:
  SettingsWindow(AppStore& store, SettingsServices services);
  ~SettingsWindow() override;

  /// The sections by name, in their order: "general", "appearance", "layout", "profiles", "widgets", "runningApps",
  /// "commandBar", "shortcuts", "clipboard", "connections", "privacy", "about".
  static QStringList sections();
  /// Shows one; an unknown name changes nothing.
  void showSection(const QString& section, const QString& label = {});
  QString section() const;
  /// Looks again at what the desktop says of keys.
  void followKeys();

 protected:
  void showEvent(QShowEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QWidget* makeSide();
  QWidget* makeBody();
  void fitSide();
  SettingsPage* page(const QString& section);
  void turnTo(const QString& section);
  void enterPage();
  void search();

  AppStore& store_;
  const SettingsServices services_;
  SearchField* field_;
  SideList* side_;
  QStackedWidget* stack_;
  QWidget* sidePane_ = nullptr;
  QVBoxLayout* sideColumn_ = nullptr;
  QHBoxLayout* above_ = nullptr;  ///< Where the search is while the side bar has no space for it.
  TextLabel* nothing_;
  std::map<QString, SettingsPage*> pages_;
  QString beforeSearch_;  ///< The section that was shown then.
};

}  // namespace tarnwick
