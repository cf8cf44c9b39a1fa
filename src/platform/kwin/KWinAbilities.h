#pragma once

#include <QDBusPendingCall>
#include <QObject>
#include <functional>

#include "desktop/Capability.h"

namespace tarnwick {

/// What KWin lets this program do with windows of others. It is asked once, without waiting; until it answers it is as
/// if it said no.
class KWinAbilities final : public QObject {
  Q_OBJECT
 public:
  KWinAbilities();

  const Capability& moves() const { return moves_; }
  const Capability& pictures() const { return pictures_; }

 Q_SIGNALS:
  void changed();

 private:
  void ask(const QDBusPendingCall& pending, const std::function<Capability(const QDBusError&)>& judge,
           Capability KWinAbilities::*told);

  Capability moves_;
  Capability pictures_;
};

}  // namespace tarnwick
