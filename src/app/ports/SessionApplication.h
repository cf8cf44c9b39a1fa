#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantList>

namespace tarnwick {

/// This program as the session knows it: one well-known name, under which the running copy can be activated, given
/// files and asked to act. Without a session bus every call answers false and nothing is ever asked of us.
class SessionApplication : public QObject {
  Q_OBJECT
 public:
  /// Whether there is a session to ask at all.
  virtual bool isReachable() const = 0;

  /// Takes the name and listens from now on. While another copy holds it this one waits in line and gets the name when
  /// that copy goes. Whether it is ours already.
  virtual bool own() = 0;
  /// Lets go of the name, and of the place in line.
  virtual void release() = 0;

  /// The process of the copy that holds the name; 0 when there is none, or when it is this process.
  virtual qint64 otherProcess() const = 0;

  // What this process asks of the copy that holds the name. Each waits for at most a second and says whether it
  // arrived; one that did not arrive may be asked again without being done twice.
  virtual bool activateOther() = 0;
  virtual bool openInOther(const QStringList& urls) = 0;
  virtual bool actInOther(const QString& action, const QVariantList& parameter = {}) = 0;

 Q_SIGNALS:
  void activated();
  void openRequested(const QStringList& urls);
  void actionRequested(const QString& action, const QVariantList& parameter);
};

}  // namespace tarnwick
