#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

namespace tarnwick {

/// What stands for the services in measurements: one kind of every provider, with answers as large as the real ones
/// are, and lists that have more pages than are read; and addresses of a user's own.
struct ServiceScript {
  struct Kind {
    QString kind;
    QMap<QString, QString> options;
  };

  /// One kind of every provider, that of most requests.
  static const QList<Kind>& providers();
  /// Addresses of a user's own, which answer with a small document each. Its headline is `kSmallField`.
  static QStringList smallAddresses();
  static constexpr QLatin1StringView kSmallField{"status.counts.1"};
  /// Addresses whose answers are as large as an answer may be, each in another manner, and the field that is shown.
  struct Large {
    QString what;
    QString address;
    QString field;
  };
  static QList<Large> largeAddresses();

  /// All hosts that are asked.
  static QStringList hosts();
  /// The whole answer of a host to a request, as HTTP. Any thread.
  static QByteArray answer(const QString& host, const QByteArray& path);
};

}  // namespace tarnwick
