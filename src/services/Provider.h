#pragma once

#include <QCoroFwd>
#include <QList>
#include <QMap>
#include <QString>
#include <QUrl>
#include <memory>
#include <optional>
#include <stop_token>

#include "config/DockWidget.h"
#include "services/RemoteValue.h"
#include "services/ServiceSession.h"

namespace tarnwick {

/// Which kinds of widgets a provider serves.
struct KindPattern {
  enum class Match { Exact, Contains, BeginsWith };

  QString text;
  Match match = Match::Exact;

  bool matches(QStringView kind) const;
};

/// One entry of a widget's form that belongs to its provider.
struct ProviderField {
  QString key;  ///< The option of the widget.
  QString label;
  QString placeholder;

  bool operator==(const ProviderField&) const = default;
};

/// What a service wants to be shown before it answers.
struct ProviderCredential {
  QString label;  ///< What the service calls it.
  QString placeholder;
  QString explanation;  ///< Which one is meant and what it must be allowed to do, in one line.
  QUrl page;            ///< Where the service makes one.
  QString missing;      ///< The sentence when there is none.
  /// Whether this widget cannot do without; null for all of the provider's.
  bool (*isNeeded)(const DockWidget& widget) = nullptr;
};

/// What bounds one refresh.
struct ProviderLimits {
  int requests = 30;  ///< At most, all pages together.
  int pages = 1;      ///< At most, of one list; a list that goes on is reported as partial.
  int pageSize = 0;   ///< Entries asked for at a time; 0 where nothing is paged.
};

/// What one fetch is about.
struct ProviderRequest {
  DockWidget widget;   ///< As `configured` gave it: its `endpoint` is the address to ask.
  QString credential;  ///< Empty where none is kept and none is needed.
  std::shared_ptr<ServiceSession> session;
  ProviderLimits limits;

  QString option(QLatin1StringView key, const QString& otherwise = {}) const;
  /// A request to a path at the widget's `endpoint`, with the credential as bearer. Throws DomainError.
  ServiceCall call(const QString& path, const QMap<QString, QString>& query = {}) const;
  /// What is shown, as of now.
  RemoteValue shown(const QString& value, const QString& subtitle) const;
};

/// All there is to know of a service, in one place: but for its badge nothing else in the program names one.
struct Provider {
  QString id;    ///< Stable, for code and logs.
  QString name;  ///< As the service writes itself.
  QList<KindPattern> kinds;
  QUrl address;  ///< Public, https. A test passes a row with its own server's.

  /// What the form says of a kind, in one line.
  QString (*explanation)(QStringView kind) = nullptr;
  QList<ProviderField> (*fields)(QStringView kind) = nullptr;
  ProviderCredential credential;
  std::optional<OAuthProvider> signIn;

  /// Checks the options and brings them into the form in which they are kept; throws DomainError with the sentence that
  /// the form shows. `connectionMode` and `endpoint` are set already; a service that has an address for each user sets
  /// its own. Must give the same when it is applied again.
  void (*normalise)(DockWidget& widget) = nullptr;
  /// A coroutine: what it asks, in order, and what it computes. It passes `stop` to everything that it awaits.
  QCoro::Task<RemoteValue> (*fetch)(ProviderRequest request, std::stop_token stop) = nullptr;
  ProviderLimits limits;

  bool serves(QStringView kind) const;
  /// `widget` as it is stored and fetched. It is asked for on every save and again at every fetch, so that an option
  /// that was edited manually never leads a credential elsewhere. Throws DomainError.
  DockWidget configured(DockWidget widget) const;
};

/// One fetch of a provider from its beginning: the widget is brought into form, its credential read and asked for, then
/// the service. Throws what these throw.
QCoro::Task<RemoteValue> fetchFrom(Provider provider, DockWidget widget, std::shared_ptr<ServiceSession> session,
                                   std::stop_token stop);

}  // namespace tarnwick
