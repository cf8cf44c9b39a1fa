#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QHash>
#include <list>
#include <memory>

#include "base/Scheduler.h"
#include "media/ports/Players.h"

namespace tarnwick {

/// Players that speak the desktop's media player protocol (MPRIS 2) on the session bus. What they say may be of any
/// type and any length: what does not fit counts as not said.
class MprisPlayers final : public Players {
  Q_OBJECT
 public:
  static constexpr qsizetype kMostPlayers = 32;

  /// `scheduler` must outlive it.
  MprisPlayers(const QDBusConnection& session, Scheduler& scheduler);
  ~MprisPlayers() override;

  void follow(bool wanted) override;
  bool isAvailable() const override { return bus_.isConnected(); }
  bool isKnown() const override { return isKnown_; }
  QList<MediaPlayer> all() const override;
  void read(const QString& service, QObject* context, std::function<void(bool hasAnswered)> done) override;
  void act(const QString& service, const MediaAction& action, QObject* context,
           std::function<void(bool isTaken)> done) override;

  /// What tells two copies of a program apart is left out.
  static QString nameOf(const QString& service);

 private Q_SLOTS:
  void nameOwnerChanged(const QString& name, const QString& before, const QString& after);
  void propertiesChanged(const QDBusMessage& signal);
  void seeked(const QDBusMessage& signal);

 private:
  struct Entry;
  struct Round;

  void listen(bool wanted);
  void list();
  void add(const QString& service, const QString& owner);
  void remove(const QString& service);
  Entry* find(const QString& service);
  Entry* ownedBy(const QString& owner);
  /// Calls `done` later with the reply, or with nothing where it went away or the time ran out.
  void call(const QString& service, const QString& interface, const QString& method, const QVariantList& arguments,
            QObject* context, std::function<void(const QDBusMessage&)> done);
  void fetch(const QString& service, std::function<void(bool hasAnswered)> done);
  void fetchPosition(const QString& service);
  /// Takes what a player said of itself. Whether it plays on from where it was is asked afterwards.
  void take(Entry& entry, const QVariantMap& properties);
  void moveToFront(const QString& service);

  QDBusConnection bus_;
  Scheduler& scheduler_;
  std::list<Entry> entries_;  ///< The one that began to play last first.
  bool isFollowing_ = false;
  bool isKnown_ = false;
  quint64 run_ = 0;  ///< What was asked before it stopped to follow counts for nothing.
};

}  // namespace tarnwick
