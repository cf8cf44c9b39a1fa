#include <QCoroTask>

#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"
#include "services/providers/UsageReport.h"
#include "widgets/catalog/Kinds.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

const QString kChina = u"china"_s;

QString glmMissing() { return UsageReport::missing(ServiceWords::tr("Coding plan API key").toLower()); }

QString explainGLM(QStringView) { return ServiceWords::tr("How much of a GLM Coding Plan is left."); }

QList<ProviderField> glmFields(QStringView) {
  return {{option::region, ServiceWords::tr("Region (global or china)"), u"global"_s}};
}

void normaliseGLM(DockWidget& widget) {
  OptionRules options(widget);
  const bool isChina = options.trimmed(option::region, u"global"_s) == kChina;
  if (isChina) options.set(option::endpoint, BaseAddresses::shipped().of(ServiceHost::GLMChina).toString());
  options.set(option::dashboard,
              isChina ? u"https://open.bigmodel.cn"_s : u"https://z.ai/manage-apikey/subscription"_s);
}

QString quotaLabel(const QString& type) {
  if (type == "TOKENS_LIMIT"_L1) return ServiceWords::tr("Token allowance");
  return type == "TIME_LIMIT"_L1 ? ServiceWords::tr("Tool allowance") : ServiceWords::tr("Quota");
}

QCoro::Task<RemoteValue> fetchGLM(ProviderRequest request, std::stop_token stop) {
  ServiceCall call = request.call(u"/api/monitor/usage/quota/limit"_s);
  call.token = UsageReport::token(request, glmMissing());
  const QJsonValue answer = co_await request.session->json(std::move(call), stop);
  QList<UsageWindow> windows;
  for (const QJsonValue& row : ProviderData::list(ProviderData::object(answer), u"data.limits"_s,
                                                  ServiceWords::tr("Z.ai did not return Coding Plan quotas."))) {
    const QString type = row[u"type"].toString();
    windows << UsageWindow{"glm."_L1 + type, quotaLabel(type), UsageReport::percent(row[u"percentage"]), std::nullopt,
                           UsageReport::moment(row[u"nextResetTime"], request.session->now())};
  }
  co_return UsageReport::of(request, windows);
}

}  // namespace

Provider glm() {
  Provider row = ProviderRow::of(u"glm"_s, u"GLM"_s, ServiceHost::GLM, {{kind::glmUsage}});
  row.explanation = explainGLM;
  row.fields = glmFields;
  row.credential = {.label = ServiceWords::tr("Coding plan API key"),
                    .placeholder = {},
                    .explanation = ServiceWords::tr("The API key of the account that has the plan."),
                    .page = QUrl(u"https://z.ai/manage-apikey/apikey-list"_s),
                    .missing = glmMissing()};
  row.normalise = normaliseGLM;
  row.fetch = fetchGLM;
  row.limits = {.requests = 1};
  return row;
}

}  // namespace tarnwick
