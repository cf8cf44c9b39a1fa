#pragma once

#include <QJsonObject>
#include <QObject>
#include <QStringList>
#include <functional>

#include "app/CommandLine.h"
#include "apps/LaunchEnvironment.h"

namespace tarnwick {

class AppStore;
class Commands;
class SessionApplication;
class SocketSession;

/// What orders are carried out by. References outlive them.
struct OrdersSetup {
  SessionApplication& application;  ///< This program on the session bus.
  SocketSession& socket;            ///< What other copies of the program reach it by where there is no bus.
  QString executable;
  /// What a new build of the program is started with.
  LaunchEnvironment environment;
  bool yieldsToNewBuilds = true;
  std::function<qsizetype()> apps;           ///< How many apps the dock has that was acted on last.
  std::function<bool()> giveSystemDockBack;  ///< Whether anything was held. May throw DomainError.
  std::function<void()> quit;                ///< Ends the program at once.
};

/// What is asked of the running program from outside its windows: by the session, by another copy, by the command line
/// and by keys. Each order is done, or is answered with a sentence that says why not. Main thread only.
class Orders final : public QObject {
  Q_OBJECT
 public:
  Orders(AppStore& store, Commands& commands, OrdersSetup setup);
  ~Orders() override;

  /// Takes the program's name and listens.
  void listen();
  /// Nothing that is asked from now on is done.
  void stop() { stopped_ = true; }
  /// Lets go of the name.
  void release();

  /// Does it, or shows why it cannot be done.
  void perform(const Order& order);
  /// Does what a key stands for.
  void performKey(quint32 identifier);
  /// Why an order cannot be done now, as a sentence; empty where it can.
  QString refusal(const Order& order) const;
  /// Why a file or an address is not opened, as a sentence; empty where it may be. Does not look at the file.
  static QString refusalToOpen(const QString& url);
  /// Files handed to the program: Space files are imported and desktop entries started; of others it is said that they
  /// are not opened.
  void open(const QStringList& urls);
  /// The user opened the program while it runs.
  void reopen();

 private:
  void listenTo(SessionApplication& session);
  void forgetSocket();
  QJsonObject restoreForOthers();
  bool handOverToTheNewBuild();

  AppStore& store_;
  Commands& commands_;
  OrdersSetup setup_;
  bool stopped_ = false;
};

}  // namespace tarnwick
