#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QProcess>
#include <QString>
#include <memory>
#include <optional>

#include "platform/dbus/BusService.h"

namespace tarnwick {

/// One key of the desktop's settings, read and written with the `gsettings` program, so that an idle dock carries no
/// second object system. Changes by others arrive as signals of the settings service; nothing is polled, nothing
/// blocks.
class GSettingsKey final : public QObject {
  Q_OBJECT
 public:
  /// Reads the key once. `schema` must be one whose path is its name ("org.gnome.x" at "/org/gnome/x/").
  GSettingsKey(const QDBusConnection& session, const QString& schema, const QString& key, QObject* parent = nullptr);
  ~GSettingsKey() override;

  /// Whether a first answer has come.
  bool isKnown() const { return known_; }
  /// In the program's own notation ("true", "'prefer-dark'"); none where this desktop has no such key.
  const std::optional<QString>& value() const { return value_; }
  /// Writes, in the same notation; the last of several quick writes wins. `changed` follows in any case.
  void set(const QString& value);

 Q_SIGNALS:
  void changed();

 private:
  void read();
  void next();
  void finished(bool succeeded);

  BusService writer_;
  QString schema_;
  QString key_;
  QString path_;
  std::unique_ptr<QProcess> process_;
  std::optional<QString> wanted_;
  bool writing_ = false;
  bool readAgain_ = false;
  bool known_ = false;
  std::optional<QString> value_;
};

}  // namespace tarnwick
