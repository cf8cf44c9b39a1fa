#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

void normaliseX(DockWidget& widget) {
  OptionRules options(widget);
  QString username = options.trimmed(option::username);
  if (username.startsWith(u'@')) username.remove(0, 1);
  OptionRules::require(option::username, !username.isEmpty(), ServiceWords::tr("Enter an X username."));
  options.set(option::username, username);
  options.set(option::dashboard, "https://x.com/"_L1 + ProviderData::encoded(username));
}

QCoro::Task<RemoteValue> fetchUser(ProviderRequest request, std::stop_token stop) {
  const QString path = "/2/users/by/username/"_L1 + ProviderData::encoded(request.option(option::username));
  const ServiceCall call = request.call(path, {{u"user.fields"_s, u"public_metrics"_s}});
  const QJsonObject body = co_await request.object(call, stop);
  const QJsonValue metrics = body[u"data"][u"public_metrics"];
  RemoteValue value = request.shown(ProviderData::count(metrics, u"followers_count"_s), ServiceWords::tr("Followers"));
  value.detail = body[u"data"][u"name"].toString();
  value.metrics = {{ServiceWords::tr("Following"), ProviderData::count(metrics, u"following_count"_s)},
                   {ServiceWords::tr("Posts"), ProviderData::count(metrics, u"tweet_count"_s)}};
  co_return value;
}

}  // namespace

Provider x() {
  return {
      .id = u"x"_s,
      .name = u"X"_s,
      .address = ProviderRow::at(ServiceHost::X),
      .credential = {.label = ServiceWords::tr("Bearer token"),
                     .explanation = ServiceWords::tr("The bearer token of an app of yours that may read users."),
                     .page = QUrl(u"https://developer.x.com/en/portal/dashboard"_s),
                     .missing = ProviderRow::addProviderCredential()},
      .normalise = normaliseX,
      .topics = {{.kinds = {{kind::socialTwitter}, {kind::xStudio}},
                  .explanation = ServiceWords::tr("Followers, followed accounts and posts of an account."),
                  .fields = {{option::username, ServiceWords::tr("X username"), u"username"_s}},
                  .fetch = fetchUser}},
  };
}

}  // namespace tarnwick
