#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <optional>

namespace tarnwick {

/// Where the cities are that were looked up in this run, the latest of them. Main thread only.
class GeocodeCache {
 public:
  static constexpr qsizetype kLimit = 32;

  struct Place {
    double latitude = 0;
    double longitude = 0;
    QString name;         ///< As the service writes it.
    QString region = {};  ///< What tells it from others of its name, such as "Texas, United States".

    bool operator==(const Place&) const = default;
  };

  /// Names differ by more than case.
  std::optional<Place> place(const QString& name) const;
  /// Replaces what the name had; the oldest goes where there are more than kLimit.
  void store(const QString& name, const Place& place);

 private:
  QHash<QString, Place> places_;
  QStringList order_;  ///< Oldest first.
};

}  // namespace tarnwick
