#include <QCoroTask>

#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"
#include "widgets/catalog/Kinds.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

QString explainX(QStringView) { return ServiceWords::tr("Followers, followed accounts and posts of an account."); }

QList<ProviderField> xFields(QStringView) {
  return {{option::username, ServiceWords::tr("X username"), u"username"_s}};
}

void normaliseX(DockWidget& widget) {
  OptionRules options(widget);
  QString username = options.trimmed(option::username);
  if (username.startsWith(u'@')) username.remove(0, 1);
  OptionRules::require(!username.isEmpty(), ServiceWords::tr("Enter an X username."));
  options.set(option::username, username);
  options.set(option::dashboard, "https://x.com/"_L1 + QString::fromLatin1(QUrl::toPercentEncoding(username)));
}

QCoro::Task<RemoteValue> fetchX(ProviderRequest request, std::stop_token stop) {
  const QString username = QString::fromLatin1(QUrl::toPercentEncoding(request.option(option::username)));
  ServiceCall call = request.call("/2/users/by/username/"_L1 + username, {{u"user.fields"_s, u"public_metrics"_s}});
  const QJsonValue answer = co_await request.session->json(std::move(call), stop);
  const QJsonObject body = ProviderData::object(answer);
  RemoteValue value =
      request.shown(ProviderData::count(body, u"data.public_metrics.followers_count"_s), ServiceWords::tr("Followers"));
  value.detail = body[u"data"][u"name"].toString();
  value.metrics = {{ServiceWords::tr("Following"), ProviderData::count(body, u"data.public_metrics.following_count"_s)},
                   {ServiceWords::tr("Posts"), ProviderData::count(body, u"data.public_metrics.tweet_count"_s)}};
  co_return value;
}

}  // namespace

Provider x() {
  Provider row = ProviderRow::of(u"x"_s, u"X"_s, ServiceHost::X, {{kind::socialTwitter}, {kind::xStudio}});
  row.explanation = explainX;
  row.fields = xFields;
  row.credential = {.label = ServiceWords::tr("Bearer token"),
                    .placeholder = {},
                    .explanation = ServiceWords::tr("The bearer token of an app of yours that may read users."),
                    .page = QUrl(u"https://developer.x.com/en/portal/dashboard"_s),
                    .missing = ProviderRow::providerCredentialMissing()};
  row.normalise = normaliseX;
  row.fetch = fetchX;
  row.limits = {.requests = 1};
  return row;
}

}  // namespace tarnwick
