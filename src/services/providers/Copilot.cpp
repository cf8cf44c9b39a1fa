#include "services/UsageReport.h"
#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

QCoro::Task<RemoteValue> fetchCopilot(ProviderRequest request, std::stop_token stop) {
  const ServiceCall call = request.call(u"/copilot_internal/user"_s);
  const QJsonObject body = co_await request.object(call, stop);
  const QJsonValue exact = body[u"quota_reset_date_utc"];
  const auto resets = UsageReport::moment(request.now(), exact.isString() ? exact : body[u"quota_reset_date"]);
  QList<UsageWindow> windows;
  bool isUnlimited = false;
  const QJsonObject snapshots = body[u"quota_snapshots"].toObject();
  for (const QString& name : snapshots.keys()) {
    const QJsonValue snapshot = snapshots[name];
    if (snapshot[u"unlimited"].toBool()) {
      isUnlimited = true;
      continue;
    }
    const QJsonValue left = snapshot[u"percent_remaining"];
    if (left.isUndefined() || left.isNull()) continue;
    windows << UsageWindow{"copilot."_L1 + name, ServiceWords::tr("Included allowance"),
                           100 - UsageReport::percent(left), std::nullopt, resets};
  }
  if (!windows.isEmpty()) co_return UsageReport::of(request.now(), windows);
  require(isUnlimited, ServiceWords::tr("GitHub did not report a measurable individual Copilot allowance. Check "
                                        "Copilot settings."));
  co_return request.shown(ServiceWords::tr("Unlimited"), ServiceWords::tr("Included allowance"));
}

}  // namespace

Provider copilot() {
  const QString token = ServiceWords::tr("GitHub token with Copilot access");
  return {
      .id = u"copilot"_s,
      .name = u"Copilot"_s,
      .address = ProviderRow::at(ServiceHost::GitHub),
      .page = u"https://github.com/settings/copilot"_s,
      .credential = {.label = token,
                     .placeholder = u"gho_…"_s,
                     .explanation =
                         ServiceWords::tr("A token of the account that has the plan, as “gh auth token” prints it."),
                     .page = QUrl(u"https://github.com/settings/copilot"_s),
                     .missing = UsageReport::missing(token),
                     .isOneWord = true},
      .topics = {{.kinds = {{kind::copilotUsage}},
                  .explanation = ServiceWords::tr("How much of an individual Copilot plan is left."),
                  .fetch = fetchCopilot}},
  };
}

}  // namespace tarnwick
