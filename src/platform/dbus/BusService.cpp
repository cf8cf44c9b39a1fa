#include "platform/dbus/BusService.h"

#include <QDBusArgument>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QMetaObject>

#include "platform/dbus/BusNames.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

void ask(const QDBusConnection& bus, const QDBusMessage& question, QObject* context,
         std::function<void(const QDBusMessage&)> done) {
  if (!bus.isConnected()) {
    // Qt's pending call would never finish.
    QMetaObject::invokeMethod(
        context, [done = std::move(done)] { done(QDBusMessage()); }, Qt::QueuedConnection);
    return;
  }
  auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(question), context);
  QObject::connect(watcher, &QDBusPendingCallWatcher::finished, context,
                   [done = std::move(done)](QDBusPendingCallWatcher* finished) {
                     finished->deleteLater();
                     done(finished->reply());
                   });
}

/// One subscription. It follows the owner by its unique name: Qt would look a well-known one up with a blocking call.
class SignalListener final : public QObject {
  Q_OBJECT
 public:
  SignalListener(const QString& path, const QString& interface, const QString& signal, const QStringList& match,
                 BusService::Handler handler)
      : path_(path), interface_(interface), signal_(signal), match_(match), handler_(std::move(handler)) {}

  void follow(QDBusConnection& bus, const QString& owner) {
    if (!owner_.isEmpty()) {
      bus.disconnect(owner_, path_, interface_, signal_, match_, QString(), this, SLOT(received(QDBusMessage)));
    }
    owner_ = owner;
    if (!owner_.isEmpty()) {
      bus.connect(owner_, path_, interface_, signal_, match_, QString(), this, SLOT(received(QDBusMessage)));
    }
  }

 private Q_SLOTS:
  void received(const QDBusMessage& signal) { handler_(signal); }

 private:
  QString path_;
  QString interface_;
  QString signal_;
  QStringList match_;
  BusService::Handler handler_;
  QString owner_;
};

BusService::BusService(const QDBusConnection& bus, const QString& name, QObject* parent)
    : QObject(parent), bus_(bus), name_(name) {
  if (!bus_.isConnected()) {
    // Reported later like everything else, so that the creator of this object can still connect to it.
    QMetaObject::invokeMethod(
        this, [this] { busLost(); }, Qt::QueuedConnection);
    return;
  }
  bus_.connect(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s, u"org.freedesktop.DBus"_s, u"NameOwnerChanged"_s,
               {name_}, QString(), this, SLOT(nameOwnerChanged(QString, QString, QString)));
  bus_.connect(QString(), u"/org/freedesktop/DBus/Local"_s, u"org.freedesktop.DBus.Local"_s, u"Disconnected"_s, this,
               SLOT(busLost()));
  auto message = QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s,
                                                u"org.freedesktop.DBus"_s, u"GetNameOwner"_s);
  message.setArguments({name_});
  ask(bus_, message, this, [this](const QDBusMessage& reply) {
    // A change that was received in the meantime is newer than this answer.
    if (known_) return;
    become(reply.type() == QDBusMessage::ReplyMessage ? reply.arguments().value(0).toString() : QString());
  });
}

BusService::~BusService() {
  for (const auto& listener : listeners_) listener->follow(bus_, QString());
}

void BusService::become(const QString& owner) {
  if (known_ && owner == owner_) return;
  known_ = true;
  owner_ = owner;
  for (const auto& listener : listeners_) listener->follow(bus_, owner_);
  Q_EMIT ownerChanged();
}

void BusService::nameOwnerChanged(const QString& name, const QString& before, const QString& after) {
  Q_UNUSED(before)
  if (name == name_) become(after);
}

void BusService::busLost() { become(QString()); }

void BusService::call(const QString& path, const QString& interface, const QString& method,
                      const QVariantList& arguments, QObject* context, Handler done) {
  if (!isRunning()) return;
  auto message = QDBusMessage::createMethodCall(owner_, path, interface, method);
  message.setArguments(arguments);
  message.setAutoStartService(false);
  const QPointer<BusService> self(this);
  ask(bus_, message, context, [self, asked = owner_, done = std::move(done)](const QDBusMessage& reply) {
    if (self && self->owner_ == asked) done(reply);
  });
}

void BusService::listen(const QString& path, const QString& interface, const QString& signal, Handler handler,
                        const QStringList& match) {
  listeners_.push_back(std::make_unique<SignalListener>(path, interface, signal, match, std::move(handler)));
  listeners_.back()->follow(bus_, owner_);
}

BusProperties::BusProperties(BusService& service, const QString& path, const QString& interface, QObject* parent)
    : QObject(parent), service_(service), path_(path), interface_(interface) {
  service_.listen(path_, bus::kProperties, u"PropertiesChanged"_s,
                  [self = QPointer(this)](const QDBusMessage& signal) {
                    if (self) self->propertiesChanged(signal);
                  },
                  {interface_});
  connect(&service_, &BusService::ownerChanged, this, &BusProperties::fetch);
  if (service_.isKnown()) QMetaObject::invokeMethod(this, &BusProperties::fetch, Qt::QueuedConnection);
}

void BusProperties::fetch() {
  if (!service_.isRunning()) {
    known_ = true;
    values_.clear();
    Q_EMIT changed();
    return;
  }
  service_.call(path_, bus::kProperties, u"GetAll"_s, {interface_}, this, [this](const QDBusMessage& reply) {
    known_ = true;
    values_ = reply.type() == QDBusMessage::ReplyMessage ? qdbus_cast<QVariantMap>(reply.arguments().value(0))
                                                         : QVariantMap();
    Q_EMIT changed();
  });
}

void BusProperties::propertiesChanged(const QDBusMessage& signal) {
  const auto arguments = signal.arguments();
  if (arguments.size() < 3) return;
  values_.insert(qdbus_cast<QVariantMap>(arguments[1]));
  if (!arguments[2].toStringList().isEmpty()) {
    // Announced without the values: they have to be fetched.
    fetch();
    return;
  }
  Q_EMIT changed();
}

void BusProperties::set(const QString& name, const QVariant& value) {
  service_.call(path_, bus::kProperties, u"Set"_s, {interface_, name, QVariant::fromValue(QDBusVariant(value))}, this,
                [this](const QDBusMessage&) { fetch(); });
}

}  // namespace tarnwick

#include "BusService.moc"
