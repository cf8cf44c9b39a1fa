#pragma once

#include <QDBusConnection>
#include <QString>
#include <map>
#include <memory>

#include "desktop/Toggles.h"
#include "platform/dbus/toggles/ToggleSource.h"

namespace tarnwick {

/// The switches that this desktop really has, each from the service that owns it. Nothing blocks and nothing is polled:
/// states follow the services' own signals. Without a bus, or without a service, the switch says so in its capability.
class DesktopToggles final : public Toggles {
  Q_OBJECT
 public:
  /// `root` stands in for "/" where devices are looked for.
  DesktopToggles(const QDBusConnection& session, const QDBusConnection& system,
                 const QString& root = QStringLiteral("/"), QObject* parent = nullptr);
  ~DesktopToggles() override;

  ToggleState state(Toggle toggle) const override;
  /// Before `start` this only announces `changed`.
  void set(Toggle toggle, bool on) override;
  void start() override;

 private:
  void provide(Toggle toggle, std::unique_ptr<ToggleSource> source);

  std::map<Toggle, std::unique_ptr<ToggleSource>> sources_;
  bool started_ = false;
};

}  // namespace tarnwick
