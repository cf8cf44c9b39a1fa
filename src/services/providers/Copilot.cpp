#include <QCoroTask>

#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"
#include "services/providers/UsageReport.h"
#include "widgets/catalog/Kinds.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

QString copilotMissing() { return UsageReport::missing(ServiceWords::tr("GitHub token with Copilot access")); }

QString explainCopilot(QStringView) { return ServiceWords::tr("How much of an individual Copilot plan is left."); }

QList<ProviderField> copilotFields(QStringView) { return {}; }

void normaliseCopilot(DockWidget& widget) {
  OptionRules(widget).set(option::dashboard, u"https://github.com/settings/copilot"_s);
}

QCoro::Task<RemoteValue> fetchCopilot(ProviderRequest request, std::stop_token stop) {
  ServiceCall call = request.call(u"/copilot_internal/user"_s);
  call.token = UsageReport::token(request, copilotMissing());
  const QJsonValue answer = co_await request.session->json(std::move(call), stop);
  const QJsonObject body = ProviderData::object(answer);
  const QJsonValue exact = body[u"quota_reset_date_utc"];
  const auto resets = UsageReport::moment(exact.isString() ? exact : body[u"quota_reset_date"], request.session->now());
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
    if (!left.isDouble()) continue;
    windows << UsageWindow{"copilot."_L1 + name, ServiceWords::tr("Included allowance"),
                           100 - UsageReport::percent(left), std::nullopt, resets};
  }
  if (!windows.isEmpty()) co_return UsageReport::of(request, windows);
  OptionRules::require(isUnlimited,
                       ServiceWords::tr("GitHub did not report a measurable individual Copilot allowance. Check "
                                        "Copilot settings."));
  co_return request.shown(ServiceWords::tr("Unlimited"), ServiceWords::tr("Included allowance"));
}

}  // namespace

Provider copilot() {
  Provider row = ProviderRow::of(u"copilot"_s, u"Copilot"_s, ServiceHost::GitHub, {{kind::copilotUsage}});
  row.explanation = explainCopilot;
  row.fields = copilotFields;
  row.credential = {.label = ServiceWords::tr("GitHub token with Copilot access"),
                    .placeholder = u"gho_…"_s,
                    .explanation = ServiceWords::tr("A token of the account that has the plan."),
                    .page = {},
                    .missing = copilotMissing()};
  row.normalise = normaliseCopilot;
  row.fetch = fetchCopilot;
  row.limits = {.requests = 1};
  return row;
}

}  // namespace tarnwick
