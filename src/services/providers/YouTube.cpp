#include <QCoroTask>

#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"
#include "widgets/catalog/Kinds.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

QString explainYouTube(QStringView) { return ServiceWords::tr("Subscribers, views and videos of a channel."); }

QList<ProviderField> youTubeFields(QStringView) {
  return {{option::channel, ServiceWords::tr("YouTube handle"), u"@channel"_s}};
}

void normaliseYouTube(DockWidget& widget) {
  OptionRules options(widget);
  const QString channel = options.trimmed(option::channel);
  OptionRules::require(!channel.isEmpty(), ServiceWords::tr("Enter a YouTube handle."));
  const QString handle = channel.startsWith(u'@') ? channel : u'@' + channel;
  options.set(option::dashboard,
              "https://www.youtube.com/"_L1 + QString::fromLatin1(QUrl::toPercentEncoding(handle, "@")));
}

QCoro::Task<RemoteValue> fetchYouTube(ProviderRequest request, std::stop_token stop) {
  ServiceCall call = request.call(u"/youtube/v3/channels"_s, {{u"part"_s, u"snippet,statistics"_s},
                                                              {u"forHandle"_s, request.option(option::channel)}});
  call.token.clear();
  call.headers.insert(u"X-Goog-Api-Key"_s, request.credential);
  const QJsonValue answer = co_await request.session->json(std::move(call), stop);
  const QJsonValue channel = ProviderData::object(answer)[u"items"][0];
  OptionRules::require(channel.isObject(), ServiceWords::tr("YouTube channel not found."));
  const QJsonValue statistics = channel[u"statistics"];
  const bool isHidden = statistics[u"hiddenSubscriberCount"].toBool();
  const QString subscribers =
      isHidden ? ServiceWords::tr("Hidden") : ProviderData::count(statistics, u"subscriberCount"_s);
  RemoteValue value = request.shown(subscribers, ServiceWords::tr("Subscribers"));
  value.detail = channel[u"snippet"][u"title"].toString();
  value.metrics = {{ServiceWords::tr("Subscribers"), subscribers},
                   {ServiceWords::tr("Views"), ProviderData::count(statistics, u"viewCount"_s)},
                   {ServiceWords::tr("Videos"), ProviderData::count(statistics, u"videoCount"_s)}};
  co_return value;
}

}  // namespace

Provider youTube() {
  Provider row =
      ProviderRow::of(u"youtube"_s, u"YouTube"_s, ServiceHost::YouTube, {{kind::socialYouTube}, {kind::youtubeStudio}});
  row.explanation = explainYouTube;
  row.fields = youTubeFields;
  row.credential = {
      .label = ServiceWords::tr("YouTube Data API key"),
      .placeholder = u"AIza…"_s,
      .explanation = ServiceWords::tr("An API key of a project of yours with the YouTube Data API v3 on."),
      .page = QUrl(u"https://console.cloud.google.com/apis/credentials"_s),
      .missing = ProviderRow::providerCredentialMissing()};
  row.normalise = normaliseYouTube;
  row.fetch = fetchYouTube;
  row.limits = {.requests = 1};
  return row;
}

}  // namespace tarnwick
