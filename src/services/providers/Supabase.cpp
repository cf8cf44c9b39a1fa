#include "base/Cancelled.h"
#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kGigabyte = 1e9;

void normaliseSupabase(DockWidget& widget) {
  OptionRules options(widget);
  const QString reference = options.trimmed(option::projectRef);
  OptionRules::require(option::projectRef, OptionRules::matches(reference, "[a-z]{20}"),
                       ServiceWords::tr("Enter the 20-letter Supabase project reference."));
  options.set(option::dashboard, "https://supabase.com/dashboard/project/"_L1 + reference);
}

ServiceCall projectCall(const ProviderRequest& request, const QString& path, const QMap<QString, QString>& query = {}) {
  return request.call("/v1/projects/"_L1 + request.option(option::projectRef) + path, query);
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
    const ServiceCall call = projectCall(request, u"/config/disk/util"_s);
    const QJsonObject body = co_await request.object(call, stop);
    co_return diskWords(body);
  } catch (const Cancelled&) {
    throw;
  } catch (const std::exception&) {
    co_return ServiceWords::tr("Disk metric: ") + ServiceWords::tr("Unavailable");
  }
}

QCoro::Task<RemoteValue> fetchProject(ProviderRequest request, std::stop_token stop) {
  const ServiceCall call =
      projectCall(request, u"/analytics/endpoints/usage.api-counts"_s, {{u"interval"_s, u"1day"_s}});
  const QJsonObject body = co_await request.object(call, stop);
  const QJsonValue error = body[u"error"];
  require(error.isUndefined() || error.isNull(),
          ServiceWords::tr("Supabase could not return usage. Check project permissions."));
  const QString noMetrics = ServiceWords::tr("Supabase did not return request metrics.");
  qint64 rest = 0;
  qint64 auth = 0;
  for (const QJsonValue& row : ProviderData::list(body, u"result"_s, noMetrics)) {
    require(!row[u"total_rest_requests"].isUndefined() && !row[u"total_auth_requests"].isUndefined(), noMetrics);
    ProviderData::add(rest, ProviderData::wholeNumber(row, u"total_rest_requests"_s), noMetrics);
    ProviderData::add(auth, ProviderData::wholeNumber(row, u"total_auth_requests"_s), noMetrics);
  }
  RemoteValue value = request.shown(QString::number(rest), ServiceWords::tr("REST requests · 24 hours"));
  value.metrics = {{ServiceWords::tr("REST"), QString::number(rest)},
                   {ServiceWords::tr("Auth"), QString::number(auth)}};
  value.detail = co_await diskOf(request, stop);
  co_return value;
}

}  // namespace

Provider supabase() {
  return {
      .id = u"supabase"_s,
      .name = u"Supabase"_s,
      .address = ProviderRow::at(ServiceHost::Supabase),
      .credential = {.label = ServiceWords::tr("Personal access token"),
                     .placeholder = u"sbp_…"_s,
                     .explanation = ServiceWords::tr("An access token of an account that may read the project."),
                     .page = QUrl(u"https://supabase.com/dashboard/account/tokens"_s),
                     .missing = ProviderRow::addServiceCredential()},
      .normalise = normaliseSupabase,
      .topics = {{.kinds = {{u"Supabase"_s, KindPattern::Match::Contains}},
                  .explanation =
                      ServiceWords::tr("Requests of a project in the last 24 hours, and how full its disk is."),
                  .fields = {{option::projectRef, ServiceWords::tr("Project reference"), u"abcdefghijklmnopqrst"_s}},
                  .fetch = fetchProject}},
  };
}

}  // namespace tarnwick
