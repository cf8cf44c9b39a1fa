#pragma once

#include <QJsonObject>

#include "platform/docks/DockBackend.h"

namespace tarnwick {

/// Takes the place of a dock where none runs: a small file, so that every step of the hand-over works there too.
class OwnPreferences final : public DockBackend {
 public:
  explicit OwnPreferences(const QString& directory);

  QList<DockSetting> own(DockPreference preference) override;
  QList<DockSetting> hiding(DockPreference preference, double seconds, const QList<DockSetting>& own) override;
  bool knows(DockPreference preference, const DockSetting& setting) const override;
  bool put(const DockSetting& setting, const QList<DockValue>& over) override;
  bool flush() override;

 private:
  QJsonObject& values();
  DockValue value(const QString& name);

  QString path_;
  std::optional<QJsonObject> values_;
  bool changed_ = false;
};

}  // namespace tarnwick
