#include "base/ForeignText.h"
#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

QCoro::Task<RemoteValue> fetchClicks(ProviderRequest request, std::stop_token stop) {
  const ServiceCall call = request.call(u"/analytics"_s, {{u"event"_s, u"clicks"_s}, {u"interval"_s, u"7d"_s}});
  const QJsonObject body = co_await request.object(call, stop);
  co_return request.shown(ProviderData::count(body, u"clicks"_s), ServiceWords::tr("Clicks · 7 days"));
}

QCoro::Task<RemoteValue> fetchLinks(ProviderRequest request, std::stop_token stop) {
  const ServiceCall call = request.call(u"/links"_s);
  const QJsonValue body = co_await request.answer(call, stop);
  const QJsonArray links = ProviderData::list(body, {}, ServiceWords::tr("Dub did not return links."));
  RemoteValue value = request.shown(QString::number(links.size()), ServiceWords::tr("Saved links · latest 100"));
  for (const QJsonValue& link : links) {
    const QString address = link[u"shortLink"].toString();
    value.rows << ServiceRow{link[u"id"].toString(), address, link[u"url"].toString(), QUrl(address)};
  }
  co_return value;
}

ServiceCall linkCall(const ProviderRequest& request, const QString& text) {
  const QUrl address(text, QUrl::TolerantMode);
  require(ForeignText::mayOpen(address), ServiceWords::tr("Enter a web address to shorten."));
  ServiceCall call = request.call(u"/links"_s);
  call.body = QJsonObject{{u"url"_s, QString::fromLatin1(address.toEncoded())}};
  return call;
}

QString shortLink(const QJsonValue& answer) {
  const QString link = answer[u"shortLink"].toString();
  require(ForeignText::mayOpen(QUrl(link)), ServiceWords::tr("Dub did not return a short link."));
  return link;
}

}  // namespace

Provider dub() {
  return {
      .id = u"dub"_s,
      .name = u"Dub"_s,
      .address = ProviderRow::at(ServiceHost::Dub),
      .page = u"https://app.dub.co"_s,
      .credential = {.label = ServiceWords::tr("API key"),
                     .placeholder = u"dub_…"_s,
                     .explanation = ServiceWords::tr("A key of the workspace with the scopes “analytics.read” and "
                                                     "“links.read”; “links.write” too to make links."),
                     .page = QUrl(u"https://app.dub.co/settings/tokens"_s),
                     .missing = ProviderRow::addProviderCredential()},
      .topics = {{.kinds = {{kind::analyticsDubOverview}},
                  .explanation = ServiceWords::tr("Clicks on the links of a workspace in the last seven days."),
                  .fetch = fetchClicks},
                 {.kinds = {{kind::dubShortener}},
                  .explanation = ServiceWords::tr("The latest short links of a workspace; its panel makes one."),
                  .action = ProviderAction{.button = ServiceWords::tr("Shorten"),
                                           .placeholder = ServiceWords::tr("Address to shorten"),
                                           .call = linkCall,
                                           .result = shortLink},
                  .fetch = fetchLinks}},
  };
}

}  // namespace tarnwick
