#include "services/Paging.h"
#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"
#include "widgets/CalendarStrip.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

const QString kSite = u"https://github.com"_s;
/// The metric that is no repository's.
const QString kUnread = u"unread"_s;
const QMap<QString, const char*> kRepositoryMetrics{
    {u"stargazers_count"_s, QT_TRANSLATE_NOOP("Services", "Repository stars")},
    {u"forks"_s, QT_TRANSLATE_NOOP("Services", "Repository forks")},
    {u"open_issues_count"_s, QT_TRANSLATE_NOOP("Services", "Open issues & pull requests")},
};
/// However many notifications are asked for at a time, the service may give no more than these.
constexpr qsizetype kFullPage = 50;

bool showsContributions(QStringView kind) { return kind.contains("Contributions"_L1); }
bool showsOverview(QStringView kind) { return kind.contains("Overview"_L1); }

bool isRepository(const QString& text) {
  const QStringList parts = text.split(u'/');
  return parts.size() == 2 && std::ranges::all_of(parts, [](const QString& part) {
           return ProviderData::identifier(part) && part != "."_L1 && part != ".."_L1;
         });
}

void normaliseGitHub(DockWidget& widget) {
  OptionRules options(widget);
  const QString noRepository = ServiceWords::tr("Enter a repository as owner/repository.");
  if (showsContributions(widget.kind)) {
    const QString username = options.trimmed(option::username);
    OptionRules::require(option::username, ProviderData::identifier(username),
                         ServiceWords::tr("Enter a GitHub username."));
    options.set(option::dashboard, kSite + u'/' + username);
    return;
  }
  const QString repository = options.trimmed(option::repository);
  if (showsOverview(widget.kind)) {
    OptionRules::require(option::repository, repository.isEmpty() || isRepository(repository), noRepository);
    return;
  }
  const QString field = options.trimmed(option::field, kUnread);
  if (field == kUnread) return;
  OptionRules::require(option::field, kRepositoryMetrics.contains(field),
                       ServiceWords::tr("Choose a supported GitHub metric."));
  OptionRules::require(option::repository, !repository.isEmpty(),
                       ServiceWords::tr("Enter a repository for this metric."));
  OptionRules::require(option::repository, isRepository(repository), noRepository);
  options.set(option::dashboard, kSite + u'/' + repository);
}

/// What belongs to nobody can be read without a credential.
bool readsAccount(const DockWidget& widget) {
  return showsContributions(widget.kind) || showsOverview(widget.kind) ||
         widget.options.value(option::field) == kUnread;
}

ServiceCall graphql(const ProviderRequest& request, const QString& query) {
  ServiceCall call = request.call(u"/graphql"_s);
  call.body = QJsonObject{{u"query"_s, query}};
  return call;
}

QCoro::Task<RemoteValue> fetchContributions(ProviderRequest request, std::stop_token stop) {
  ServiceCall call = graphql(
      request,
      u"query($login:String!){user(login:$login){contributionsCollection{contributionCalendar{totalContributions "
      u"weeks{contributionDays{date contributionCount}}}}}}"_s);
  call.body->insert(u"variables"_s, QJsonObject{{u"login"_s, request.option(option::username)}});
  const QJsonObject body = co_await request.object(call, stop);
  const QJsonArray weeks = ProviderData::list(body, u"data.user.contributionsCollection.contributionCalendar.weeks"_s,
                                              ServiceWords::tr("GitHub did not return a contribution calendar."));
  QJsonArray days;
  for (const QJsonValue& week : weeks)
    for (const QJsonValue& day : week[u"contributionDays"].toArray()) days << day;
  const ContributionSummary summary = ContributionSummary::decode(days, request.now());
  RemoteValue value = request.shown(QString::number(summary.today), ServiceWords::tr("Contributions today"));
  value.detail = summary.totalText();
  for (const QJsonValue& day : days) {
    value.numbers << day[u"contributionCount"].toDouble();
    value.numberDays << ProviderData::dayOf(day[u"date"]);
  }
  value.metrics = {{ServiceWords::tr("7 days"), QString::number(summary.lastSevenDays)}};
  co_return value;
}

ServiceRow notification(const QJsonValue& row) {
  const QString title = row[u"subject"][u"title"].toString();
  return {row[u"id"].toString(), title.isEmpty() ? ServiceWords::tr("Notification") : title,
          row[u"repository"][u"full_name"].toString(), QUrl(kSite + "/notifications"_L1)};
}

QCoro::Task<RemoteValue> fetchNotifications(ProviderRequest request, std::stop_token stop) {
  QList<ServiceRow> rows;
  Paging pages(request.limits);
  while (pages.next(stop)) {
    const ServiceCall call =
        request.call(u"/notifications"_s, {{u"all"_s, u"false"_s},
                                           {u"per_page"_s, QString::number(request.limits.pageSize)},
                                           {u"page"_s, QString::number(pages.page())}});
    const QJsonValue body = co_await request.answer(call, stop);
    const QJsonArray page = ProviderData::list(body, {}, ServiceWords::tr("GitHub did not return notifications."));
    pages.goOn(page.size(), kFullPage);
    for (const QJsonValue& row : page) rows << notification(row);
  }
  RemoteValue value = request.shown(QString::number(rows.size()), ServiceWords::tr("Unread notifications"));
  value.rows = rows;
  if (pages.isPartial()) {
    value.detail =
        ServiceWords::tr("Over %1 notifications; partial count.").arg(QLocale(QLocale::English).toString(rows.size()));
  }
  co_return value;
}

QCoro::Task<RemoteValue> fetchAccount(ProviderRequest request, std::stop_token stop) {
  RemoteValue value = co_await fetchNotifications(request, stop);
  const ServiceCall open = graphql(request, u"{viewer{pullRequests(states:OPEN){totalCount}}}"_s);
  const QJsonObject viewer = co_await request.object(open, stop);
  value.metrics = {
      {ServiceWords::tr("Unread"), value.value.value_or(QString())},
      {ServiceWords::tr("Open PRs"), ProviderData::count(viewer, u"data.viewer.pullRequests.totalCount"_s)}};
  const QString repository = request.option(option::repository);
  if (repository.isEmpty()) co_return value;
  const ServiceCall call = request.call("/repos/"_L1 + repository);
  const QJsonObject found = co_await request.object(call, stop);
  value.metrics << ServiceMetric{ServiceWords::tr("Stars"), ProviderData::count(found, u"stargazers_count"_s)};
  co_return value;
}

QCoro::Task<RemoteValue> fetchRepository(ProviderRequest request, std::stop_token stop) {
  const QString field = request.option(option::field);
  const QString repository = request.option(option::repository);
  const ServiceCall call = request.call("/repos/"_L1 + repository);
  const QJsonObject found = co_await request.object(call, stop);
  RemoteValue value =
      request.shown(ProviderData::count(found, field), ServiceWords::tr(kRepositoryMetrics.value(field)));
  value.detail = repository;
  co_return value;
}

QCoro::Task<RemoteValue> fetchMetric(ProviderRequest request, std::stop_token stop) {
  if (request.option(option::field) == kUnread) return fetchNotifications(std::move(request), stop);
  return fetchRepository(std::move(request), stop);
}

}  // namespace

Provider gitHub() {
  using enum KindPattern::Match;
  const ProviderField repository{option::repository, ServiceWords::tr("Repository"), u"owner/repository"_s};
  return {
      .id = u"github"_s,
      .name = u"GitHub"_s,
      .address = ProviderRow::at(ServiceHost::GitHub),
      .page = kSite,
      .credential = {.label = ServiceWords::tr("Personal access token"),
                     .placeholder = u"ghp_…"_s,
                     .explanation =
                         ServiceWords::tr("A classic token with the scopes “notifications” and “read:user”, and “repo” "
                                          "for private repositories. Figures of public repositories need none."),
                     .page = QUrl(u"https://github.com/settings/tokens"_s),
                     .missing = ProviderRow::addServiceCredential(),
                     .isNeeded = readsAccount},
      .limits = {.pages = 20, .pageSize = 100},
      .normalise = normaliseGitHub,
      .topics = {{.kinds = {{u"GitHubContributions"_s, Contains}},
                  .explanation = ServiceWords::tr("Contributions of a GitHub account over the last year."),
                  .fields = {{option::username, ServiceWords::tr("GitHub username"), u"octocat"_s}},
                  .fetch = fetchContributions},
                 {.kinds = {{u"GitHubOverview"_s, Contains}},
                  .explanation = ServiceWords::tr("Unread notifications, open pull requests and a repository’s stars."),
                  .fields = {repository},
                  .fetch = fetchAccount},
                 {.kinds = {{u"GitHub"_s, Contains}},
                  .explanation = ServiceWords::tr("Unread notifications, or a figure of a repository."),
                  .fields = {{.key = option::field,
                              .label = ServiceWords::tr("Metric"),
                              .values = {kUnread, u"stargazers_count"_s, u"forks"_s, u"open_issues_count"_s},
                              .words = {ServiceWords::tr("Unread"), ServiceWords::tr("Stars"),
                                        ServiceWords::tr("Forks"), ServiceWords::tr("Issues")}},
                             repository},
                  .fetch = fetchMetric}},
  };
}

}  // namespace tarnwick
