#pragma once

#include <QSet>
#include <QUuid>

#include "views/library/EditorFields.h"
#include "views/window/AppWindow.h"
#include "views/window/WindowServices.h"

namespace tarnwick {

class CardPage;
class FieldControl;
class FormRow;
class TextField;
class TextLabel;
class TilePreview;

/// The form of one widget: its title and the options of its kind, below a picture of its tile that follows. Nothing
/// is stored until it is saved and found right; what the user did not touch keeps following the settings. It closes
/// when it was saved or left, and when its widget is gone.
class EditorWindow final : public AppWindow {
  Q_OBJECT
 public:
  /// `widget` should be one of the settings; for any other the window is empty and closes once it is shown.
  EditorWindow(AppStore& store, const QUuid& widget, WindowServices services);
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
  const WindowServices services_;
  std::vector<std::unique_ptr<Line>> lines_;
  bool titleTouched_ = false;
  TilePreview* preview_;
  CardPage* page_;
  TextField* title_;
  FormRow* titleRow_;
  TextLabel* fault_;
};

}  // namespace tarnwick
