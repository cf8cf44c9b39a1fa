#pragma once

#include <QString>
#include <memory>

#include "app/InstanceSocket.h"
#include "app/ports/SessionApplication.h"

namespace tarnwick {

/// What the session bus does for two copies of the program, through the socket beside the lock of a data folder. Who
/// holds that lock owns it; the others ask.
class SocketSession final : public SessionApplication {
  Q_OBJECT
 public:
  explicit SocketSession(const QString& directory);

  bool isReachable() const override { return true; }
  bool own() override;
  void release() override;
  /// The lock decides that; this one never does.
  qint64 otherProcess() const override { return 0; }
  bool activateOther() override;
  bool openInOther(const QStringList& urls) override;
  bool actInOther(const QString& action, const QVariantList& parameter) override;

  /// Says in a sentence why an action cannot be done; empty where it can. Without it all can.
  std::function<QString(const QString& action, const QVariantList& parameter)> refusal;
  /// Says in a sentence why one of these cannot be opened; empty where all can. Without it all can.
  std::function<QString(const QStringList& urls)> refusalToOpen;
  /// What the running copy said to the last that was asked of it; empty where it took it.
  const QString& refused() const { return refused_; }

  /// Gives the system's dock back because a manual repair asks for it, and answers as RestoreDock reads it. Without it
  /// this copy holds nothing.
  std::function<QJsonObject()> restoreDock;

 private:
  QJsonObject answer(const QJsonObject& request);
  bool ask(QJsonObject request, const QString& kind);

  QString directory_;
  QString refused_;
  InstanceSocket socket_;
};

}  // namespace tarnwick
