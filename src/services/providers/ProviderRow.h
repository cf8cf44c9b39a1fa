#pragma once

#include <QCoroTask>
#include <QRegularExpression>

#include "services/BaseAddresses.h"
#include "services/Provider.h"
#include "services/ProviderData.h"
#include "services/ServiceWords.h"
#include "widgets/catalog/Kinds.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

/// What stands in the rows of several services.
struct ProviderRow {
  /// A service, or a path of it.
  static QUrl at(ServiceHost host, const QString& path = {}) {
    QUrl address = BaseAddresses::shipped().of(host);
    address.setPath(path);
    return address;
  }
  static QString addServiceCredential() {
    return ServiceWords::tr("Add your service credential in Connection Settings.");
  }
  static QString addProviderCredential() {
    return ServiceWords::tr("Add your provider credential in Connection Settings.");
  }
  static QString unexpected() { return ServiceWords::tr("The provider returned an unexpected response."); }
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
  /// A code of three letters, in the case in which the service writes them: that of `usual`.
  void currency(const QString& usual) {
    const char* form = usual.isUpper() ? "[A-Z]{3}" : "[a-z]{3}";
    require(option::currency, matches(trimmed(option::currency, usual), form),
            ServiceWords::tr("Enter a three-letter currency code."));
  }
  /// Throws OptionError where something about an option does not hold.
  static void require(QLatin1StringView key, bool holds, const QString& sentence) {
    if (!holds) throw OptionError(key, sentence);
  }
  static bool matches(const QString& text, const char* form) {
    return QRegularExpression(QRegularExpression::anchoredPattern(QString::fromLatin1(form))).match(text).hasMatch();
  }

 private:
  DockWidget& widget_;
};

}  // namespace tarnwick
