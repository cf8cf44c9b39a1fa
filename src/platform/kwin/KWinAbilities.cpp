#include "platform/kwin/KWinAbilities.h"

#include <fcntl.h>
#include <unistd.h>

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusPendingCallWatcher>
#include <QUuid>

#include "base/FileDescriptor.h"
#include "platform/kwin/KWinCalls.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

KWinAbilities::KWinAbilities()
    : moves_(Capability::no(tr("KWin does not take scripts here, so loose windows stay where they are."))),
      pictures_(Capability::no(tr("KWin does not give pictures of windows here."))) {
  const QDBusConnection bus = QDBusConnection::sessionBus();
  ask(
      bus.asyncCall(KWinCalls::hasScript(u"tarnwick"_s)),
      [this](const QDBusError& error) { return error.isValid() ? moves_ : Capability::yes(); }, &KWinAbilities::moves_);
  // Asked for a window that is not there: who may have pictures is told just that.
  int ends[2];
  if (::pipe2(ends, O_CLOEXEC) != 0) return;
  const FileDescriptor reading(ends[0]);
  const FileDescriptor writing(ends[1]);
  ask(
      bus.asyncCall(KWinCalls::picture(QUuid().toString(), writing.number())),
      [this](const QDBusError& error) {
        if (error.name() == "org.kde.KWin.ScreenShot2.Error.InvalidWindow"_L1) return Capability::yes();
        if (error.name() == "org.kde.KWin.ScreenShot2.Error.NoAuthorized"_L1)
          return Capability::no(tr("KWin gives pictures of windows to installed apps only."));
        return pictures_;
      },
      &KWinAbilities::pictures_);
}

void KWinAbilities::ask(const QDBusPendingCall& pending, const std::function<Capability(const QDBusError&)>& judge,
                        Capability KWinAbilities::*told) {
  auto* watcher = new QDBusPendingCallWatcher(pending, this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, judge, told] {
    watcher->deleteLater();
    const Capability can = judge(watcher->error());
    if (std::exchange(this->*told, can) != can) Q_EMIT changed();
  });
}

}  // namespace tarnwick
