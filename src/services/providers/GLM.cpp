#include "services/UsageReport.h"
#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

const QString kChina = u"china"_s;

void normaliseGLM(DockWidget& widget) {
  OptionRules options(widget);
  if (options.trimmed(option::region, u"global"_s) == kChina)
    options.set(option::dashboard, u"https://open.bigmodel.cn"_s);
}

QString quotaLabel(const QString& type) {
  if (type == "TOKENS_LIMIT"_L1) return ServiceWords::tr("Token allowance");
  return type == "TIME_LIMIT"_L1 ? ServiceWords::tr("Tool allowance") : ServiceWords::tr("Quota");
}

QCoro::Task<RemoteValue> fetchGLM(ProviderRequest request, std::stop_token stop) {
  const ServiceCall call = request.call(u"/api/monitor/usage/quota/limit"_s);
  const QJsonObject body = co_await request.object(call, stop);
  QList<UsageWindow> windows;
  for (const QJsonValue& row :
       ProviderData::list(body, u"data.limits"_s, ServiceWords::tr("Z.ai did not return Coding Plan quotas."))) {
    const QString type = row[u"type"].toString();
    windows << UsageWindow{"glm."_L1 + type, quotaLabel(type), UsageReport::percent(row[u"percentage"]), std::nullopt,
                           UsageReport::moment(request.now(), row[u"nextResetTime"])};
  }
  co_return UsageReport::of(request.now(), windows);
}

QUrl keysPage(const DockWidget& widget) {
  return QUrl(widget.options.value(option::region) == kChina ? u"https://open.bigmodel.cn/usercenter/apikeys"_s
                                                             : u"https://z.ai/manage-apikey/apikey-list"_s);
}

}  // namespace

Provider glm() {
  const QString key = ServiceWords::tr("Coding plan API key");
  return {
      .id = u"glm"_s,
      .name = u"GLM"_s,
      .address = ProviderRow::at(ServiceHost::GLM),
      .regions = {{kChina, ProviderRow::at(ServiceHost::GLMChina)}},
      .page = u"https://z.ai/manage-apikey/subscription"_s,
      .credential = {.label = key,
                     .explanation = ServiceWords::tr("The API key of the account that has the plan."),
                     .missing = UsageReport::missing(key.toLower()),
                     .pageOf = keysPage,
                     .isOneWord = true},
      .normalise = normaliseGLM,
      .topics = {{.kinds = {{kind::glmUsage}},
                  .explanation = ServiceWords::tr("How much of a GLM Coding Plan is left."),
                  .fields = {{.key = option::region,
                              .label = ServiceWords::tr("Region"),
                              .values = {u"global"_s, kChina},
                              .words = {ServiceWords::tr("Global"), ServiceWords::tr("China")}}},
                  .fetch = fetchGLM}},
  };
}

}  // namespace tarnwick
