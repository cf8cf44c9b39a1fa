#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

QCoro::Task<RemoteValue> fetchCreator(ProviderRequest request, std::stop_token stop) {
  const ServiceCall call = request.call(
      u"/v2/user/info/"_s, {{u"fields"_s, u"open_id,display_name,follower_count,likes_count,video_count"_s}});
  const QJsonObject body = co_await request.object(call, stop);
  const QJsonValue code = body[u"error"][u"code"];
  require(code.isUndefined() || code.toString() == "ok"_L1,
          ServiceWords::tr("TikTok could not read the account. Check token scopes and expiry."));
  const QJsonValue user = body[u"data"][u"user"];
  RemoteValue value = request.shown(ProviderData::count(user, u"follower_count"_s), ServiceWords::tr("Followers"));
  value.detail = user[u"display_name"].toString();
  value.metrics = {{ServiceWords::tr("Likes"), ProviderData::count(user, u"likes_count"_s)},
                   {ServiceWords::tr("Videos"), ProviderData::count(user, u"video_count"_s)}};
  co_return value;
}

}  // namespace

Provider tikTok() {
  return {
      .id = u"tiktok"_s,
      .name = u"TikTok"_s,
      .address = ProviderRow::at(ServiceHost::TikTok),
      .page = u"https://www.tiktok.com"_s,
      .credential = {.label = ServiceWords::tr("TikTok sign-in"),
                     .explanation = ServiceWords::tr("Needs an app of your own with “user.info.stats”; its client "
                                                     "key is the client ID."),
                     .page = QUrl(u"https://developers.tiktok.com/apps"_s),
                     .missing = ProviderRow::addProviderCredential()},
      .signIn =
          OAuthProvider{.id = u"tiktok"_s,
                        .name = u"TikTok"_s,
                        .authorization = ProviderRow::at(ServiceHost::TikTokSignIn, u"/v2/auth/authorize/"_s),
                        .token = ProviderRow::at(ServiceHost::TikTok, u"/v2/oauth/token/"_s),
                        .scope = u"user.info.basic,user.info.profile,user.info.stats"_s,
                        .extraFields = {},
                        .clientField = u"client_key"_s,
                        .neededScope = u"user.info.stats"_s,
                        .scopeMissing = ServiceWords::tr("TikTok statistics access was not granted. Reconnect and "
                                                         "allow user.info.stats to display follower counts."),
                        .port = 43880},
      .topics = {{.kinds = {{kind::socialTikTok}},
                  .explanation = ServiceWords::tr("Followers, likes and videos of your account."),
                  .fetch = fetchCreator}},
  };
}

}  // namespace tarnwick
