#include <QCoroTask>

#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"
#include "services/providers/UsageReport.h"
#include "widgets/catalog/Kinds.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

QString cursorMissing() { return UsageReport::missing(ServiceWords::tr("WorkosCursorSessionToken value")); }

QString explainCursor(QStringView) { return ServiceWords::tr("How much of a personal Cursor plan is left."); }

QList<ProviderField> cursorFields(QStringView) { return {}; }

void normaliseCursor(DockWidget& widget) {
  OptionRules(widget).set(option::dashboard, u"https://cursor.com/dashboard"_s);
}

double usedOf(const QJsonValue& plan) {
  if (plan[u"used"].isDouble()) {
    const QJsonValue limit = plan[u"limit"];
    OptionRules::require(limit.isDouble() && limit.toDouble() > 0,
                         ServiceWords::tr("Cursor has not reported an allowance limit."));
    return UsageReport::percent(plan[u"used"].toDouble() / limit.toDouble() * 100);
  }
  OptionRules::require(plan[u"totalPercentUsed"].isDouble(),
                       ServiceWords::tr("Cursor did not report a measurable subscription allowance."));
  return UsageReport::percent(plan[u"totalPercentUsed"]);
}

QCoro::Task<RemoteValue> fetchCursor(ProviderRequest request, std::stop_token stop) {
  // A whole line of cookies has blanks too; what is wrong with it is more than those.
  OptionRules::require(!request.credential.contains(u';'),
                       ServiceWords::tr("Enter only the Cursor session token value."));
  const QString token = UsageReport::token(request, cursorMissing());
  ServiceCall call = request.call(u"/api/usage-summary"_s);
  call.token.clear();
  call.headers.insert(u"Cookie"_s, "WorkosCursorSessionToken="_L1 + token);
  const QJsonValue answer = co_await request.session->json(std::move(call), stop);
  const QJsonObject body = ProviderData::object(answer);
  const double used = usedOf(body[u"individualUsage"][u"plan"]);
  co_return UsageReport::of(request,
                            {UsageWindow{u"cursor.plan"_s, ServiceWords::tr("Plan allowance"), used, std::nullopt,
                                         UsageReport::moment(body[u"billingCycleEnd"], request.session->now())}});
}

}  // namespace

Provider cursorPersonal() {
  Provider row = ProviderRow::of(u"cursor"_s, u"Cursor"_s, ServiceHost::CursorPersonal, {{kind::cursorPersonalUsage}});
  row.explanation = explainCursor;
  row.fields = cursorFields;
  row.credential = {.label = ServiceWords::tr("WorkosCursorSessionToken value"),
                    .placeholder = {},
                    .explanation = ServiceWords::tr("The value of this cookie of cursor.com, without its name."),
                    .page = QUrl(u"https://cursor.com/dashboard"_s),
                    .missing = cursorMissing()};
  row.normalise = normaliseCursor;
  row.fetch = fetchCursor;
  row.limits = {.requests = 1};
  return row;
}

}  // namespace tarnwick
