#pragma once

#include "views/library/FieldControl.h"

namespace tarnwick {

class Button;
class TextField;

/// A credential: what is typed, hidden, and a button that has the one that is kept removed. What is kept is never
/// shown, and nothing is kept or removed before the form is saved.
class CredentialField final : public FieldControl {
  Q_OBJECT
 public:
  explicit CredentialField(const EditorField& field);

  /// What is typed.
  QString value() const override;
  /// It never comes from the settings.
  void setValue(const QString& value) override { Q_UNUSED(value) }
  /// It never goes there either.
  void write(DockWidget& widget, const QString& key) const override;
  void setFaulty(bool faulty) override;

  /// Whether one is kept, which could be removed.
  void setKept(bool kept);
  bool isKept() const { return isKept_; }
  /// Whether what is kept is to go.
  bool isRemoving() const { return isRemoving_; }
  /// Whether there is anything to do when the form is saved.
  bool isTouched() const { return isRemoving_ || !value().isEmpty(); }
  /// What one looks like.
  void setExample(const QString& example);
  /// Forgets what is typed.
  void forgetTyped();

 private:
  void setRemoving(bool removing);
  void showState();

  TextField* line_;
  Button* remove_;
  QString placeholder_;
  bool isKept_ = false;
  bool isRemoving_ = false;
};

}  // namespace tarnwick
