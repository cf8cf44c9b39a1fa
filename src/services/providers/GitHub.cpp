#include <QCoroTask>

#include "services/Paging.h"
#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"
#include "widgets/CalendarStrip.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

// What a widget shows that is neither of contributions nor an overview.
const QString kUnread = u"unread"_s;
const QMap<QString, const char*> kRepositoryMetrics{
    {u"stargazers_count"_s, QT_TRANSLATE_NOOP("Services", "Repository stars")},
    {u"forks"_s, QT_TRANSLATE_NOOP("Services", "Repository forks")},
    {u"open_issues_count"_s, QT_TRANSLATE_NOOP("Services", "Open issues & pull requests")},
};
const QString kSite = u"https://github.com"_s;

bool showsContributions(QStringView kind) { return kind.contains("Contributions"_L1); }
bool showsOverview(QStringView kind) { return kind.contains("Overview"_L1); }

bool isRepository(const QString& text) {
  const QStringList parts = text.split(u'/');
  return parts.size() == 2 && ProviderData::identifier(parts[0]) && ProviderData::identifier(parts[1]) &&
         parts[0] != ".."_L1 && parts[1] != ".."_L1;
}

QString explainGitHub(QStringView kind) {
  if (showsContributions(kind)) return ServiceWords::tr("Contributions of a GitHub account over the last year.");
  if (showsOverview(kind))
    return ServiceWords::tr("Unread notifications, open pull requests and a repository’s stars.");
  return ServiceWords::tr("Unread notifications, or a figure of a repository.");
}

QList<ProviderField> gitHubFields(QStringView kind) {
  if (showsContributions(kind)) return {{option::username, ServiceWords::tr("GitHub username"), u"octocat"_s}};
  const ProviderField repository{option::repository, ServiceWords::tr("Repository"), u"owner/repository"_s};
  if (showsOverview(kind)) return {repository};
  return {{option::field, ServiceWords::tr("Metric"), kUnread}, repository};
}

bool needsGitHubCredential(const DockWidget& widget) {
  return showsContributions(widget.kind) || widget.options.value(option::field) == kUnread;
}

void normaliseGitHub(DockWidget& widget) {
  OptionRules options(widget);
  options.set(option::dashboard, kSite);
  if (showsContributions(widget.kind)) {
    OptionRules::require(ProviderData::identifier(options.trimmed(option::username)),
                         ServiceWords::tr("Enter a GitHub username."));
    return;
  }
  const QString repository = options.trimmed(option::repository);
  if (showsOverview(widget.kind)) {
    options.set(option::field, kUnread);
    OptionRules::require(repository.isEmpty() || isRepository(repository),
                         ServiceWords::tr("Enter a repository as owner/repository."));
    return;
  }
  const QString field = options.trimmed(option::field, kUnread);
  if (field == kUnread) return;
  OptionRules::require(kRepositoryMetrics.contains(field), ServiceWords::tr("Choose a supported GitHub metric."));
  OptionRules::require(!repository.isEmpty(), ServiceWords::tr("Enter a repository for this metric."));
  OptionRules::require(isRepository(repository), ServiceWords::tr("Enter a repository as owner/repository."));
}

ServiceCall graphql(const ProviderRequest& request, const QString& query, const QJsonObject& variables = {}) {
  ServiceCall call = request.call(u"/graphql"_s);
  call.body = QJsonObject{{u"query"_s, query}};
  if (!variables.isEmpty()) call.body->insert(u"variables"_s, variables);
  return call;
}

QCoro::Task<RemoteValue> contributions(ProviderRequest request, std::stop_token stop) {
  ServiceCall call = graphql(
      request,
      u"query($login:String!){user(login:$login){contributionsCollection{contributionCalendar{totalContributions "
      u"weeks{contributionDays{date contributionCount}}}}}}"_s,
      {{u"login"_s, request.option(option::username)}});
  const QJsonValue answer = co_await request.session->json(std::move(call), stop);
  const QJsonObject body = ProviderData::object(answer);
  const QJsonArray weeks = ProviderData::list(body, u"data.user.contributionsCollection.contributionCalendar.weeks"_s,
                                              ServiceWords::tr("GitHub did not return a contribution calendar."));
  QJsonArray days;
  for (const QJsonValue& week : weeks)
    for (const QJsonValue& day : week[u"contributionDays"].toArray()) days << day;
  const ContributionSummary summary = ContributionSummary::decode(days, request.session->now());
  RemoteValue value = request.shown(QString::number(summary.today), ServiceWords::tr("Contributions today"));
  value.detail = summary.totalText();
  for (const QJsonValue& day : days) value.numbers << day[u"contributionCount"].toDouble();
  value.metrics = {{ServiceWords::tr("7 days"), QString::number(summary.lastSevenDays)}};
  co_return value;
}

ServiceRow notification(const QJsonValue& row) {
  const QString title = row[u"subject"][u"title"].toString();
  return {row[u"id"].toString(), title.isEmpty() ? ServiceWords::tr("Notification") : title,
          row[u"repository"][u"full_name"].toString(), QUrl(kSite + "/notifications"_L1)};
}

QCoro::Task<RemoteValue> notifications(ProviderRequest request, std::stop_token stop) {
  QList<ServiceRow> rows;
  Paging pages(request.limits);
  while (pages.next(stop)) {
    ServiceCall call = request.call(u"/notifications"_s, {{u"all"_s, u"false"_s},
                                                          {u"per_page"_s, QString::number(request.limits.pageSize)},
                                                          {u"page"_s, QString::number(pages.page())}});
    const QJsonValue body = co_await request.session->json(std::move(call), stop);
    const QJsonArray page = ProviderData::list(body, {}, ServiceWords::tr("GitHub did not return notifications."));
    for (const QJsonValue& row : page) rows << notification(row);
    if (page.size() < request.limits.pageSize) pages.finish();
  }
  RemoteValue value = request.shown(QString::number(rows.size()), ServiceWords::tr("Unread notifications"));
  value.rows = rows;
  if (pages.isPartial()) value.detail = ServiceWords::tr("Over 2,000 notifications; partial count.");
  co_return value;
}

QCoro::Task<RemoteValue> overview(ProviderRequest request, std::stop_token stop) {
  RemoteValue value = co_await notifications(request, stop);
  ServiceCall open = graphql(request, u"{viewer{pullRequests(states:OPEN){totalCount}}}"_s);
  const QJsonValue answer = co_await request.session->json(std::move(open), stop);
  const QJsonObject viewer = ProviderData::object(answer);
  value.metrics = {
      {ServiceWords::tr("Unread"), value.value.value_or(QString())},
      {ServiceWords::tr("Open PRs"), ProviderData::count(viewer, u"data.viewer.pullRequests.totalCount"_s)}};
  const QString repository = request.option(option::repository);
  if (!repository.isEmpty()) {
    ServiceCall stars = request.call("/repos/"_L1 + repository);
    const QJsonValue found = co_await request.session->json(std::move(stars), stop);
    value.metrics << ServiceMetric{ServiceWords::tr("Stars"), ProviderData::count(found, u"stargazers_count"_s)};
  }
  co_return value;
}

QCoro::Task<RemoteValue> repositoryMetric(ProviderRequest request, std::stop_token stop) {
  const QString field = request.option(option::field);
  const QString repository = request.option(option::repository);
  ServiceCall call = request.call("/repos/"_L1 + repository);
  const QJsonValue answer = co_await request.session->json(std::move(call), stop);
  RemoteValue value = request.shown(ProviderData::count(ProviderData::object(answer), field),
                                    ServiceWords::tr(kRepositoryMetrics.value(field)));
  value.detail = repository;
  co_return value;
}

QCoro::Task<RemoteValue> fetchGitHub(ProviderRequest request, std::stop_token stop) {
  if (showsContributions(request.widget.kind)) return contributions(std::move(request), stop);
  if (showsOverview(request.widget.kind)) return overview(std::move(request), stop);
  if (request.option(option::field) == kUnread) return notifications(std::move(request), stop);
  return repositoryMetric(std::move(request), stop);
}

}  // namespace

Provider gitHub() {
  Provider row =
      ProviderRow::of(u"github"_s, u"GitHub"_s, ServiceHost::GitHub, {{u"GitHub"_s, KindPattern::Match::Contains}});
  row.explanation = explainGitHub;
  row.fields = gitHubFields;
  row.credential = {
      .label = ServiceWords::tr("Personal access token"),
      .placeholder = u"ghp_…"_s,
      .explanation = ServiceWords::tr("A classic token with the scopes “notifications” and “read:user”, and “repo” for "
                                      "private repositories. Figures of public repositories need none."),
      .page = QUrl(u"https://github.com/settings/tokens"_s),
      .missing = ProviderRow::serviceCredentialMissing(),
      .isNeeded = needsGitHubCredential};
  row.normalise = normaliseGitHub;
  row.fetch = fetchGitHub;
  row.limits = {.requests = 30, .pages = 20, .pageSize = 100};
  return row;
}

}  // namespace tarnwick
