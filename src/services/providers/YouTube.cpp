#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

void normaliseYouTube(DockWidget& widget) {
  OptionRules options(widget);
  const QString channel = options.trimmed(option::channel);
  OptionRules::require(option::channel, !channel.isEmpty(), ServiceWords::tr("Enter a YouTube handle."));
  const QString handle = channel.startsWith(u'@') ? channel : u'@' + channel;
  options.set(option::dashboard, "https://www.youtube.com/"_L1 + ProviderData::encoded(handle, "@"));
}

QCoro::Task<RemoteValue> fetchChannel(ProviderRequest request, std::stop_token stop) {
  const ServiceCall call =
      request.keyed(u"X-Goog-Api-Key"_s, u"/youtube/v3/channels"_s,
                    {{u"part"_s, u"snippet,statistics"_s}, {u"forHandle"_s, request.option(option::channel)}});
  const QJsonObject body = co_await request.object(call, stop);
  const QJsonValue channel = body[u"items"][0];
  require(channel.isObject(), ServiceWords::tr("YouTube channel not found."));
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
  return {
      .id = u"youtube"_s,
      .name = u"YouTube"_s,
      .address = ProviderRow::at(ServiceHost::YouTube),
      .credential = {.label = ServiceWords::tr("YouTube Data API key"),
                     .placeholder = u"AIza…"_s,
                     .explanation =
                         ServiceWords::tr("An API key of a project of yours with the YouTube Data API v3 on."),
                     .page = QUrl(u"https://console.cloud.google.com/apis/credentials"_s),
                     .missing = ProviderRow::addProviderCredential()},
      .normalise = normaliseYouTube,
      .topics = {{.kinds = {{kind::socialYouTube}, {kind::youtubeStudio}},
                  .explanation = ServiceWords::tr("Subscribers, views and videos of a channel."),
                  .fields = {{option::channel, ServiceWords::tr("YouTube handle"), u"@channel"_s}},
                  .fetch = fetchChannel}},
  };
}

}  // namespace tarnwick
