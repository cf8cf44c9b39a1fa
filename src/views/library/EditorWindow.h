#pragma once

#include <QSet>
#include <QUuid>
#include <functional>

#include "apps/InstalledApps.h"
#include "store/UndoableEdits.h"
#include "store/WidgetEditor.h"
#include "views/library/EditorFields.h"
#include "views/library/WidgetPreviews.h"
#include "views/window/AppWindow.h"

namespace tarnwick {

class CardPage;
class FieldControl;
class FormRow;
class TextField;
class TextLabel;
class TilePreview;

/// What the editor asks of the rest of the program. What is borrowed outlives the window.
struct EditorServices {
  InstalledApps* apps = nullptr;   ///< Required.
  UndoableEdits* edits = nullptr;  ///< Required: what is saved can be taken back.
  PreviewSources previews;
  /// What the rules ask. Each function that is left empty gets a plain answer.
  WidgetEditor::Hooks rules{};
  /// Keeps the credential that was entered for a widget. Throws DomainError with the sentence that the form shows.
  /// While it is empty, no form asks for credentials.
  std::function<void(const DockWidget& widget, const QString& credential)> saveCredential{};
  /// Whether a credential is kept for a widget, which the empty field then says.
  std::function<bool(const DockWidget& widget)> hasCredential{};
};

/// The form of one widget: its title and the options of its kind, below a picture of its tile that follows. Nothing
/// is stored until it is saved and found right; what the user did not touch keeps following the settings. It closes
/// when it was saved or left, and when its widget is gone.
class EditorWindow final : public AppWindow {
  Q_OBJECT
 public:
  /// `widget` should be one of the settings; for any other the window is empty and closes once it is shown.
  EditorWindow(AppStore& store, const QUuid& widget, EditorServices services);
  ~EditorWindow() override;

  const QUuid& widget() const { return widget_; }
  /// What the Save button does. Gives whether the form passed.
  bool save();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void showEvent(QShowEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Line {
    EditorField field;
    FieldControl* control;
    FormRow* row;
    bool touched = false;
  };

  QWidget* makeBody();
  void addLine(const EditorField& field);
  void take();
  DockWidget edited(const DockWidget& stored) const;
  void changed(Line& line);
  void follow();
  void showFault(Line* line, const QString& sentence);
  void clearFaults();
  Line* faultyLine(const QString& sentence);
  void fit();
  void keepOnScreen();

  AppStore& store_;
  QUuid widget_;
  EditorServices services_;
  std::vector<std::unique_ptr<Line>> lines_;
  bool titleTouched_ = false;
  TilePreview* preview_;
  CardPage* page_;
  TextField* title_;
  FormRow* titleRow_;
  TextLabel* fault_;
};

}  // namespace tarnwick
