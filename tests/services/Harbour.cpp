#include "Harbour.h"

#include <QJsonArray>
#include <QUrlQuery>

#include "base/DomainError.h"
#include "services/ServiceSession.h"

namespace tarnwick::test {

using namespace Qt::StringLiterals;

namespace {

void normalise(DockWidget& widget) {
  const QString quay = widget.options.value(u"quay"_s).trimmed().toLower();
  if (quay.isEmpty()) throw DomainError::invalid(u"Enter a quay."_s);
  widget.options[u"quay"_s] = quay;
}

bool needsCredential(const DockWidget& widget) { return widget.options.value(u"quay"_s) != "public"_L1; }

ServiceCall page(const ProviderRequest& request, const QString& cursor) {
  ServiceCall call;
  call.url = QUrl(request.widget.options.value(u"endpoint"_s) + "/berths"_L1);
  QUrlQuery query;
  query.addQueryItem(u"limit"_s, QString::number(request.limits.pageSize));
  query.addQueryItem(u"quay"_s, request.widget.options.value(u"quay"_s));
  if (!cursor.isEmpty()) query.addQueryItem(u"after"_s, cursor);
  call.url.setQuery(query);
  call.token = request.credential;
  return call;
}

ServiceRow row(const QJsonValue& berth) {
  const QString id = berth[u"id"_s].toString();
  if (id.isEmpty()) throw DomainError::invalid(u"The harbour returned a berth without a name."_s);
  return {id, berth[u"ship"_s].toString(), {}, std::nullopt};
}

QCoro::Task<RemoteValue> fetch(ProviderRequest request, std::stop_token stop) {
  RemoteValue value;
  QString cursor;
  for (int number = 0; number < request.limits.pages; ++number) {
    ServiceCall call = page(request, cursor);
    const QJsonValue body = co_await request.session->json(std::move(call), stop);
    const QJsonArray berths = body[u"berths"_s].toArray();
    for (const QJsonValue& berth : berths) value.rows << row(berth);
    cursor = body[u"next"_s].toString();
    if (cursor.isEmpty()) break;
  }
  value.value = QString::number(value.rows.size());
  value.subtitle = cursor.isEmpty() ? u"Berths taken"_s : u"Berths taken · partial"_s;
  value.updated = request.session->now();
  co_return value;
}

}  // namespace

Provider harbour() {
  return {
      .id = u"harbour"_s,
      .name = u"Harbour"_s,
      .address = QUrl(u"https://api.harbour.example"_s),
      .credential = {.label = u"Harbour master’s key"_s,
                     .explanation = u"A key that may read berths."_s,
                     .page = QUrl(u"https://harbour.example/keys"_s),
                     .missing = u"Add your service credential in Connection Settings."_s,
                     .isNeeded = needsCredential},
      .signIn = OAuthProvider{.id = u"harbour"_s,
                              .name = u"Harbour"_s,
                              .authorization = QUrl(u"https://harbour.example/sign-in"_s),
                              .token = QUrl(u"https://api.harbour.example/token"_s),
                              .scope = u"berths.read"_s,
                              .extraFields = {},
                              .clientField = u"client_id"_s,
                              .neededScope = {},
                              .scopeMissing = {},
                              .port = 0},
      .limits = {.pages = 3, .pageSize = 2},
      .normalise = normalise,
      .topics = {{.kinds = {{u"harbourBerths"_s}},
                  .explanation = u"Reads the berths that are taken."_s,
                  .fields = {{u"quay"_s, u"Quay"_s, u"north"_s}},
                  .fetch = fetch}},
  };
}

}  // namespace tarnwick::test
