#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>
#include <QUuid>
#include <optional>

#include "config/DockWidget.h"
#include "services/RemoteValue.h"

namespace tarnwick {

/// The headline of a widget as it outlives the program. Neither an address nor a credential is in it, and nothing of
/// lists and charts.
struct CachedValue {
  QUuid id;
  QString kind;
  QString host;  ///< Of the widget's address; empty where it has none.
  std::optional<QString> value;
  QString subtitle;
  QString symbol;
  double updated = 0;  ///< Seconds since 1970, UTC.

  static constexpr auto fields() {
    return std::tuple(field::required("id", &CachedValue::id), field::required("kind", &CachedValue::kind),
                      field::required("host", &CachedValue::host), field::optional("value", &CachedValue::value),
                      field::required("subtitle", &CachedValue::subtitle),
                      field::required("symbol", &CachedValue::symbol),
                      field::required("updated", &CachedValue::updated));
  }
  bool operator==(const CachedValue&) const = default;
};

/// The last values of widgets, for the time between a start and the first answer.
struct RemoteCache {
  static constexpr qsizetype kMostBytes = 2'000'000;

  QList<CachedValue> values;

  static constexpr auto fields() { return std::tuple(field::required("values", &RemoteCache::values)); }

  /// Whether a value of this widget may be kept: not of mail, whose texts are nobody else's business.
  static bool mayKeep(const DockWidget& widget);
  static CachedValue kept(const DockWidget& widget, const RemoteValue& value);
  /// The value that was kept for this widget; absent for one that has another kind or asks another host by now.
  std::optional<RemoteValue> valueOf(const DockWidget& widget) const;

  /// Without the oldest where all would take more than kMostBytes.
  QByteArray encoded() const;

  /// Nothing where there is no file, or none that can be read: it is a convenience. May wait for the disk.
  static RemoteCache load(const QString& path);
  /// Best effort, for its owner alone; removes the file when there is nothing to keep. May wait for the disk.
  void save(const QString& path) const;
};

}  // namespace tarnwick
