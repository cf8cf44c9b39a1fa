#pragma once

#include <QCoroFwd>
#include <QList>
#include <QMap>
#include <QString>
#include <QUrl>
#include <memory>
#include <optional>
#include <stop_token>

#include "base/DomainError.h"
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
  QString placeholder = {};
  QString help = {};
  /// What it may hold where that is not any text: one value for a switch that writes it, several for a choice.
  QStringList values = {};
  QStringList words = {};  ///< For each value of a choice.
  int usual = 0;           ///< Of a choice, the place of the value that an absent option means.

  bool operator==(const ProviderField&) const = default;
};

/// What is wrong with an option, as a sentence that the form shows at its line.
struct OptionError final : DomainError {
  OptionError(const QString& option, const QString& sentence) : DomainError(invalid(sentence)), key(option) {}

  QString key;
};

/// What a service wants to be shown before it answers.
struct ProviderCredential {
  QString label;  ///< What the service calls it.
  QString placeholder = {};
  QString explanation;  ///< Which one is meant and what it must be allowed to do, in one line.
  QUrl page = {};       ///< Where the service makes or lists them; empty where none of its pages does.
  QString missing;      ///< The sentence when there is none.
  /// That page for a widget where users have one each; null where `page` is everybody's.
  QUrl (*pageOf)(const DockWidget& widget) = nullptr;
  /// Whether this widget cannot do without; null for all of the provider's.
  bool (*isNeeded)(const DockWidget& widget) = nullptr;
  bool isOneWord = false;  ///< One that holds white space is none; what is around it does not count.
  /// What else is wrong with one, as a sentence; empty where nothing is. It is asked first.
  QString (*fault)(const QString& credential) = nullptr;

  /// What is wrong with one that is there, as a sentence; empty where nothing is.
  QString faultOf(const QString& credential) const;
};

/// What bounds the reading of one list. A refresh makes at most 30 requests in all.
struct ProviderLimits {
  int pages = 1;     ///< At most; a list that goes on is reported as partial.
  int pageSize = 0;  ///< Entries asked for at a time; 0 where nothing is paged.
};

/// What one fetch is about.
struct ProviderRequest {
  DockWidget widget;   ///< As `configured` gave it: its `endpoint` is the address to ask.
  QString credential;  ///< Empty where none is kept and none is needed.
  std::shared_ptr<ServiceSession> session;
  ProviderLimits limits;

  QString option(QLatin1StringView key, const QString& otherwise = {}) const;
  QDateTime now() const { return session->now(); }
  /// A request to a path at the widget's `endpoint`, with the credential as bearer. Throws DomainError.
  ServiceCall call(const QString& path, const QMap<QString, QString>& query = {}) const;
  /// The same with the credential in a header that the service has for it; without one where there is none.
  ServiceCall keyed(const QString& header, const QString& path, const QMap<QString, QString>& query = {}) const;
  /// Asks. What is awaited gives the answer, and throws what ServiceSession throws.
  QCoro::Task<QJsonValue> answer(ServiceCall call, std::stop_token stop) const;
  /// The same for an answer that must be an object and tell no errors. Throws DomainError for another one.
  QCoro::Task<QJsonObject> object(ServiceCall call, std::stop_token stop) const;
  /// What is shown, as of now.
  RemoteValue shown(const QString& value, const QString& subtitle) const;
};

/// What a press in the panel of a widget asks of its service, besides its values.
struct ProviderAction {
  QString button;
  QString placeholder = {};  ///< Of the text that the user enters for it; empty where there is none.
  /// Whether the form of a widget that is connected allows it; null for always.
  bool (*isAllowed)(const DockWidget& widget) = nullptr;
  /// The one request, which is never sent again by itself. Throws DomainError.
  ServiceCall (*call)(const ProviderRequest& request, const QString& text) = nullptr;
  /// What of the answer is shown, to be copied. Throws DomainError. Null for nothing.
  QString (*result)(const QJsonValue& answer) = nullptr;

  bool isOffered(const DockWidget& widget) const;
};

/// One of the things that a service is asked for: which kinds of widgets show it, and how it is found.
struct ProviderTopic {
  QList<KindPattern> kinds;
  QString explanation;               ///< What the form says of it, in one line.
  QList<ProviderField> fields = {};  ///< What the form asks for.
  std::optional<ProviderAction> action = {};
  /// A coroutine: what it asks, in order, and what it computes. It passes `stop` to everything that it awaits.
  QCoro::Task<RemoteValue> (*fetch)(ProviderRequest request, std::stop_token stop);
};

/// All there is to know of a service, in one place: but for its badge nothing else in the program names one.
struct Provider {
  QString id;         ///< Stable, for code and logs.
  QString name;       ///< As the service writes itself.
  QUrl address = {};  ///< Public, https; empty where each user has one. A test passes a row with its own server's.
  /// Where it is instead for a widget whose option `region` is this.
  QMap<QString, QUrl> regions = {};
  QString page = {};  ///< What a click on a tile opens; `normalise` may set a nearer one.
  ProviderCredential credential;
  std::optional<OAuthProvider> signIn = {};
  ProviderLimits limits = {};
  /// Checks the options and brings them into the form in which they are kept; throws DomainError with the sentence that
  /// the form shows. `connectionMode`, `endpoint` and `dashboard` are set already; a service that has an address for
  /// each user sets its own. Must give the same when it is applied again. Null where there is nothing to enter.
  void (*normalise)(DockWidget& widget) = nullptr;
  QList<ProviderTopic> topics;  ///< The first that serves a kind has it.

  bool serves(QStringView kind) const { return topic(kind); }
  /// Null for a kind that is another's. Lives as long as the row.
  const ProviderTopic* topic(QStringView kind) const;
  /// What the form says and asks for; nothing for a kind that is another's.
  QString explanation(QStringView kind) const;
  QList<ProviderField> fields(QStringView kind) const;
  /// `widget` as it is stored and fetched. It is asked for on every save and again at every fetch, so that an option
  /// that was edited manually never leads a credential elsewhere. Throws DomainError.
  DockWidget configured(DockWidget widget) const;
};

/// One fetch of a provider from its beginning: the widget is brought into form, its credential read and asked for, then
/// the service. Throws what these throw, and DomainError for a kind that is another's.
QCoro::Task<RemoteValue> fetchFrom(Provider provider, DockWidget widget, std::shared_ptr<ServiceSession> session,
                                   std::stop_token stop);

/// The action of a provider, once, and what it gives. Throws what these throw, and DomainError where the widget has
/// none.
QCoro::Task<QString> actAt(Provider provider, DockWidget widget, QString text, std::shared_ptr<ServiceSession> session,
                           std::stop_token stop);

}  // namespace tarnwick
