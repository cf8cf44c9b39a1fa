#pragma once

#include "views/window/AppWindow.h"
#include "views/window/WindowServices.h"
#include "widgets/LibraryShelves.h"

namespace tarnwick {

class AddedNote;
class DropDown;
class LibraryView;
class SearchField;
class SideList;

/// Shows everything that a dock can hold, with live pictures, and adds it to the profile that is chosen: by a double
/// click, by Return, by its button, or by dragging it onto a dock.
class LibraryWindow final : public AppWindow {
  Q_OBJECT
 public:
  LibraryWindow(AppStore& store, WindowServices services);
  ~LibraryWindow() override;

  /// Shows one section, named as Catalog::categories has it; an unknown one shows all.
  void showCategory(const QString& category);
  /// Chooses the profile that a display's dock shows as the one to add to; an empty text means the active one.
  void setTarget(const QString& display);
  void setTargetProfile(const QUuid& profile) { chooseTarget(profile); }

 protected:
  void showEvent(QShowEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QWidget* makeSide();
  QWidget* makeBody();
  void connectParts();
  void addSearchKeys();
  /// Takes what is installed and what the folders are.
  void fill();
  void search();
  void showTargets();
  void chooseTarget(const QUuid& profile);
  void activate(const LibraryItem& item);
  void chooseApplication();
  void chooseFolder();
  void add(const DockWidget& widget);
  void takeDropped(quint64 entry, const QString& sentence);

  AppStore& store_;
  const WindowServices services_;
  LibraryShelf toTry_ = LibraryShelves::toTry();
  QList<LibraryShelf> shelves_;
  QUuid target_;
  QUuid added_;          ///< The widget that the note is about.
  quint64 entry_ = 0;    ///< Of the stack: that it was added.
  QStringList targets_;  ///< What the list of targets holds, to fill it only when it changed.
  SideList* side_;
  SearchField* field_;
  DropDown* choice_;
  LibraryView* view_;
  AddedNote* note_;
};

}  // namespace tarnwick
