#pragma once

#include <QRegularExpression>
#include <functional>
#include <vector>

#include "platform/docks/DockBackend.h"
#include "platform/docks/module/SettingsSchemas.h"

namespace tarnwick {

/// A dock whose settings are GSettings keys. A place is a schema and a path, "net.example.dock:/net/example/dock1/";
/// the path is empty where the schema has one of its own.
class GSettingsDock final : public DockBackend {
 public:
  struct Rule {
    DockPreference preference;
    const char* key;
    std::function<QString(double seconds)> value;  ///< In GVariant's text form.
  };
  struct Description {
    QStringList schemas;                                        ///< The only ones that are ever written.
    QStringList folders;                                        ///< Further folders with compiled schemas.
    std::function<QStringList(const SettingsSchemas&)> places;  ///< Where the docks that run have their settings.
    std::vector<Rule> rules;
    QRegularExpression path;  ///< What a place has behind its schema.
  };

  explicit GSettingsDock(Description description);

  static Description plank();
  static Description gnome();

  QList<DockSetting> own(DockPreference preference) override;
  QList<DockSetting> hiding(DockPreference preference, double seconds, const QList<DockSetting>& own) override;
  bool knows(DockPreference preference, const DockSetting& setting) const override;
  bool put(const DockSetting& setting, const QList<DockValue>& over) override;
  bool flush() override;

 private:
  OpenSettings open(const QString& place) const;
  const Rule* rule(const QString& name) const;

  Description description_;
  SettingsSchemas schemas_;
  QList<DockSetting> pending_;
};

}  // namespace tarnwick
