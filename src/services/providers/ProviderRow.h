#pragma once

#include <QRegularExpression>

#include "base/DomainError.h"
#include "services/BaseAddresses.h"
#include "services/Provider.h"
#include "services/ProviderData.h"
#include "services/ServiceSession.h"
#include "services/ServiceWords.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

/// A row with what every service has: an address, and a credential in the words of its service.
struct ProviderRow {
  static Provider of(const QString& id, const QString& name, ServiceHost host, const QList<KindPattern>& kinds) {
    Provider row;
    row.id = id;
    row.name = name;
    row.address = BaseAddresses::shipped().of(host);
    row.kinds = kinds;
    return row;
  }
  /// A page or a path of a service.
  static QUrl at(ServiceHost host, const QString& path) {
    QUrl address = BaseAddresses::shipped().of(host);
    address.setPath(path);
    return address;
  }
  static QString serviceCredentialMissing() {
    return ServiceWords::tr("Add your service credential in Connection Settings.");
  }
  static QString providerCredentialMissing() {
    return ServiceWords::tr("Add your provider credential in Connection Settings.");
  }
};

/// The options of a widget while they are brought into form.
class OptionRules {
 public:
  explicit OptionRules(DockWidget& widget) : widget_(widget) {}

  /// Trims an option, gives it its default where it is empty and stores it.
  QString trimmed(QLatin1StringView key, const QString& otherwise = {}) {
    QString text = widget_.options.value(key).trimmed();
    if (text.isEmpty()) text = otherwise;
    set(key, text);
    return text;
  }
  void set(QLatin1StringView key, const QString& text) {
    if (text.isEmpty())
      widget_.options.remove(key);
    else
      widget_.options[key] = text;
  }
  static void require(bool holds, const QString& sentence) {
    if (!holds) throw DomainError::invalid(sentence);
  }
  static bool matches(const QString& text, const char* form) {
    return QRegularExpression(QRegularExpression::anchoredPattern(QString::fromLatin1(form))).match(text).hasMatch();
  }

 private:
  DockWidget& widget_;
};

}  // namespace tarnwick
