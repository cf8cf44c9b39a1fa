#include "services/UsageReport.h"
#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// A whole line of cookies may have blanks too; what is wrong with it is more than those.
QString cookieFault(const QString& token) {
  return token.contains(u';') ? ServiceWords::tr("Enter only the Cursor session token value.") : QString();
}

/// Percent of the plan.
double usedOf(const QJsonValue& plan) {
  const QJsonValue used = plan[u"used"];
  const QJsonValue percent = plan[u"totalPercentUsed"];
  if (used.isDouble()) {
    const double limit = plan[u"limit"].toDouble();
    require(limit > 0, ServiceWords::tr("Cursor has not reported an allowance limit."));
    return UsageReport::percent(used.toDouble() / limit * 100);
  }
  require(percent.isDouble(), ServiceWords::tr("Cursor did not report a measurable subscription allowance."));
  return UsageReport::percent(percent);
}

QCoro::Task<RemoteValue> fetchCursor(ProviderRequest request, std::stop_token stop) {
  ServiceCall call = request.call(u"/api/usage-summary"_s);
  call.token.clear();
  call.headers.insert(u"Cookie"_s, "WorkosCursorSessionToken="_L1 + request.credential);
  const QJsonObject body = co_await request.object(call, stop);
  const UsageWindow plan{u"cursor.plan"_s, ServiceWords::tr("Plan allowance"),
                         usedOf(body[u"individualUsage"][u"plan"]), std::nullopt,
                         UsageReport::moment(request.now(), body[u"billingCycleEnd"])};
  co_return UsageReport::of(request.now(), {plan});
}

}  // namespace

Provider cursorPersonal() {
  const QString token = ServiceWords::tr("WorkosCursorSessionToken value");
  return {
      .id = u"cursor"_s,
      .name = u"Cursor"_s,
      .address = ProviderRow::at(ServiceHost::CursorPersonal),
      .page = u"https://cursor.com/dashboard"_s,
      .credential = {.label = token,
                     .explanation = ServiceWords::tr("The value of this cookie of cursor.com, without its name."),
                     .page = QUrl(u"https://cursor.com/dashboard"_s),
                     .missing = UsageReport::missing(token),
                     .isOneWord = true,
                     .fault = cookieFault},
      .topics = {{.kinds = {{kind::cursorPersonalUsage}},
                  .explanation = ServiceWords::tr("How much of a personal Cursor plan is left."),
                  .fetch = fetchCursor}},
  };
}

}  // namespace tarnwick
