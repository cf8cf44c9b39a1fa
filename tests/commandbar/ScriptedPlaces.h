#pragma once

#include "commandbar/SettingsPlaces.h"

namespace tarnwick {

/// Places whose title begins with the words.
class ScriptedPlaces final : public SettingsPlaces {
 public:
  void prepare() override { ++prepared; }
  QList<SettingsPlace> find(const QString& words, qsizetype most) override {
    QList<SettingsPlace> found;
    for (const SettingsPlace& place : places)
      if (place.title.startsWith(words, Qt::CaseInsensitive) && found.size() < most) found << place;
    return found;
  }
  void open(const QString& id) override { opened << id; }
  void show(const QString& id) override { shown << id; }

  QList<SettingsPlace> places;
  QStringList opened;
  QStringList shown;
  int prepared = 0;
};

}  // namespace tarnwick
