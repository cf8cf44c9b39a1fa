#include <QCoroTask>

#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"
#include "services/providers/UsageReport.h"
#include "widgets/catalog/Kinds.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr struct {
  const char16_t* key;
  const char* label;
  double minutes;
} kClaudeWindows[] = {
    {u"five_hour", QT_TRANSLATE_NOOP("Services", "5 hours"), 300},
    {u"seven_day", QT_TRANSLATE_NOOP("Services", "7 days"), 10'080},
    {u"seven_day_sonnet", QT_TRANSLATE_NOOP("Services", "Sonnet · 7 days"), 10'080},
    {u"seven_day_opus", QT_TRANSLATE_NOOP("Services", "Opus · 7 days"), 10'080},
};

QString claudeMissing() { return UsageReport::missing(ServiceWords::tr("Claude Code OAuth access token")); }

QString explainClaude(QStringView) {
  return ServiceWords::tr("How much of a Claude plan is left, and when it is renewed.");
}

QList<ProviderField> claudeFields(QStringView) { return {}; }

void normaliseClaude(DockWidget& widget) {
  OptionRules(widget).set(option::dashboard, u"https://claude.ai/settings/usage"_s);
}

QCoro::Task<RemoteValue> fetchClaude(ProviderRequest request, std::stop_token stop) {
  ServiceCall call = request.call(u"/api/oauth/usage"_s);
  call.token = UsageReport::token(request, claudeMissing());
  call.headers.insert(u"anthropic-beta"_s, u"oauth-2025-04-20"_s);
  const QJsonValue answer = co_await request.session->json(std::move(call), stop);
  const QJsonObject body = ProviderData::object(answer);
  QList<UsageWindow> windows;
  for (const auto& [key, label, minutes] : kClaudeWindows) {
    const QString name = QString::fromUtf16(key);
    const QJsonValue window = body[name];
    if (!window.isObject()) continue;
    windows << UsageWindow{"claude."_L1 + name, ServiceWords::tr(label), UsageReport::percent(window[u"utilization"]),
                           minutes, UsageReport::moment(window[u"resets_at"], request.session->now())};
  }
  co_return UsageReport::of(request, windows);
}

}  // namespace

Provider claudePlan() {
  Provider row = ProviderRow::of(u"claude"_s, u"Claude"_s, ServiceHost::Anthropic,
                                 {{kind::claudePlanUsage}, {kind::claudePlanUsageGauge}});
  row.explanation = explainClaude;
  row.fields = claudeFields;
  row.credential = {.label = ServiceWords::tr("Claude Code OAuth access token"),
                    .placeholder = u"sk-ant-oat…"_s,
                    .explanation = ServiceWords::tr("The token that “claude setup-token” prints."),
                    .page = {},
                    .missing = claudeMissing()};
  row.normalise = normaliseClaude;
  row.fetch = fetchClaude;
  row.limits = {.requests = 1};
  return row;
}

}  // namespace tarnwick
