#include <QCoroTask>

#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"
#include "widgets/catalog/Kinds.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

QString explainDub(QStringView kind) {
  return kind == kind::dubShortener ? ServiceWords::tr("The latest short links of a workspace.")
                                    : ServiceWords::tr("Clicks on the links of a workspace in the last seven days.");
}

QList<ProviderField> dubFields(QStringView) { return {}; }

void normaliseDub(DockWidget& widget) { OptionRules(widget).set(option::dashboard, u"https://app.dub.co"_s); }

QCoro::Task<RemoteValue> dubClicks(ProviderRequest request, std::stop_token stop) {
  ServiceCall call = request.call(u"/analytics"_s, {{u"event"_s, u"clicks"_s}, {u"interval"_s, u"7d"_s}});
  const QJsonValue answer = co_await request.session->json(std::move(call), stop);
  co_return request.shown(ProviderData::count(ProviderData::object(answer), u"clicks"_s),
                          ServiceWords::tr("Clicks · 7 days"));
}

QCoro::Task<RemoteValue> dubLinks(ProviderRequest request, std::stop_token stop) {
  ServiceCall call = request.call(u"/links"_s);
  const QJsonValue answer = co_await request.session->json(std::move(call), stop);
  const QJsonArray links = ProviderData::list(answer, {}, ServiceWords::tr("Dub did not return links."));
  RemoteValue value = request.shown(QString::number(links.size()), ServiceWords::tr("Saved links · latest 100"));
  for (const QJsonValue& link : links) {
    const QString address = link[u"shortLink"].toString();
    value.rows << ServiceRow{link[u"id"].toString(), address, link[u"url"].toString(), QUrl(address)};
  }
  co_return value;
}

QCoro::Task<RemoteValue> fetchDub(ProviderRequest request, std::stop_token stop) {
  if (request.widget.kind == kind::dubShortener) return dubLinks(std::move(request), stop);
  return dubClicks(std::move(request), stop);
}

}  // namespace

Provider dub() {
  Provider row =
      ProviderRow::of(u"dub"_s, u"Dub"_s, ServiceHost::Dub, {{kind::analyticsDubOverview}, {kind::dubShortener}});
  row.explanation = explainDub;
  row.fields = dubFields;
  row.credential = {.label = ServiceWords::tr("API key"),
                    .placeholder = u"dub_…"_s,
                    .explanation = ServiceWords::tr("A key of the workspace with the scopes “analytics.read” and "
                                                    "“links.read”."),
                    .page = QUrl(u"https://app.dub.co/settings/tokens"_s),
                    .missing = ProviderRow::providerCredentialMissing()};
  row.normalise = normaliseDub;
  row.fetch = fetchDub;
  row.limits = {.requests = 1};
  return row;
}

}  // namespace tarnwick
