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
  std::optional<double> minutes;
} kOpenCodeWindows[] = {
    {u"rolling", QT_TRANSLATE_NOOP("Services", "5 hours"), 300},
    {u"weekly", QT_TRANSLATE_NOOP("Services", "Week"), 10'080},
    {u"monthly", QT_TRANSLATE_NOOP("Services", "Month"), std::nullopt},
};

QString openCodeMissing() { return UsageReport::missing(ServiceWords::tr("Coding plan API key").toLower()); }

QString explainOpenCode(QStringView) { return ServiceWords::tr("How much of an OpenCode Go plan is left."); }

QList<ProviderField> openCodeFields(QStringView) { return {}; }

void normaliseOpenCode(DockWidget& widget) {
  OptionRules(widget).set(option::dashboard, u"https://opencode.ai/auth"_s);
}

QCoro::Task<RemoteValue> fetchOpenCode(ProviderRequest request, std::stop_token stop) {
  ServiceCall call = request.call(u"/zen/go/v1/usage"_s);
  call.token = UsageReport::token(request, openCodeMissing());
  const QJsonValue answer = co_await request.session->json(std::move(call), stop);
  const QJsonValue usage = ProviderData::object(answer)[u"usage"];
  QList<UsageWindow> windows;
  for (const auto& [key, label, minutes] : kOpenCodeWindows) {
    const QString name = QString::fromUtf16(key);
    const QJsonValue window = usage[name];
    if (!window.isObject()) continue;
    windows << UsageWindow{"opencode."_L1 + name, ServiceWords::tr(label), UsageReport::percent(window[u"percent"]),
                           minutes, UsageReport::moment(window[u"resetsAt"], request.session->now())};
  }
  OptionRules::require(!windows.isEmpty(), ServiceWords::tr("OpenCode did not return Go usage windows."));
  co_return UsageReport::of(request, windows);
}

}  // namespace

Provider openCode() {
  Provider row = ProviderRow::of(u"opencode"_s, u"OpenCode"_s, ServiceHost::OpenCode, {{kind::openCodeUsage}});
  row.explanation = explainOpenCode;
  row.fields = openCodeFields;
  row.credential = {.label = ServiceWords::tr("Coding plan API key"),
                    .placeholder = {},
                    .explanation = ServiceWords::tr("The API key of the workspace that has the plan."),
                    .page = QUrl(u"https://opencode.ai/auth"_s),
                    .missing = openCodeMissing()};
  row.normalise = normaliseOpenCode;
  row.fetch = fetchOpenCode;
  row.limits = {.requests = 1};
  return row;
}

}  // namespace tarnwick
