#include "services/UsageReport.h"
#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr UsageReport::Named kClaudeWindows[] = {
    {"five_hour", QT_TRANSLATE_NOOP("Services", "5 hours"), 300},
    {"seven_day", QT_TRANSLATE_NOOP("Services", "7 days"), 10'080},
    {"seven_day_sonnet", QT_TRANSLATE_NOOP("Services", "Sonnet · 7 days"), 10'080},
    {"seven_day_opus", QT_TRANSLATE_NOOP("Services", "Opus · 7 days"), 10'080},
};

QCoro::Task<RemoteValue> fetchClaude(ProviderRequest request, std::stop_token stop) {
  ServiceCall call = request.call(u"/api/oauth/usage"_s);
  call.headers.insert(u"anthropic-beta"_s, u"oauth-2025-04-20"_s);
  const QJsonObject body = co_await request.object(call, stop);
  co_return UsageReport::of(request.now(), UsageReport::windows(request.now(), body, u"claude."_s, kClaudeWindows,
                                                                {"utilization", "resets_at"}));
}

}  // namespace

Provider claudePlan() {
  const QString token = ServiceWords::tr("Claude Code OAuth access token");
  return {
      .id = u"claude"_s,
      .name = u"Claude"_s,
      .address = ProviderRow::at(ServiceHost::Anthropic),
      .page = u"https://claude.ai/settings/usage"_s,
      .credential = {.label = token,
                     .placeholder = u"sk-ant-oat…"_s,
                     .explanation = ServiceWords::tr("The token that “claude setup-token” prints."),
                     .page = QUrl(u"https://claude.ai/settings/claude-code"_s),
                     .missing = UsageReport::missing(token),
                     .isOneWord = true},
      .topics = {{.kinds = {{kind::claudePlanUsage}, {kind::claudePlanUsageGauge}},
                  .explanation = ServiceWords::tr("How much of a Claude plan is left, and when it is renewed."),
                  .fetch = fetchClaude}},
  };
}

}  // namespace tarnwick
