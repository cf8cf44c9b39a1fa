#include <QCoroTask>

#include "base/Cancelled.h"
#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kGigabyte = 1e9;

QString explainSupabase(QStringView) {
  return ServiceWords::tr("Requests of a project in the last 24 hours, and how full its disk is.");
}

QList<ProviderField> supabaseFields(QStringView) {
  return {{option::projectRef, ServiceWords::tr("Project reference"), u"abcdefghijklmnopqrst"_s}};
}

void normaliseSupabase(DockWidget& widget) {
  OptionRules options(widget);
  const QString reference = options.trimmed(option::projectRef);
  OptionRules::require(OptionRules::matches(reference, "[a-z]{20}"),
                       ServiceWords::tr("Enter the 20-letter Supabase project reference."));
  options.set(option::dashboard, "https://supabase.com/dashboard/project/"_L1 + reference);
}

/// "1.20 / 8.00 GB disk used".
QString diskWords(const QJsonValue& body) {
  const QJsonValue used = body[u"metrics"][u"fs_used_bytes"];
  const QJsonValue size = body[u"metrics"][u"fs_size_bytes"];
  const bool isPair = used.isDouble() && size.isDouble() && used.toDouble() >= 0 && size.toDouble() > 0 &&
                      used.toDouble() <= size.toDouble();
  if (!isPair) return ServiceWords::tr("Disk metric: ") + ServiceWords::tr("Invalid disk usage.");
  return QString::asprintf("%.2f / %.2f GB", used.toDouble() / kGigabyte, size.toDouble() / kGigabyte) +
         ServiceWords::tr(" disk used");
}

/// A project whose disk cannot be read still shows its requests.
QCoro::Task<QString> diskOf(ProviderRequest request, std::stop_token stop) {
  try {
    ServiceCall call = request.call("/v1/projects/"_L1 + request.option(option::projectRef) + "/config/disk/util"_L1);
    const QJsonValue body = co_await request.session->json(std::move(call), stop);
    co_return diskWords(body);
  } catch (const Cancelled&) {
    throw;
  } catch (const std::exception&) {
    co_return ServiceWords::tr("Disk metric: ") + ServiceWords::tr("Unavailable");
  }
}

QCoro::Task<RemoteValue> fetchSupabase(ProviderRequest request, std::stop_token stop) {
  ServiceCall call =
      request.call("/v1/projects/"_L1 + request.option(option::projectRef) + "/analytics/endpoints/usage.api-counts"_L1,
                   {{u"interval"_s, u"1day"_s}});
  const QJsonValue answer = co_await request.session->json(std::move(call), stop);
  const QJsonObject body = ProviderData::object(answer);
  const QJsonValue error = body[u"error"];
  OptionRules::require(error.isUndefined() || error.isNull(),
                       ServiceWords::tr("Supabase could not return usage. Check project permissions."));
  const QJsonArray rows =
      ProviderData::list(body, u"result"_s, ServiceWords::tr("Supabase did not return request metrics."));
  qint64 rest = 0;
  qint64 auth = 0;
  for (const QJsonValue& row : rows) {
    OptionRules::require(!row[u"total_rest_requests"].isUndefined() && !row[u"total_auth_requests"].isUndefined(),
                         ServiceWords::tr("Supabase did not return request metrics."));
    rest += ProviderData::wholeNumber(row, u"total_rest_requests"_s);
    auth += ProviderData::wholeNumber(row, u"total_auth_requests"_s);
  }
  RemoteValue value = request.shown(QString::number(rest), ServiceWords::tr("REST requests · 24 hours"));
  value.metrics = {{ServiceWords::tr("REST"), QString::number(rest)},
                   {ServiceWords::tr("Auth"), QString::number(auth)}};
  value.detail = co_await diskOf(request, stop);
  co_return value;
}

}  // namespace

Provider supabase() {
  Provider row = ProviderRow::of(u"supabase"_s, u"Supabase"_s, ServiceHost::Supabase,
                                 {{u"Supabase"_s, KindPattern::Match::Contains}});
  row.explanation = explainSupabase;
  row.fields = supabaseFields;
  row.credential = {.label = ServiceWords::tr("Personal access token"),
                    .placeholder = u"sbp_…"_s,
                    .explanation = ServiceWords::tr("An access token of an account that may read the project."),
                    .page = QUrl(u"https://supabase.com/dashboard/account/tokens"_s),
                    .missing = ProviderRow::serviceCredentialMissing()};
  row.normalise = normaliseSupabase;
  row.fetch = fetchSupabase;
  row.limits = {.requests = 2};
  return row;
}

}  // namespace tarnwick
