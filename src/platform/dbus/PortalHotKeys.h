#pragma once

#include <QDBusConnection>
#include <QMap>
#include <functional>

#include "desktop/HotKeys.h"
#include "platform/dbus/BusService.h"

namespace tarnwick {

/// Keys that the desktop's portal binds for us, where it has that facility: the desktop asks the user and decides. All
/// requests of a moment go out together, and again whenever one changes. Where there is no such portal, a key is bound
/// in the desktop's own settings to an order of ours.
class PortalHotKeys final : public HotKeys {
  Q_OBJECT
 public:
  using ActionOf = std::function<HotKeyAction(quint32 identifier)>;

  /// `session` should be a connection over which nothing else calls the portal. `application`: what the desktop entry
  /// is called, by which the portal knows programs.
  PortalHotKeys(const QDBusConnection& session, const QString& application, ActionOf actionOf);
  /// Over a connection of its own: a program must give the portal its name in its very first call.
  PortalHotKeys(const QString& application, ActionOf actionOf);
  ~PortalHotKeys() override { closeSession(); }

  Capability capability() const override;
  bool hasAnswered() const override;
  Capability unasked() const override;
  HotKeyBinding bind(quint32 identifier, const HotKeyRequest& request) override;
  void unbindAll() override;

 private:
  enum class State {
    Unknown,  ///< The portal has not answered yet.
    Ready,
    Refused  ///< There is none, or it would not have our keys.
  };
  using Handler = std::function<void(const QVariantMap& results)>;

  void ownerChanged();
  void refuse();
  void tellAnswered();
  void submitLater();
  void submit();
  void bindAll();
  void closeSession();
  /// Calls a method whose answer comes by a signal. Less than success is a refusal.
  void request(const QString& method, const QVariantList& arguments, QVariantMap options, Handler done);
  void responded(const QDBusMessage& response);
  void activated(const QDBusMessage& signal);

  QDBusConnection session_;
  QString application_;
  ActionOf actionOf_;
  BusService portal_;
  State state_ = State::Unknown;
  bool hasAsked_ = false;
  bool isSubmitting_ = false;
  int questions_ = 0;
  QMap<quint32, HotKeyRequest> requests_;
  QString sessionPath_;  ///< Empty while no keys are bound.
  QString requestPath_;  ///< Of what was asked last; empty while nothing is.
  Handler answered_;
  int count_ = 0;
  bool hadAnswered_ = false;
};

}  // namespace tarnwick
