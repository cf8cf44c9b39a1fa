#pragma once

#include <QTimer>
#include <functional>
#include <vector>

#include "commandbar/SettingsPlaces.h"
#include "views/settings/SettingsServices.h"

namespace tarnwick {

class AppStore;
struct SettingsSection;

/// The rows of Settings for those who look for them elsewhere. What they say is read from the sections themselves, of
/// which each is made for it once and not kept: one a turn of the event loop, while it has nothing else to do. Rows
/// that are only read are left out.
class SettingsIndex final : public SettingsPlaces {
  Q_OBJECT
 public:
  /// Shows a section by its name, and in it the row of that label, which may be empty.
  using ShowSection = std::function<void(const QString& section, const QString& label)>;

  /// `store` and what the services refer to outlive it.
  SettingsIndex(AppStore& store, SettingsServices services, ShowSection show, QObject* parent = nullptr);
  ~SettingsIndex() override;

  /// Begins to read, unless it has. Looking for something does so too.
  void prepare() override;
  QList<SettingsPlace> find(const QString& words, qsizetype most) override;
  void open(const QString& id) override;
  void show(const QString& id) override;

 private:
  struct Entry {
    SettingsPlace place;
    QString title;  ///< Folded, each word behind a blank, as the next one.
    QString said;
  };

  void sayTurned(const QString& label, bool isOn);
  void readNext();
  void read(const SettingsSection& section);
  void add(const SettingsPlace& place, const QString& said);

  AppStore& store_;
  const SettingsServices services_;
  ShowSection show_;
  std::vector<Entry> entries_;
  size_t sectionsRead_ = 0;
  QTimer idle_;
};

}  // namespace tarnwick
