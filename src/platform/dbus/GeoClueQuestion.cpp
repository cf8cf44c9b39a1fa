#include "platform/dbus/GeoClueQuestion.h"

#include <QDBusArgument>
#include <QDBusError>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QPointer>

#include "base/DesktopId.h"
#include "platform/dbus/BusNames.h"
#include "platform/dbus/BusService.h"

namespace tarnwick {

using namespace Qt::StringLiterals;
using Reason = LocationFailure::Reason;

namespace {

constexpr auto kGeoClue = "org.freedesktop.GeoClue2"_L1;
constexpr auto kManagerPath = "/org/freedesktop/GeoClue2/Manager"_L1;
constexpr auto kManager = "org.freedesktop.GeoClue2.Manager"_L1;
constexpr auto kClient = "org.freedesktop.GeoClue2.Client"_L1;
constexpr auto kLocation = "org.freedesktop.GeoClue2.Location"_L1;

/// What GeoClue calls the accuracy of a city; none at all is 0.
constexpr uint kAccuracyOfCity = 4;

void release(const QDBusConnection& bus, const QString& owner, const QString& client) {
  auto stop = QDBusMessage::createMethodCall(owner, client, kClient, u"Stop"_s);
  auto removal = QDBusMessage::createMethodCall(owner, kManagerPath, kManager, u"DeleteClient"_s);
  removal.setArguments({QVariant::fromValue(QDBusObjectPath(client))});
  for (QDBusMessage* message : {&stop, &removal}) {
    message->setAutoStartService(false);
    // Nobody waits for the answer.
    bus.send(*message);
  }
}

QString clientIn(const QDBusMessage& reply) {
  return reply.type() == QDBusMessage::ReplyMessage ? qvariant_cast<QDBusObjectPath>(reply.arguments().value(0)).path()
                                                    : QString();
}

QVariant propertyIn(const QDBusMessage& reply) {
  return qvariant_cast<QDBusVariant>(reply.arguments().value(0)).variant();
}

}  // namespace

GeoClueQuestion::GeoClueQuestion(const QDBusConnection& system, std::chrono::milliseconds patience) : bus_(system) {
  if (!bus_.isConnected()) {
    end(Reason::Disabled);
    return;
  }
  deadline_.setSingleShot(true);
  connect(&deadline_, &QTimer::timeout, this, [this] { end(Reason::TimedOut); });
  deadline_.start(patience);
  bus_.connect(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s, u"org.freedesktop.DBus"_s, u"NameOwnerChanged"_s,
               {QString(kGeoClue)}, QString(), this, SLOT(ownerChanged(QString, QString, QString)));
  bus_.connect(QString(), u"/org/freedesktop/DBus/Local"_s, u"org.freedesktop.DBus.Local"_s, u"Disconnected"_s, this,
               SLOT(busLost()));
  makeClient();
}

void GeoClueQuestion::withdraw() { end(std::nullopt); }

// The answer is waited for even when the question has ended, since it may bring a client that has to go.
void GeoClueQuestion::makeClient() {
  const auto message = QDBusMessage::createMethodCall(kGeoClue, kManagerPath, kManager, u"CreateClient"_s);
  auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(message), QCoreApplication::instance());
  connect(watcher, &QDBusPendingCallWatcher::finished, watcher,
          [self = QPointer(this), bus = bus_](QDBusPendingCallWatcher* finished) {
            finished->deleteLater();
            const QDBusMessage reply = finished->reply();
            if (self && !self->ended_.isOver()) return self->takeClient(reply);
            if (const QString client = clientIn(reply); !client.isEmpty()) release(bus, reply.service(), client);
          });
}

void GeoClueQuestion::takeClient(const QDBusMessage& reply) {
  const QString client = clientIn(reply);
  if (client.isEmpty()) return fail(reply);
  owner_ = reply.service();
  client_ = client;
  bus_.connect(owner_, client_, kClient, u"LocationUpdated"_s, this, SLOT(located(QDBusObjectPath, QDBusObjectPath)));
  describeClient();
}

void GeoClueQuestion::describeClient() {
  setOfClient(u"DesktopId"_s, QString(kDesktopId), [this](const QDBusMessage&) {
    setOfClient(u"RequestedAccuracyLevel"_s, kAccuracyOfCity, [this](const QDBusMessage&) { start(); });
  });
}

void GeoClueQuestion::start() {
  auto message = QDBusMessage::createMethodCall(owner_, client_, kClient, u"Start"_s);
  ask(bus_, message, this, [this](const QDBusMessage& reply) {
    if (ended_.isOver() || reply.type() == QDBusMessage::ReplyMessage) return;
    if (QDBusError(reply).type() == QDBusError::AccessDenied)
      explainRefusal();
    else
      fail(reply);
  });
}

/// It is refused in the same words where the user has switched locations off altogether.
void GeoClueQuestion::explainRefusal() {
  auto message = QDBusMessage::createMethodCall(owner_, kManagerPath, bus::kProperties, u"Get"_s);
  message.setArguments({QString(kManager), u"AvailableAccuracyLevel"_s});
  ask(bus_, message, this, [this](const QDBusMessage& reply) {
    const QVariant level = propertyIn(reply);
    end(level.isValid() && level.toUInt() == 0 ? Reason::Disabled : Reason::Refused);
  });
}

void GeoClueQuestion::located(const QDBusObjectPath& before, const QDBusObjectPath& now) {
  Q_UNUSED(before)
  // The first is enough, and a path that leads nowhere is none.
  if (ended_.isOver() || isReading_ || now.path().size() <= 1) return;
  isReading_ = true;
  read(now.path());
}

void GeoClueQuestion::read(const QString& location) {
  call(location, bus::kProperties, u"GetAll"_s, {QString(kLocation)}, [this](const QDBusMessage& reply) {
    const auto values = qdbus_cast<QVariantMap>(reply.arguments().value(0));
    bool hasLatitude = false;
    bool hasLongitude = false;
    const Coordinate found{values.value(u"Latitude"_s).toDouble(&hasLatitude),
                           values.value(u"Longitude"_s).toDouble(&hasLongitude)};
    if (!hasLatitude || !hasLongitude) return end(Reason::Disabled);
    coordinate_ = found;
    end(std::nullopt);
  });
}

void GeoClueQuestion::call(const QString& path, const QString& interface, const QString& method,
                           const QVariantList& arguments, Next next) {
  auto message = QDBusMessage::createMethodCall(owner_, path, interface, method);
  message.setArguments(arguments);
  ask(bus_, message, this, [this, next = std::move(next)](const QDBusMessage& reply) {
    if (ended_.isOver()) return;
    if (reply.type() == QDBusMessage::ReplyMessage)
      next(reply);
    else
      fail(reply);
  });
}

void GeoClueQuestion::setOfClient(const QString& property, const QVariant& value, Next next) {
  call(client_, bus::kProperties, u"Set"_s, {QString(kClient), property, QVariant::fromValue(QDBusVariant(value))},
       std::move(next));
}

void GeoClueQuestion::ownerChanged(const QString& name, const QString& before, const QString& after) {
  Q_UNUSED(name)
  Q_UNUSED(before)
  // Whoever comes in its place knows nothing of the question. It may have been started for it, though.
  if (!owner_.isEmpty() && after != owner_) end(Reason::Disabled);
}

void GeoClueQuestion::busLost() { end(Reason::Disabled); }

void GeoClueQuestion::fail(const QDBusMessage& error) {
  switch (QDBusError(error).type()) {
    case QDBusError::AccessDenied:
      return end(Reason::Refused);
    case QDBusError::NoReply:
    case QDBusError::Timeout:
    case QDBusError::TimedOut:
      return end(Reason::TimedOut);
    default:
      return end(Reason::Disabled);
  }
}

void GeoClueQuestion::end(std::optional<Reason> failure) {
  if (ended_.isOver()) return;
  deadline_.stop();
  failure_ = failure;
  if (!client_.isEmpty()) release(bus_, owner_, client_);
  ended_.happen();
}

}  // namespace tarnwick
