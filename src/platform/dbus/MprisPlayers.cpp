#include "platform/dbus/MprisPlayers.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QPointer>
#include <algorithm>
#include <array>
#include <cmath>

#include "base/ForeignText.h"
#include "platform/dbus/BusNames.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr auto kNames = "org.mpris.MediaPlayer2."_L1;
constexpr auto kPath = "/org/mpris/MediaPlayer2"_L1;
constexpr auto kRoot = "org.mpris.MediaPlayer2"_L1;
constexpr auto kPlayer = "org.mpris.MediaPlayer2.Player"_L1;
constexpr auto kDaemon = "org.freedesktop.DBus"_L1;
constexpr auto kDaemonPath = "/org/freedesktop/DBus"_L1;
constexpr double kMicroseconds = 1e6;
/// A player that says nothing holds up a reading of all no longer than this, in seconds.
constexpr double kPatienceForAll = 2;
/// The place in a track is asked for so long after it changed: much is announced at once.
constexpr double kPositionDelay = 0.1;
constexpr qsizetype kLongestAddress = 4096;

QVariant plain(const QVariant& value) {
  return value.metaType() == QMetaType::fromType<QDBusVariant>() ? value.value<QDBusVariant>().variant() : value;
}

/// A text, or the text of a list of texts; empty for anything else.
QString text(const QVariant& value) {
  if (value.typeId() == QMetaType::QString) return ForeignText::line(value.toString());
  QStringList list;
  if (value.typeId() == QMetaType::QStringList) list = value.toStringList();
  if (value.metaType() == QMetaType::fromType<QDBusArgument>()) {
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() == "as"_L1) list = qdbus_cast<QStringList>(argument);
  }
  constexpr qsizetype kMostNames = 8;
  return ForeignText::line(list.mid(0, kMostNames).join(u", "_s));
}

double number(const QVariant& value) {
  switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double: {
      const double found = value.toDouble();
      return std::isfinite(found) ? found : 0;
    }
    default:
      return 0;
  }
}

QUrl address(const QVariant& value) {
  if (value.typeId() != QMetaType::QString) return {};
  const QString found = value.toString();
  if (found.isEmpty() || found.size() > kLongestAddress) return {};
  // Some give a path where an address belongs.
  return found.startsWith(u'/') ? QUrl::fromLocalFile(found) : QUrl(found, QUrl::StrictMode);
}

QVariantMap map(const QVariant& value) {
  if (value.metaType() != QMetaType::fromType<QDBusArgument>()) return value.toMap();
  const auto argument = value.value<QDBusArgument>();
  return argument.currentSignature() == "a{sv}"_L1 ? qdbus_cast<QVariantMap>(argument) : QVariantMap();
}

QString trackIdOf(const QVariant& value) {
  if (value.metaType() == QMetaType::fromType<QDBusObjectPath>()) return value.value<QDBusObjectPath>().path();
  return value.typeId() == QMetaType::QString ? value.toString() : QString();
}

}  // namespace

struct MprisPlayers::Entry {
  MediaPlayer player;
  QString owner;
  QString trackId;
  double rate = 1;
  bool canControl = true;
  bool canNext = true;
  bool canPrevious = true;
  JobHandle positionSoon;
};

/// Several that were asked, and who waits for them.
struct MprisPlayers::Round {
  QPointer<QObject> context;
  std::function<void(bool)> done;
  qsizetype left = 0;
  bool haveAnswered = true;
  JobHandle end;

  void answer(bool hasAnswered) {
    haveAnswered = haveAnswered && hasAnswered;
    if (--left <= 0) finish();
  }
  void finish() {
    if (!done) return;
    const auto tell = std::exchange(done, nullptr);
    end.reset();
    if (context) tell(haveAnswered && left <= 0);
  }
};

MprisPlayers::MprisPlayers(const QDBusConnection& session, Scheduler& scheduler)
    : bus_(session), scheduler_(scheduler) {}

MprisPlayers::~MprisPlayers() = default;

QString MprisPlayers::nameOf(const QString& service) {
  const QString name = service.sliced(std::min(service.size(), kNames.size()));
  return name.section(".instance"_L1, 0, 0);
}

QList<MediaPlayer> MprisPlayers::all() const {
  QList<MediaPlayer> players;
  for (const Entry& entry : entries_) players.append(entry.player);
  return players;
}

// --- Who runs -------------------------------------------------------------------------------------------------------

void MprisPlayers::follow(bool wanted) {
  if (!isAvailable() || std::exchange(isFollowing_, wanted) == wanted) return;
  ++run_;
  entries_.clear();
  isKnown_ = false;
  listen(wanted);
  if (wanted) list();
}

void MprisPlayers::listen(bool wanted) {
  const auto each = [this, wanted](const QString& service, const QString& path, const QString& interface,
                                   const QString& signal, const char* slot) {
    wanted ? bus_.connect(service, path, interface, signal, this, slot)
           : bus_.disconnect(service, path, interface, signal, this, slot);
  };
  each(kDaemon, kDaemonPath, kDaemon, u"NameOwnerChanged"_s, SLOT(nameOwnerChanged(QString, QString, QString)));
  each({}, kPath, bus::kProperties, u"PropertiesChanged"_s, SLOT(propertiesChanged(QDBusMessage)));
  each({}, kPath, kPlayer, u"Seeked"_s, SLOT(seeked(QDBusMessage)));
}

void MprisPlayers::list() {
  const auto run = run_;
  const auto askBus = [this](const QString& method, const QVariantList& arguments, auto done) {
    QDBusMessage question = QDBusMessage::createMethodCall(kDaemon, kDaemonPath, kDaemon, method);
    question.setArguments(arguments);
    auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(question), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [done](QDBusPendingCallWatcher* finished) {
      finished->deleteLater();
      done(finished->reply());
    });
  };
  askBus(u"ListNames"_s, {}, [this, run, askBus](const QDBusMessage& reply) {
    if (run != run_) return;
    QStringList names = reply.arguments().value(0).toStringList().filter(kNames);
    names.removeIf([](const QString& name) { return !name.startsWith(kNames); });
    auto round = std::make_shared<Round>();
    round->context = this;
    round->left = names.size();
    round->done = [this, run](bool) {
      if (run != run_) return;
      isKnown_ = true;
      Q_EMIT changed();
    };
    if (names.isEmpty()) return round->finish();
    for (const QString& name : std::as_const(names)) {
      askBus(u"GetNameOwner"_s, {name}, [this, run, name, round](const QDBusMessage& answer) {
        if (run != run_) return;
        const QString owner = answer.arguments().value(0).toString();
        if (answer.type() == QDBusMessage::ReplyMessage && !owner.isEmpty() && !find(name)) add(name, owner);
        round->answer(true);
      });
    }
  });
}

void MprisPlayers::nameOwnerChanged(const QString& name, const QString&, const QString& after) {
  if (!isFollowing_ || !name.startsWith(kNames)) return;
  remove(name);
  if (!after.isEmpty()) add(name, after);
  if (isKnown_) Q_EMIT changed();
}

void MprisPlayers::add(const QString& service, const QString& owner) {
  if (static_cast<qsizetype>(entries_.size()) >= kMostPlayers) return;
  Entry& entry = entries_.emplace_back();
  entry.player.service = service;
  entry.player.name = nameOf(service);
  entry.player.read = scheduler_.now();
  entry.owner = owner;
  call(service, bus::kProperties, u"GetAll"_s, {QString(kRoot)}, this, [this, service](const QDBusMessage& reply) {
    Entry* const found = find(service);
    if (!found || reply.type() != QDBusMessage::ReplyMessage) return;
    const QVariantMap properties = map(reply.arguments().value(0));
    found->player.title = text(plain(properties.value(u"Identity"_s)));
    found->player.desktopEntry = text(plain(properties.value(u"DesktopEntry"_s)));
    if (isKnown_) Q_EMIT changed();
  });
  fetch(service, [this](bool) {
    if (isKnown_) Q_EMIT changed();
  });
}

void MprisPlayers::remove(const QString& service) {
  entries_.remove_if([&](const Entry& entry) { return entry.player.service == service; });
}

MprisPlayers::Entry* MprisPlayers::find(const QString& service) {
  const auto found =
      std::ranges::find_if(entries_, [&](const Entry& entry) { return entry.player.service == service; });
  return found == entries_.end() ? nullptr : &*found;
}

MprisPlayers::Entry* MprisPlayers::ownedBy(const QString& owner) {
  const auto found = std::ranges::find(entries_, owner, &Entry::owner);
  return found == entries_.end() ? nullptr : &*found;
}

void MprisPlayers::moveToFront(const QString& service) {
  const auto found =
      std::ranges::find_if(entries_, [&](const Entry& entry) { return entry.player.service == service; });
  if (found != entries_.end()) entries_.splice(entries_.begin(), entries_, found);
}

// --- What they say --------------------------------------------------------------------------------------------------

void MprisPlayers::call(const QString& service, const QString& interface, const QString& method,
                        const QVariantList& arguments, QObject* context,
                        std::function<void(const QDBusMessage&)> done) {
  QDBusMessage question = QDBusMessage::createMethodCall(service, kPath, interface, method);
  question.setArguments(arguments);
  question.setAutoStartService(false);
  constexpr int kMilliseconds = 1000;
  auto* watcher =
      new QDBusPendingCallWatcher(bus_.asyncCall(question, static_cast<int>(kPatience * kMilliseconds)), context);
  connect(watcher, &QDBusPendingCallWatcher::finished, context,
          [done = std::move(done), run = run_, self = QPointer(this)](QDBusPendingCallWatcher* finished) {
            finished->deleteLater();
            if (self) done(run == self->run_ ? finished->reply() : QDBusMessage());
          });
}

void MprisPlayers::fetch(const QString& service, std::function<void(bool hasAnswered)> done) {
  call(service, bus::kProperties, u"GetAll"_s, {QString(kPlayer)}, this,
       [this, service, done = std::move(done)](const QDBusMessage& reply) {
         Entry* const entry = find(service);
         const bool hasAnswered = entry && reply.type() == QDBusMessage::ReplyMessage;
         if (hasAnswered) {
           entry->player.isRead = true;
           const QVariantMap properties = map(reply.arguments().value(0));
           take(*entry, properties);
           if (Entry* const still = find(service)) {
             still->player.elapsed = std::max(0.0, number(plain(properties.value(u"Position"_s))) / kMicroseconds);
             still->player.read = scheduler_.now();
           }
         }
         done(hasAnswered);
       });
}

void MprisPlayers::read(const QString& service, QObject* context, std::function<void(bool hasAnswered)> done) {
  auto round = std::make_shared<Round>();
  round->context = context;
  round->done = std::move(done);
  QStringList services{service};
  if (service.isEmpty()) {
    services.clear();
    for (const Entry& entry : entries_) services.append(entry.player.service);
    round->end = scheduler_.after(kPatienceForAll, [round] { round->finish(); });
  }
  round->left = services.size();
  if (services.isEmpty()) round->end = scheduler_.after(0, [round] { round->finish(); });
  for (const QString& each : std::as_const(services)) fetch(each, [round](bool answered) { round->answer(answered); });
}

void MprisPlayers::take(Entry& entry, const QVariantMap& properties) {
  using Status = MediaPlayer::Status;
  MediaPlayer& player = entry.player;
  const QDateTime now = scheduler_.now();
  const bool wasPlaying = player.status == Status::Playing;
  // Where it is by now, until it says so itself.
  player.elapsed = PlaybackSnapshot::of(player, {}).position(now);
  player.read = now;
  const auto has = [&](const QString& name, const auto& set) {
    if (const auto found = properties.constFind(name); found != properties.cend()) set(plain(*found));
  };
  has(u"PlaybackStatus"_s, [&](const QVariant& value) {
    const QString status = value.toString();
    player.status = status == "Playing"_L1 ? Status::Playing : status == "Paused"_L1 ? Status::Paused : Status::Stopped;
  });
  has(u"CanSeek"_s, [&](const QVariant& value) { player.canSeek = value.toBool(); });
  has(u"CanControl"_s, [&](const QVariant& value) { entry.canControl = value.toBool(); });
  has(u"CanGoNext"_s, [&](const QVariant& value) { entry.canNext = value.toBool(); });
  has(u"CanGoPrevious"_s, [&](const QVariant& value) { entry.canPrevious = value.toBool(); });
  has(u"Metadata"_s, [&](const QVariant& value) {
    const QVariantMap metadata = map(value);
    const auto told = [&](const char* key) { return plain(metadata.value(QLatin1StringView(key))); };
    const QString track = text(told("xesam:title"));
    const QString id = trackIdOf(told("mpris:trackid"));
    if (track != player.track || id != entry.trackId) player.elapsed = 0;
    player.track = track;
    entry.trackId = id;
    player.artist = text(told("xesam:artist"));
    player.album = text(told("xesam:album"));
    player.duration = std::max(0.0, number(told("mpris:length")) / kMicroseconds);
    player.artwork = address(told("mpris:artUrl"));
    player.address = address(told("xesam:url"));
  });
  if (!wasPlaying && player.status == Status::Playing) moveToFront(player.service);
}

void MprisPlayers::propertiesChanged(const QDBusMessage& signal) {
  Entry* const entry = ownedBy(signal.service());
  if (!entry || signal.arguments().value(0).toString() != kPlayer) return;
  entry->player.isRead = true;
  const QVariantMap properties = map(signal.arguments().value(1));
  take(*entry, properties);
  const QString service = entry->player.service;
  const bool moves = std::ranges::any_of(std::array{u"PlaybackStatus"_s, u"Metadata"_s, u"Rate"_s},
                                         [&](const QString& name) { return properties.contains(name); });
  // One that only says that something is different now is asked what.
  const bool isVague = !signal.arguments().value(2).toStringList().isEmpty();
  if (isVague) {
    fetch(service, [this](bool) { Q_EMIT changed(); });
  } else if (moves && !entry->positionSoon) {
    entry->positionSoon = scheduler_.after(kPositionDelay, [this, service] { fetchPosition(service); });
  }
  Q_EMIT changed();
}

void MprisPlayers::fetchPosition(const QString& service) {
  if (Entry* const entry = find(service)) entry->positionSoon.reset();
  call(service, bus::kProperties, u"Get"_s, {QString(kPlayer), u"Position"_s}, this,
       [this, service](const QDBusMessage& reply) {
         Entry* const entry = find(service);
         if (!entry || reply.type() != QDBusMessage::ReplyMessage) return;
         entry->player.elapsed = std::max(0.0, number(plain(reply.arguments().value(0))) / kMicroseconds);
         entry->player.read = scheduler_.now();
         Q_EMIT changed();
       });
}

void MprisPlayers::seeked(const QDBusMessage& signal) {
  Entry* const entry = ownedBy(signal.service());
  if (!entry) return;
  entry->player.elapsed = std::max(0.0, number(signal.arguments().value(0)) / kMicroseconds);
  entry->player.read = scheduler_.now();
  Q_EMIT changed();
}

// --- Commands -------------------------------------------------------------------------------------------------------

void MprisPlayers::act(const QString& service, const MediaAction& action, QObject* context,
                       std::function<void(bool isTaken)> done) {
  using Kind = MediaAction::Kind;
  const Entry* const entry = find(service);
  const auto takes = [&] {
    if (!entry || !entry->canControl) return false;
    if (action.kind == Kind::Next) return entry->canNext;
    if (action.kind == Kind::Previous) return entry->canPrevious;
    return action.kind != Kind::Seek || entry->player.canSeek;
  };
  if (!takes()) {
    QMetaObject::invokeMethod(
        context, [done = std::move(done)] { done(false); }, Qt::QueuedConnection);
    return;
  }
  const auto send = [&](const QString& method, const QVariantList& arguments) {
    call(service, kPlayer, method, arguments, context,
         [done = std::move(done)](const QDBusMessage& reply) { done(reply.type() == QDBusMessage::ReplyMessage); });
  };
  const auto microseconds = [](double seconds) { return QVariant(qint64(std::llround(seconds * kMicroseconds))); };
  switch (action.kind) {
    case Kind::Toggle:
      return send(u"PlayPause"_s, {});
    case Kind::Next:
      return send(u"Next"_s, {});
    case Kind::Previous:
      return send(u"Previous"_s, {});
    case Kind::Seek: {
      const QDBusObjectPath track(entry->trackId);
      if (!track.path().isEmpty() && !track.path().endsWith("/NoTrack"_L1))
        return send(u"SetPosition"_s, {QVariant::fromValue(track), microseconds(action.position)});
      // One that does not name what it plays can be sent a distance.
      const double here = PlaybackSnapshot::of(entry->player, {}).position(scheduler_.now());
      return send(u"Seek"_s, {microseconds(action.position - here)});
    }
  }
}

}  // namespace tarnwick
