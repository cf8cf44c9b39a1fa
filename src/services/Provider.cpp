#include "services/Provider.h"

#include <QCoroTask>
#include <algorithm>

#include "base/Cancelled.h"
#include "base/DomainError.h"
#include "services/ProviderData.h"
#include "services/ServiceSession.h"
#include "services/ServiceWords.h"
#include "widgets/catalog/Catalog.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

namespace {

bool hasSpace(const QString& text) {
  return std::ranges::any_of(text, [](QChar each) { return each.isSpace(); });
}

/// The request may be gone when this goes on.
QCoro::Task<QJsonObject> objectOf(std::shared_ptr<ServiceSession> session, ServiceCall call, std::stop_token stop) {
  const QJsonValue answer = co_await session->json(std::move(call), stop);
  co_return ProviderData::object(answer);
}

}  // namespace

bool KindPattern::matches(QStringView kind) const {
  switch (match) {
    case Match::Contains:
      return kind.contains(text);
    case Match::BeginsWith:
      return kind.startsWith(text);
    case Match::Exact:
      break;
  }
  return kind == text;
}

QString ProviderRequest::option(QLatin1StringView key, const QString& otherwise) const {
  const QString found = widget.options.value(key);
  return found.isEmpty() ? otherwise : found;
}

QString ProviderCredential::faultOf(const QString& credential) const {
  const QString found = fault ? fault(credential) : QString();
  return found.isEmpty() && isOneWord && hasSpace(credential.trimmed()) ? missing : found;
}

ServiceCall ProviderRequest::call(const QString& path, const QMap<QString, QString>& query) const {
  ServiceCall call;
  call.url = ProviderData::url(option(tarnwick::option::endpoint) + path, query);
  call.token = credential;
  return call;
}

ServiceCall ProviderRequest::keyed(const QString& header, const QString& path,
                                   const QMap<QString, QString>& query) const {
  ServiceCall call = this->call(path, query);
  call.token.clear();
  if (!credential.isEmpty()) call.headers.insert(header, credential);
  return call;
}

QCoro::Task<QJsonValue> ProviderRequest::answer(ServiceCall call, std::stop_token stop) const {
  return session->json(std::move(call), std::move(stop));
}

QCoro::Task<QJsonObject> ProviderRequest::object(ServiceCall call, std::stop_token stop) const {
  return objectOf(session, std::move(call), std::move(stop));
}

RemoteValue ProviderRequest::shown(const QString& value, const QString& subtitle) const {
  RemoteValue shown;
  shown.value = value;
  shown.subtitle = subtitle;
  shown.symbol = Catalog::find(widget.kind).symbol;
  shown.updated = session->now();
  return shown;
}

const ProviderTopic* Provider::topic(QStringView kind) const {
  for (const ProviderTopic& topic : topics)
    if (std::ranges::any_of(topic.kinds, [kind](const KindPattern& each) { return each.matches(kind); })) return &topic;
  return nullptr;
}

QString Provider::explanation(QStringView kind) const {
  const ProviderTopic* found = topic(kind);
  return found ? found->explanation : QString();
}

QList<ProviderField> Provider::fields(QStringView kind) const {
  const ProviderTopic* found = topic(kind);
  return found ? found->fields : QList<ProviderField>();
}

DockWidget Provider::configured(DockWidget widget) const {
  const QString region = widget.options.value(option::region).trimmed();
  widget.options[option::connectionMode] = value::native;
  widget.options[option::endpoint] = regions.value(region, address).toString();
  if (!page.isEmpty()) widget.options[option::dashboard] = page;
  if (normalise) normalise(widget);
  return widget;
}

bool ProviderAction::isOffered(const DockWidget& widget) const {
  return widget.options.value(option::connectionMode) == value::native && (!isAllowed || isAllowed(widget));
}

/// With a name that is seen elsewhere: the compiler wants that of what a coroutine holds.
struct PreparedRequest {
  ProviderRequest request;
  MaybeCredential credential;
};

namespace {

/// What every conversation begins with.
QCoro::Task<PreparedRequest> prepared(Provider provider, DockWidget widget, std::shared_ptr<ServiceSession> session,
                                      std::stop_token stop) {
  PreparedRequest begun;
  ProviderRequest& request = begun.request;
  request.widget = provider.configured(std::move(widget));
  request.session = session;
  request.limits = provider.limits;
  const ProviderCredential& wanted = provider.credential;
  const bool canDoWithout = wanted.isNeeded && !wanted.isNeeded(request.widget);
  MaybeCredential& found = begun.credential;
  if (provider.signIn)
    found.value = co_await session->accessToken(request.widget, *provider.signIn, stop);
  else if (canDoWithout)
    found = co_await session->credentialIfAny(request.widget, stop);
  else
    found.value = co_await session->credential(request.widget, stop);
  throwIfStopped(stop);
  request.credential = wanted.isOneWord ? found.value.trimmed() : found.value;
  const QString fault = wanted.faultOf(request.credential);
  require(fault.isEmpty(), fault);
  require(canDoWithout || !request.credential.isEmpty(), wanted.missing);
  co_return begun;
}

}  // namespace

QCoro::Task<RemoteValue> fetchFrom(Provider provider, DockWidget widget, std::shared_ptr<ServiceSession> session,
                                   std::stop_token stop) {
  const ProviderTopic* topic = provider.topic(widget.kind);
  require(topic, ServiceWords::tr("Connect this widget in its settings."));
  PreparedRequest begun = co_await prepared(provider, std::move(widget), std::move(session), stop);
  try {
    RemoteValue value = co_await topic->fetch(std::move(begun.request), stop);
    throwIfStopped(stop);
    co_return value;
  } catch (const ServiceHTTPError& refusal) {
    begun.credential.explain(refusal);
    throw;
  }
}

QCoro::Task<QString> actAt(Provider provider, DockWidget widget, QString text, std::shared_ptr<ServiceSession> session,
                           std::stop_token stop) {
  const ProviderTopic* topic = provider.topic(widget.kind);
  const bool isOffered = topic && topic->action && topic->action->isOffered(widget);
  require(isOffered, ServiceWords::tr("The form of this widget does not allow that."));
  const PreparedRequest begun = co_await prepared(provider, std::move(widget), session, stop);
  ServiceCall call = topic->action->call(begun.request, text);
  const QJsonValue answer = co_await session->json(std::move(call), stop);
  throwIfStopped(stop);
  QString result = topic->action->result ? topic->action->result(answer) : QString();
  co_return result;
}

}  // namespace tarnwick
