#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantList>

namespace tarnwick {

/// This program as the session knows it: one well-known name, under which the running copy can be activated, given
/// files and told to act. Without a session bus every call answers false and nothing is ever asked of us.
class SessionApplication : public QObject {
  Q_OBJECT
 public:
  /// Takes the name and listens from now on. False where another copy holds it or there is no bus.
  virtual bool own() = 0;
  /// Lets go of the name.
  virtual void release() = 0;

  // What this process asks of the copy that holds the name. Each waits for at most a second and says whether it
  // arrived.
  virtual bool activateOther() = 0;
  virtual bool openInOther(const QStringList& urls) = 0;
  virtual bool actInOther(const QString& action, const QVariantList& parameter = {}) = 0;

 Q_SIGNALS:
  void activated();
  void openRequested(const QStringList& urls);
  void actionRequested(const QString& action, const QVariantList& parameter);
};

}  // namespace tarnwick
