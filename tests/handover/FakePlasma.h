#pragma once

#include <QDBusMessage>
#include <QMutex>
#include <QObject>
#include <QRegularExpression>
#include <QThread>
#include <atomic>

#include "handover/Docks.h"

namespace tarnwick::testing {

/// A shell that has its name and takes every call, but answers none.
class MutePlasma : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.kde.PlasmaShell")
 public:
  MutePlasma() : owner_(QStringLiteral("org.kde.plasmashell")) {
    owner_.bus().registerObject(QStringLiteral("/PlasmaShell"), this, QDBusConnection::ExportScriptableSlots);
    moveToThread(&thread_);
    thread_.start();
  }
  ~MutePlasma() override {
    thread_.quit();
    thread_.wait();
  }
  int calls() const { return calls_; }

 public Q_SLOTS:
  Q_SCRIPTABLE QString evaluateScript(const QString&, const QDBusMessage& call) {
    call.setDelayedReply(true);
    ++calls_;
    return {};
  }

 private:
  std::atomic<int> calls_ = 0;
  NameOwner owner_;
  QThread thread_;
};

/// The script interface of Plasma's shell, as far as our scripts use it, on a thread of its own.
class FakePlasma : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.kde.PlasmaShell")
 public:
  explicit FakePlasma(const QStringList& panels) : panels_(panels), owner_(QStringLiteral("org.kde.plasmashell")) {
    owner_.bus().registerObject(QStringLiteral("/PlasmaShell"), this, QDBusConnection::ExportScriptableSlots);
    moveToThread(&thread_);
    thread_.start();
  }
  ~FakePlasma() override {
    thread_.quit();
    thread_.wait();
  }
  /// Each "id location hiding".
  QStringList panels() const {
    const QMutexLocker lock(&mutex_);
    return panels_;
  }
  void setPanels(const QStringList& panels) {
    const QMutexLocker lock(&mutex_);
    panels_ = panels;
  }
  /// How many scripts were run.
  int questions() const {
    const QMutexLocker lock(&mutex_);
    return questions_;
  }

 public Q_SLOTS:
  Q_SCRIPTABLE QString evaluateScript(const QString& script) {
    const QMutexLocker lock(&mutex_);
    ++questions_;
    static const QRegularExpression change(QStringLiteral("panelById\\((\\d+)\\)\\.hiding = \"(\\w+)\""));
    const QRegularExpressionMatch match = change.match(script);
    QString printed;
    for (QString& panel : panels_) {
      if (match.hasMatch() && panel.section(u' ', 0, 0) == match.captured(1)) {
        panel = panel.section(u' ', 0, 1) + u' ' + match.captured(2);
      }
      if (script.contains(QStringLiteral("panels()"))) printed += u'<' + panel + u'>';
    }
    return printed;
  }

 private:
  mutable QMutex mutex_;
  QStringList panels_;
  int questions_ = 0;
  NameOwner owner_;
  QThread thread_;
};

}  // namespace tarnwick::testing
