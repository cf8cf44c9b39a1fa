#include "app/Orders.h"

#include <QFileInfo>
#include <QProcess>
#include <QUrl>
#include <optional>
#include <utility>

#include "app/HotKeyTable.h"
#include "app/RestoreDock.h"
#include "app/SingleInstance.h"
#include "app/SocketSession.h"
#include "base/DomainError.h"
#include "base/LocalFigures.h"
#include "store/AppStore.h"
#include "store/Commands.h"
#include "widgets/PinnedTiles.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

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

Orders::Orders(AppStore& store, Commands& commands, OrdersSetup setup)
    : store_(store), commands_(commands), setup_(std::move(setup)) {}

Orders::~Orders() { forgetSocket(); }

void Orders::listen() {
  listenTo(setup_.application);
  setup_.socket.restoreDock = [this] { return restoreForOthers(); };
  setup_.socket.refusal = [this](const QString& action, const QVariantList& parameter) {
    const auto order = orderOf(action, parameter);
    return order ? refusal(*order) : QString();
  };
  setup_.socket.refusalToOpen = [](const QStringList& urls) {
    QStringList sentences;
    for (const QString& url : urls)
      if (const QString sentence = refusalToOpen(url); !sentence.isEmpty()) sentences << sentence;
    return sentences.join(u'\n');
  };
  listenTo(setup_.socket);
}

void Orders::release() {
  setup_.application.release();
  setup_.socket.release();
}

/// It outlives this.
void Orders::forgetSocket() {
  setup_.socket.restoreDock = nullptr;
  setup_.socket.refusal = nullptr;
  setup_.socket.refusalToOpen = nullptr;
}

void Orders::listenTo(SessionApplication& session) {
  connect(&session, &SessionApplication::activated, this, &Orders::reopen);
  connect(&session, &SessionApplication::openRequested, this, &Orders::open);
  connect(&session, &SessionApplication::actionRequested, this,
          [this](const QString& action, const QVariantList& parameter) {
            if (action == "quit"_L1) return setup_.quit();
            if (const auto order = orderOf(action, parameter)) perform(*order);
          });
  session.own();
}

QJsonObject Orders::restoreForOthers() {
  const QLatin1StringView held(RestoreDock::kHeld);
  try {
    return {{held, !stopped_ && setup_.giveSystemDockBack()}};
  } catch (const DomainError& failure) {
    store_.setError(failure.message());
    return {{held, true}, {QLatin1StringView(RestoreDock::kFailure), failure.message()}};
  }
}

QString Orders::refusal(const Order& order) const {
  if (order.kind == Order::Kind::CommandBar && !commands_.can(Commands::Optional::CommandBar))
    return tr("The command bar cannot be opened on this desktop.");
  const qsizetype profiles = store_.config().profiles.size();
  if (order.kind == Order::Kind::Profile && (order.number < 0 || order.number >= profiles)) {
    return profiles == 1 ? tr("There is no profile %1. The only one is 0.").arg(LocalFigures::number(order.number))
                         : tr("There is no profile %1. The first one is 0, the last one %2.")
                               .arg(LocalFigures::number(order.number), LocalFigures::number(profiles - 1));
  }
  const qsizetype apps = setup_.apps();
  if (order.kind == Order::Kind::App && (order.number < 1 || order.number > apps))
    return tr("There is no app %1 in the dock. It has %2.")
        .arg(LocalFigures::number(order.number), LocalFigures::number(apps));
  return {};
}

void Orders::perform(const Order& order) {
  if (stopped_) return;
  if (const QString sentence = refusal(order); !sentence.isEmpty()) return store_.setError(sentence);
  switch (order.kind) {
    case Order::Kind::Toggle:
      commands_.toggleDock();
      break;
    case Order::Kind::CommandBar:
      commands_.toggleCommandBar();
      break;
    case Order::Kind::Focus:
      commands_.focusDock();
      break;
    case Order::Kind::Profile:
      commands_.selectProfile(order.number);
      break;
    case Order::Kind::App:
      commands_.openApp(order.number - 1);
      break;
  }
}

void Orders::open(const QStringList& urls) {
  for (const QString& url : urls) {
    if (stopped_) return;
    if (const QString path = pathOf(url); isSpace(path))
      commands_.importSpace(path);
    else if (const QString sentence = refusalToOpen(url); !sentence.isEmpty())
      store_.setError(sentence);
    else
      commands_.startApplication(path);
  }
}

QString Orders::refusalToOpen(const QString& url) {
  const QString path = pathOf(url);
  const QString name = path == url ? url : QFileInfo(path).fileName();
  if (isSpace(path)) return tr("“%1” was not opened. Spaces come with a later version of Tarnwick.").arg(name);
  if (PinnedTiles::isDesktopEntry(path)) return {};
  return tr("“%1” was not opened. Tarnwick only opens the desktop entries of apps (.desktop files).").arg(name);
}

void Orders::reopen() {
  if (stopped_) return;
  if (setup_.yieldsToNewBuilds && SingleInstance::isStale(setup_.executable) && handOverToTheNewBuild()) return;
  // A user who opens the program again wants to see it.
  if (commands_.isDockHidden()) commands_.toggleDock();
  commands_.showSettings();
}

void Orders::performKey(quint32 identifier) {
  if (identifier == HotKeyTable::kToggle) perform({Order::Kind::Toggle, 0});
  if (identifier == HotKeyTable::kCommandBar) perform({Order::Kind::CommandBar, 0});
  if (identifier == HotKeyTable::kFocus) perform({Order::Kind::Focus, 0});
  if (identifier >= HotKeyTable::kFirstApp) {
    commands_.openApp(static_cast<int>(identifier - HotKeyTable::kFirstApp));
  } else if (identifier >= HotKeyTable::kFirstProfile) {
    perform({Order::Kind::Profile, static_cast<int>(identifier - HotKeyTable::kFirstProfile)});
  }
}

bool Orders::handOverToTheNewBuild() {
  // It takes over by asking this copy to quit.
  QProcess build;
  build.setProgram(setup_.executable);
  build.setProcessEnvironment(setup_.environment.variables);
  return build.startDetached();
}

}  // namespace tarnwick
