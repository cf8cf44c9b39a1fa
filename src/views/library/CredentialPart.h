#pragma once

#include <QObject>
#include <QTimer>
#include <functional>
#include <optional>
#include <stop_token>

#include "config/DockWidget.h"
#include "desktop/Capability.h"

namespace tarnwick {

class Connections;
class CredentialField;
class FormRow;

/// What the form of a widget does about its credential: it says whether one is kept for the host that stands in the
/// form, and keeps or removes it when the form is saved. One that was typed for a host is never used for another. What
/// is under way ends with this.
class CredentialPart final : public QObject {
  Q_OBJECT
 public:
  /// How long the address rests before the keyring is asked about its host.
  static constexpr int kRestMilliseconds = 400;

  /// `row` is the field's. All of it outlives this.
  CredentialPart(Connections& connections, CredentialField& field, FormRow& row);
  ~CredentialPart() override;

  /// What a credential looks like, for the empty line.
  void setExample(const QString& example);
  /// What stands below the label where there is nothing else to say; empty for what stands there by itself.
  void setUsual(const QString& help);
  /// What the widget is in the settings, and in the form now.
  void follow(const DockWidget& stored, const DockWidget& edited);
  /// Asks anew what there is: a keyring may have come, been unlocked or been changed meanwhile.
  void look();
  /// Before the form is saved or tried: forgets what was typed for another host than the widget has now. Gives the
  /// sentence where it did, else nothing.
  QString settle(const DockWidget& edited);
  /// What is typed for the host in the form; absent where what is kept counts.
  std::optional<QString> typed() const;
  bool isTouched() const;

  /// Keeps or removes it for `widget`, because the user pressed a button: they may be asked to unlock the keyring.
  /// Calls `done` with the sentence of what failed, empty for nothing, unless this is gone or was stopped.
  void keep(const DockWidget& widget, std::function<void(const QString& fault)> done);
  /// Whether the keyring could not be asked what it keeps.
  bool isUnread() const { return !failure_.isEmpty(); }
  /// Lets the user unlock the keyring, because they pressed a button. Calls `done` whatever came of it, unless this is
  /// gone or was stopped: the rest of the form needs no keyring.
  void unlock(std::function<void()> done);
  /// Ends what is under way; nothing is called any more.
  void stop();

 private:
  void ask();
  void showState();
  bool isForAnotherHost() const;

  Connections& connections_;
  CredentialField& field_;
  FormRow& row_;
  const QString help_;
  QString usual_;  ///< In place of it.
  DockWidget edited_;
  QString storedHost_;
  QString host_;          ///< Of the address in the form.
  QString typedHost_;     ///< That the address had when something was typed last; empty before it has one: then for the
                          ///< one that comes.
  bool isAsked_ = false;  ///< The keyring has answered for `host_`.
  QString lacking_;       ///< Why none can be kept.
  QString failure_;       ///< Why it is not known whether one is.
  QTimer rest_;
  std::stop_source asking_;
  std::stop_source keeping_;
};

}  // namespace tarnwick
