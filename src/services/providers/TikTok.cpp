#include <QCoroTask>

#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"
#include "widgets/catalog/Kinds.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

QString explainTikTok(QStringView) { return ServiceWords::tr("Followers, likes and videos of your account."); }

QList<ProviderField> tikTokFields(QStringView) { return {}; }

void normaliseTikTok(DockWidget& widget) { OptionRules(widget).set(option::dashboard, u"https://www.tiktok.com"_s); }

QCoro::Task<RemoteValue> fetchTikTok(ProviderRequest request, std::stop_token stop) {
  ServiceCall call = request.call(u"/v2/user/info/"_s,
                                  {{u"fields"_s, u"open_id,display_name,follower_count,likes_count,video_count"_s}});
  const QJsonValue answer = co_await request.session->json(std::move(call), stop);
  const QJsonObject body = ProviderData::object(answer);
  const QJsonValue code = body[u"error"][u"code"];
  OptionRules::require(code.isUndefined() || code.toString() == "ok"_L1,
                       ServiceWords::tr("TikTok could not read the account. Check token scopes and expiry."));
  RemoteValue value =
      request.shown(ProviderData::count(body, u"data.user.follower_count"_s), ServiceWords::tr("Followers"));
  value.detail = body[u"data"][u"user"][u"display_name"].toString();
  value.metrics = {{ServiceWords::tr("Likes"), ProviderData::count(body, u"data.user.likes_count"_s)},
                   {ServiceWords::tr("Videos"), ProviderData::count(body, u"data.user.video_count"_s)}};
  co_return value;
}

}  // namespace

Provider tikTok() {
  Provider row = ProviderRow::of(u"tiktok"_s, u"TikTok"_s, ServiceHost::TikTok, {{kind::socialTikTok}});
  row.explanation = explainTikTok;
  row.fields = tikTokFields;
  row.credential = {.label = ServiceWords::tr("TikTok sign-in"),
                    .placeholder = {},
                    .explanation = ServiceWords::tr("An app of your own with “user.info.stats”."),
                    .page = QUrl(u"https://developers.tiktok.com/apps"_s),
                    .missing = ProviderRow::providerCredentialMissing()};
  row.signIn = {
      .id = u"tiktok"_s,
      .name = row.name,
      .authorization = ProviderRow::at(ServiceHost::TikTokSignIn, u"/v2/auth/authorize/"_s),
      .token = ProviderRow::at(ServiceHost::TikTok, u"/v2/oauth/token/"_s),
      .scope = u"user.info.basic,user.info.profile,user.info.stats"_s,
      .extraFields = {},
      .clientField = u"client_key"_s,
      .neededScope = u"user.info.stats"_s,
      .scopeMissing = ServiceWords::tr("TikTok statistics access was not granted. Reconnect and allow user.info.stats "
                                       "to display follower counts."),
      .port = 43880};
  row.normalise = normaliseTikTok;
  row.fetch = fetchTikTok;
  row.limits = {.requests = 1};
  return row;
}

}  // namespace tarnwick
