#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QMap>
#include <QString>
#include <QVariantMap>
#include <functional>
#include <optional>

namespace tarnwick {

/// A service on a test's bus: properties that announce their changes, methods that a test gives an answer to. What has
/// neither is refused, as by a real service.
class FakeService final : public QDBusVirtualObject {
  Q_OBJECT
 public:
  using Answer = std::function<QVariantList(const QDBusMessage&)>;

  FakeService(const QDBusConnection& connection, const QString& name);
  ~FakeService() override;

  /// Answers a method of any interface; an empty answer refuses it.
  void answer(const QString& method, Answer answer) { answers_.insert(method, std::move(answer)); }
  /// Announced to everybody who listens.
  void setProperty(const QString& path, const QString& interface, const QString& name, const QVariant& value);
  QVariant property(const QString& path, const QString& interface, const QString& name) const;
  void emitSignal(const QString& path, const QString& interface, const QString& name, const QVariantList& arguments);
  /// From now on nobody may set a property.
  void refuseWrites() { refusesWrites_ = true; }

  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;
  QString introspect(const QString& path) const override;

 private:
  std::optional<QVariantList> replyTo(const QDBusMessage& message);

  QDBusConnection connection_;
  QString name_;
  QMap<QString, Answer> answers_;
  QMap<QString, QMap<QString, QVariantMap>> properties_;
  bool refusesWrites_ = false;
};

}  // namespace tarnwick
