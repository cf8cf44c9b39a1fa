#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <functional>
#include <memory>
#include <vector>

namespace tarnwick {

class SignalListener;

/// Sends `question` and runs `done` with the reply or the error, later and never after `context` is gone. Without a bus
/// `done` gets an invalid message.
void ask(const QDBusConnection& bus, const QDBusMessage& question, QObject* context,
         std::function<void(const QDBusMessage&)> done);

/// The owner of a well-known name on a bus. The owner of the name is followed by signals, not polled; nothing here
/// ever blocks, and no service is started by being watched. Without a bus the service simply isn't running.
class BusService final : public QObject {
  Q_OBJECT
 public:
  using Handler = std::function<void(const QDBusMessage&)>;

  BusService(const QDBusConnection& bus, const QString& name, QObject* parent = nullptr);
  ~BusService() override;

  const QString& name() const { return name_; }
  const QDBusConnection& bus() const { return bus_; }
  /// The bus has said which program owns the name, or that none does.
  bool isKnown() const { return known_; }
  bool isRunning() const { return !owner_.isEmpty(); }

  /// Calls the owner of this moment. `done` runs once with the reply or the error, unless `context` is gone or the name
  /// changed its owner in the meantime. Does nothing while the service isn't running.
  void call(const QString& path, const QString& interface, const QString& method, const QVariantList& arguments,
            QObject* context, Handler done);

  /// Runs `handler` for every such signal from the owner of the name at that time, for as long as this object lives. An
  /// empty path means any; `match` gives values that the first string arguments must have.
  void listen(const QString& path, const QString& interface, const QString& signal, Handler handler,
              const QStringList& match = {});

 Q_SIGNALS:
  /// The name got an owner, lost it or went to another one. Also once when the first answer is "nobody".
  void ownerChanged();

 private Q_SLOTS:
  void nameOwnerChanged(const QString& name, const QString& before, const QString& after);
  void busLost();

 private:
  void become(const QString& owner);

  QDBusConnection bus_;
  QString name_;
  QString owner_;
  bool known_ = false;
  std::vector<std::unique_ptr<SignalListener>> listeners_;
};

/// The properties of one interface of a service, kept up to date by its signals.
class BusProperties final : public QObject {
  Q_OBJECT
 public:
  /// `service` must outlive this object.
  BusProperties(BusService& service, const QString& path, const QString& interface, QObject* parent = nullptr);

  /// The service has reported its properties, or said that it has no such interface, or isn't running.
  bool isKnown() const { return known_; }
  bool has(const QString& name) const { return values_.contains(name); }
  /// Invalid where there is no such property.
  QVariant value(const QString& name) const { return values_.value(name); }

  /// Asks for another value. `changed` follows in any case: with the new value, or with the old one when the service
  /// refused.
  void set(const QString& name, const QVariant& value);

 Q_SIGNALS:
  void changed();

 private:
  void fetch();
  void propertiesChanged(const QDBusMessage& signal);

  BusService& service_;
  QString path_;
  QString interface_;
  QVariantMap values_;
  bool known_ = false;
};

}  // namespace tarnwick
