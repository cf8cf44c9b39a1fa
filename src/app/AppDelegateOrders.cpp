// What others ask of the running program: the session's manager, a second copy, a manual repair, and its own keys.
#include <QApplication>
#include <QFileInfo>
#include <QJsonObject>
#include <QProcess>
#include <QUrl>
#include <optional>

#include "app/AppDelegate.h"
#include "app/DockPresenter.h"
#include "app/RestoreDock.h"
#include "app/SingleInstance.h"
#include "app/SocketSession.h"
#include "base/DomainError.h"
#include "desktop/ContrastPreference.h"
#include "desktop/SessionEvents.h"
#include "desktop/Toggles.h"
#include "widgets/PinnedTiles.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kSwitchesAnswer = 0.5;  ///< Seconds.

/// What is asked by the name of an action. Anybody on the bus may call, with anything.
std::optional<Order> orderOf(const QString& action, const QVariantList& parameter) {
  if (action == "toggle"_L1) return Order{Order::Kind::Toggle, 0};
  if (action == "command-bar"_L1) return Order{Order::Kind::CommandBar, 0};
  if (action == "focus"_L1) return Order{Order::Kind::Focus, 0};
  bool isNumber = false;
  const int index = parameter.value(0).toInt(&isNumber);
  if (action == "profile"_L1 && isNumber) return Order{Order::Kind::Profile, index};
  if (action == "app"_L1 && isNumber) return Order{Order::Kind::App, index};
  return std::nullopt;
}

QString pathOf(const QString& url) { return QUrl(url).isLocalFile() ? QUrl(url).toLocalFile() : url; }

bool isSpace(const QString& path) {
  return QFileInfo(path).suffix().compare("tarnwickspace"_L1, Qt::CaseInsensitive) == 0;
}

}  // namespace

void AppDelegate::listenToTheSession() {
  // The session's manager asks every program to save before it ends the session.
  connect(qApp, &QGuiApplication::commitDataRequest, this, [this](QSessionManager&) { store_->save(); });
  connect(qApp, &QCoreApplication::aboutToQuit, this, &AppDelegate::willTerminate);
  connect(&services_.toggles, &Toggles::changed, this, [this] {
    if (!switchesAnswered_ && !switchesAnswer_)
      switchesAnswer_ = store_->scheduler().after(kSwitchesAnswer, [this] {
        switchesAnswered_ = true;
        applyAppearance();
      });
    applyAppearance();
  });
  connect(&services_.contrast, &ContrastPreference::changed, this, &AppDelegate::applyAppearance);
  connect(&services_.session, &SessionEvents::ending, this, &AppDelegate::quit);
  listenTo(setup_.application);
  setup_.door.restoreDock = [this] { return restoreForOthers(); };
  setup_.door.refusal = [this](const QString& action, const QVariantList& parameter) {
    const auto order = orderOf(action, parameter);
    return order ? refusal(*order) : QString();
  };
  setup_.door.refusalToOpen = [this](const QStringList& urls) {
    QStringList sentences;
    for (const QString& url : urls)
      if (const QString sentence = refusalToOpen(url); !sentence.isEmpty()) sentences << sentence;
    return sentences.join(u'\n');
  };
  listenTo(setup_.door);
}

void AppDelegate::listenTo(SessionApplication& session) {
  connect(&session, &SessionApplication::activated, this, &AppDelegate::reopen);
  connect(&session, &SessionApplication::openRequested, this, &AppDelegate::open);
  connect(&session, &SessionApplication::actionRequested, this,
          [this](const QString& action, const QVariantList& parameter) {
            if (action == "quit"_L1) return quit();
            if (const auto order = orderOf(action, parameter)) perform(*order);
          });
  session.own();
}

QJsonObject AppDelegate::restoreForOthers() {
  const QLatin1StringView held(RestoreDock::kHeld);
  try {
    return {{held, !down_ && dock().giveSystemDockBack()}};
  } catch (const DomainError& failure) {
    store_->setError(failure.message());
    return {{held, true}, {QLatin1StringView(RestoreDock::kFailure), failure.message()}};
  }
}

QString AppDelegate::refusal(const Order& order) const {
  if (order.kind == Order::Kind::CommandBar && !commands_->can(Commands::Optional::CommandBar))
    return tr("The command bar comes with a later version of Tarnwick.");
  const qsizetype profiles = store_->config().profiles.size();
  if (order.kind == Order::Kind::Profile && (order.number < 0 || order.number >= profiles))
    return tr("There is no profile %1. The first one is 0, the last one %2.").arg(order.number).arg(profiles - 1);
  const qsizetype apps = presenter_->apps();
  if (order.kind == Order::Kind::App && (order.number < 1 || order.number > apps))
    return tr("There is no app %1 in the dock. It has %2.").arg(order.number).arg(apps);
  return {};
}

void AppDelegate::perform(const Order& order) {
  if (down_) return;
  if (const QString sentence = refusal(order); !sentence.isEmpty()) return store_->setError(sentence);
  switch (order.kind) {
    case Order::Kind::Toggle:
      commands_->toggleDock();
      break;
    case Order::Kind::CommandBar:
      commands_->toggleCommandBar();
      break;
    case Order::Kind::Focus:
      commands_->focusDock();
      break;
    case Order::Kind::Profile:
      commands_->selectProfile(order.number);
      break;
    case Order::Kind::App:
      commands_->openApp(order.number - 1);
      break;
  }
}

void AppDelegate::open(const QStringList& urls) {
  for (const QString& url : urls) {
    if (down_) return;
    if (const QString path = pathOf(url); isSpace(path))
      commands_->importSpace(path);
    else if (const QString sentence = refusalToOpen(url); !sentence.isEmpty())
      store_->setError(sentence);
    else
      commands_->startApplication(path);
  }
}

QString AppDelegate::refusalToOpen(const QString& url) const {
  const QString path = pathOf(url);
  const QString name = path == url ? url : QFileInfo(path).fileName();
  if (isSpace(path)) return tr("“%1” was not opened. Spaces come with a later version of Tarnwick.").arg(name);
  if (PinnedTiles::isDesktopEntry(path)) return {};
  return tr("“%1” was not opened. Tarnwick starts apps whose desktop entry it is given.").arg(name);
}

void AppDelegate::reopen() {
  if (down_) return;
  if (!setup_.measures && SingleInstance::isStale(setup_.executable) && handOverToTheNewBuild()) return;
  // Whoever opens the program again wants to see it.
  if (commands_->isDockHidden()) commands_->toggleDock();
  commands_->showSettings();
}

bool AppDelegate::handOverToTheNewBuild() {
  // It takes over by asking this copy to quit.
  QProcess build;
  build.setProgram(setup_.executable);
  build.setProcessEnvironment(setup_.environment.variables);
  return build.startDetached();
}

}  // namespace tarnwick
