#pragma once

#include <QString>

#include "config/DockWidget.h"

namespace tarnwick {

/// What saving the form of a widget means: checks its entries and gives what is to be done.
///
/// The form itself belongs to the views; what is not a rule of one widget (the file of settings, the credential, the
/// fetch) belongs to the caller.
struct WidgetEditor {
  /// Where this tool usually is.
  static constexpr const char* kCodexExecutable = "/usr/bin/codex";

  /// What a form asks of others. As it is here it asks the disk and the table of services.
  class Hooks {
   public:
    virtual ~Hooks() = default;

    /// Whether a path names an executable file.
    virtual bool isExecutable(const QString& path) const;
    /// Where the Codex program usually lies; used where the user chose none.
    virtual QString defaultCodexExecutable() const;
    /// A widget of mode `native` as its provider wants it stored, the provider's own address included. Gives a kind
    /// without a provider back unchanged; throws DomainError with the provider's sentence.
    virtual DockWidget configured(const DockWidget& widget) const;
  };

  /// What the caller does next, in this order.
  struct Outcome {
    bool saveCredential =
        false;             ///< store the entered credential under the account of `widget`; a failure ends the saving
    DockWidget widget;     ///< pass to the store's `update`
    bool refresh = false;  ///< fetch anew, after the update
  };

  /// `edited` is the form's widget, `stored` the same widget as the store holds it now, `credentialChanged` whether the
  /// user touched the credential field. What the tile counts by itself (a running deadline, glasses drunk) is taken
  /// from `stored`: it may have moved on while the form was open. What the settings document would refuse is
  /// refused here. Throws DomainError with the sentence that the form shows; then nothing is to be stored.
  static Outcome save(const DockWidget& edited, const DockWidget& stored, bool credentialChanged, const Hooks& hooks);
  /// Whether an option is one that a tile writes by itself; no form shows it.
  static bool isRunningState(const QString& key);
};

}  // namespace tarnwick
