// What others ask of the running program: the session's manager, a second copy, a repair by hand, and its own keys.
#include <QApplication>
#include <QFileInfo>
#include <QJsonObject>
#include <QProcess>
#include <QUrl>

#include "app/AppDelegate.h"
#include "app/RestoreDock.h"
#include "app/SingleInstance.h"
#include "app/SocketSession.h"
#include "base/DomainError.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

void AppDelegate::listenToTheSession() {
  // The session's manager asks every program to save before it ends the session.
  connect(qApp, &QGuiApplication::commitDataRequest, this, [this](QSessionManager&) { store_->save(); });
  connect(qApp, &QCoreApplication::aboutToQuit, this, &AppDelegate::willTerminate);
  connect(setup_.toggles, &Toggles::changed, this, &AppDelegate::applyAppearance);
  if (setup_.events) connect(setup_.events, &SessionEvents::ending, this, &AppDelegate::quit);
  if (setup_.session) listenTo(*setup_.session);
  if (!setup_.door) return;
  setup_.door->restoreDock = [this] { return restoreForOthers(); };
  listenTo(*setup_.door);
}

void AppDelegate::listenTo(SessionApplication& session) {
  connect(&session, &SessionApplication::activated, this, &AppDelegate::reopen);
  connect(&session, &SessionApplication::openRequested, this, &AppDelegate::open);
  connect(&session, &SessionApplication::actionRequested, this, &AppDelegate::takeOrder);
  session.own();
}

QJsonObject AppDelegate::restoreForOthers() {
  const QLatin1StringView held(RestoreDock::kHeld);
  try {
    return {{held, !down_ && dock_->giveSystemDockBack()}};
  } catch (const DomainError& failure) {
    store_->setError(failure.message());
    return {{held, true}, {QLatin1StringView(RestoreDock::kFailure), failure.message()}};
  }
}

void AppDelegate::takeOrder(const QString& action, const QVariantList& parameter) {
  if (action == "quit"_L1) quit();
  if (action == "toggle"_L1) perform({Order::Kind::Toggle, 0});
  if (action == "command-bar"_L1) perform({Order::Kind::CommandBar, 0});
  if (action == "focus"_L1) perform({Order::Kind::Focus, 0});
  if (action == "profile"_L1) {
    // Anybody on the bus may call, with anything.
    bool isNumber = false;
    const int index = parameter.value(0).toInt(&isNumber);
    if (isNumber) perform({Order::Kind::Profile, index});
  }
}

void AppDelegate::perform(const Order& order) {
  if (down_) return;
  switch (order.kind) {
    case Order::Kind::Toggle:
      dock_->toggle();
      break;
    case Order::Kind::CommandBar:
      if (toggleCommandBar)
        toggleCommandBar();
      else
        store_->setError(tr("The command bar comes with a later version of Tarnwick."));
      break;
    case Order::Kind::Focus:
      if (dock_->isManuallyHidden()) dock_->toggle();
      if (focusDock) focusDock();
      break;
    case Order::Kind::Profile:
      selectProfileAt(order.profile);
      break;
  }
}

void AppDelegate::selectProfileAt(int index) {
  const auto& profiles = store_->config().profiles;
  if (index >= 0 && index < profiles.size()) store_->selectProfile(profiles[index].id);
}

void AppDelegate::open(const QStringList& urls) {
  for (const QString& text : urls) {
    const QUrl url(text);
    const QString path = url.isLocalFile() ? url.toLocalFile() : text;
    const bool isSpace = QFileInfo(path).suffix().compare("tarnwickspace"_L1, Qt::CaseInsensitive) == 0;
    if (!isSpace || down_) continue;
    if (importSpace)
      importSpace(path);
    else
      store_->setError(tr("“%1” was not opened. Spaces come with a later version of Tarnwick.")
                           .arg(QFileInfo(path).fileName()));
  }
}

void AppDelegate::reopen() {
  if (down_) return;
  if (!setup_.measures && SingleInstance::isStale(setup_.executable) && handOverToTheNewBuild()) return;
  // Whoever opens the program again wants to see it.
  if (dock_->isManuallyHidden()) dock_->toggle();
  if (showSettings) showSettings();
}

bool AppDelegate::handOverToTheNewBuild() {
  // It takes over by asking this copy to quit.
  QProcess build;
  build.setProgram(setup_.executable);
  build.setProcessEnvironment(setup_.environment.variables);
  return build.startDetached();
}

}  // namespace tarnwick
