#include "services/UsageReport.h"
#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr UsageReport::Named kOpenCodeWindows[] = {
    {"rolling", QT_TRANSLATE_NOOP("Services", "5 hours"), 300},
    {"weekly", QT_TRANSLATE_NOOP("Services", "Week"), 10'080},
    {"monthly", QT_TRANSLATE_NOOP("Services", "Month")},
};

QCoro::Task<RemoteValue> fetchOpenCode(ProviderRequest request, std::stop_token stop) {
  const ServiceCall call = request.call(u"/zen/go/v1/usage"_s);
  const QJsonObject body = co_await request.object(call, stop);
  const QList<UsageWindow> windows =
      UsageReport::windows(request.now(), body[u"usage"], u"opencode."_s, kOpenCodeWindows, {"percent", "resetsAt"});
  require(!windows.isEmpty(), ServiceWords::tr("OpenCode did not return Go usage windows."));
  co_return UsageReport::of(request.now(), windows);
}

}  // namespace

Provider openCode() {
  const QString key = ServiceWords::tr("Coding plan API key");
  return {
      .id = u"opencode"_s,
      .name = u"OpenCode"_s,
      .address = ProviderRow::at(ServiceHost::OpenCode),
      .page = u"https://opencode.ai/auth"_s,
      .credential = {.label = key,
                     .explanation = ServiceWords::tr("The API key of the workspace that has the plan."),
                     .page = QUrl(u"https://opencode.ai/auth"_s),
                     .missing = UsageReport::missing(key.toLower()),
                     .isOneWord = true},
      .topics = {{.kinds = {{kind::openCodeUsage}},
                  .explanation = ServiceWords::tr("How much of an OpenCode Go plan is left."),
                  .fetch = fetchOpenCode}},
  };
}

}  // namespace tarnwick
