#pragma once

#include <QUuid>
#include <functional>

#include "apps/InstalledApps.h"
#include "store/WidgetEditor.h"
#include "views/library/WidgetPreviews.h"
#include "views/window/AppWindow.h"

namespace tarnwick {

/// What the editor asks of the rest of the program. What is borrowed outlives the window.
struct EditorServices {
  InstalledApps* apps = nullptr;  ///< Required.
  PreviewSources previews;
  /// The rules' questions. Both functions have a plain answer unless they are set.
  WidgetEditor::Hooks rules;
  /// Keeps the credential that was entered for a widget. Throws DomainError with the sentence that the form shows. While
  /// it is empty, no form asks for credentials.
  std::function<void(const DockWidget& widget, const QString& credential)> saveCredential;
  /// Whether a credential is kept for a widget, which the empty field then says.
  std::function<bool(const DockWidget& widget)> hasCredential;
};

/// The form of one widget: its title and what its kind can be told, beside a picture of its tile that follows. Nothing
/// is stored until it is saved and found right. It closes when it was saved or left, and when its widget is gone.
class EditorWindow final : public AppWindow {
  Q_OBJECT
 public:
  /// `widget` must be one of the settings.
  EditorWindow(AppStore& store, const QUuid& widget, EditorServices services);
  ~EditorWindow() override;

  const QUuid& widget() const { return widget_; }

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  class Form;

  QUuid widget_;
  std::unique_ptr<Form> form_;
};

}  // namespace tarnwick
