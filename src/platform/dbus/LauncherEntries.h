#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QList>
#include <QVariantMap>

#include "apps/ports/LauncherHints.h"

namespace tarnwick {

/// What applications say of themselves to every launcher of the session. Said by a program that then leaves the bus, it
/// no longer counts.
class LauncherEntries final : public LauncherHints {
  Q_OBJECT
 public:
  /// Beyond so many only what is known already is updated: a program misbehaves.
  static constexpr qsizetype kMostEntries = 256;

  explicit LauncherEntries(const QDBusConnection& session) : bus_(session) {}

  void start() override;
  LauncherHint of(const QString& desktopId) const override;

 private Q_SLOTS:
  void updated(const QDBusMessage& signal);
  void ownerChanged(const QString& name, const QString& before, const QString& after);
  void busLost();

 private:
  struct Entry {
    QString desktopId;
    QString sender;
    QVariantMap properties;
  };

  Entry* entry(const QString& desktopId, const QString& sender);
  void follow(const QString& sender, bool follows);
  void drop(const QString& sender);

  QDBusConnection bus_;
  QList<Entry> entries_;  ///< What was updated last is last.
  bool started_ = false;
};

}  // namespace tarnwick
