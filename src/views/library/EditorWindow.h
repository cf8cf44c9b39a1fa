#pragma once

#include <QUuid>
#include <memory>
#include <optional>

#include "store/WidgetEditor.h"
#include "views/library/EditorFields.h"
#include "views/window/AppWindow.h"
#include "views/window/WindowServices.h"

namespace tarnwick {

class Button;
class Card;
class CardPage;
class CredentialPart;
class DomainError;
class FieldControl;
class FormRow;
class HooksPart;
class SignInPart;
class TextField;
class TextLabel;
class TilePreview;
class TryPart;

/// The form of one widget: its title and the options of its kind, below a picture of its tile that follows. Nothing
/// is stored until it is saved and found right; what the user did not touch keeps following the settings. A credential
/// goes to the keyring first, which may ask the user; only then the rest is stored. A sign-in in the browser stores the
/// form and leaves it open. It closes when it was saved or left, and when its widget is gone.
class EditorWindow final : public AppWindow {
  Q_OBJECT
 public:
  /// `widget` should be one of the settings; for any other the window is empty and closes once it is shown.
  EditorWindow(AppStore& store, const QUuid& widget, WindowServices services);
  ~EditorWindow() override;

  const QUuid& widget() const { return widget_; }
  /// What the Save button does. Gives whether all is stored, which a credential that is on its way to the keyring puts
  /// off.
  bool save();

 protected:
  void changeEvent(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void showEvent(QShowEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Line {
    EditorField field;
    FieldControl* control;
    FormRow* row;
    bool touched = false;
    bool isSuggested = false;  ///< Its value is a suggestion, which counts once something is entered for it.
  };

  QWidget* makeBody();
  void addLine(const EditorField& field);
  void take();
  bool isServiceTouched() const;
  std::optional<QString> connection() const;
  bool isThere(const Line& line) const;
  DockWidget edited(const DockWidget& stored) const;
  void changed(Line& line);
  void follow();
  void showEdited();
  std::optional<WidgetEditor::Outcome> checked();
  void keepCredential(const DockWidget& widget);
  void setSaving(bool saving);
  void storeAll();
  Line* credentialLine();
  void addTry(Card& card);
  QString missingStep() const;
  void addSignIn(Card& card);
  void addHooks(Card& card);
  void storeHooks(const DockWidget& widget);
  void storeSignIn();
  void showSignedOut();
  QString faultOfCredential(const DockWidget& widget) const;
  void takeField(const QString& path);
  void showFault(Line* line, const QString& sentence);
  void clearFaults();
  Line* faultyLine(const DomainError& failure);
  void fit();
  void keepOnScreen();

  AppStore& store_;
  QUuid widget_;
  const WindowServices services_;
  std::vector<std::unique_ptr<Line>> lines_;
  std::unique_ptr<CredentialPart> credential_;  ///< Null where the kind has none.
  std::unique_ptr<SignInPart> signIn_;          ///< As well.
  std::unique_ptr<HooksPart> hooks_;            ///< As well.
  TryPart* try_ = nullptr;                      ///< As well.
  bool titleTouched_ = false;
  bool isSaving_ = false;  ///< A credential is on its way.
  bool isStored_ = false;
  TilePreview* preview_;
  CardPage* page_;
  TextField* title_;
  FormRow* titleRow_;
  TextLabel* fault_;
  Button* saving_ = nullptr;
};

}  // namespace tarnwick
