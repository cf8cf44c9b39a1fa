#pragma once

#include <QObject>
#include <QString>
#include <QVariant>
#include <optional>

#include "platform/dbus/BusService.h"

namespace tarnwick {

/// The bus's usual way to keep a service from doing something: `Inhibit` gives a number, `UnInhibit` gives it back, and
/// a program that dies has given it back. Taken anew when the service restarts while it is wanted.
class CookieInhibition final : public QObject {
  Q_OBJECT
 public:
  /// `arguments` go to `Inhibit`. `service` must outlive this object.
  CookieInhibition(BusService& service, const QString& path, const QString& interface, const QVariantList& arguments,
                   QObject* parent = nullptr);

  bool isHeld() const { return cookie_.has_value(); }
  /// `changed` follows when the service answered, or at once where there is nothing to ask.
  void want(bool wanted);

 Q_SIGNALS:
  void changed();

 private:
  void settle();

  BusService& service_;
  QString path_;
  QString interface_;
  QVariantList arguments_;
  std::optional<uint> cookie_;
  bool wanted_ = false;
  bool asking_ = false;
};

}  // namespace tarnwick
