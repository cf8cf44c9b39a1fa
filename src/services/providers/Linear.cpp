#include "services/Paging.h"
#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

ServiceCall issuesCall(const ProviderRequest& request, const QString& cursor) {
  ServiceCall call = request.call(u"/graphql"_s);
  call.bearer = false;
  call.body = QJsonObject{
      {u"query"_s,
       u"query($after:String){viewer{assignedIssues(first:100,after:$after){nodes{id identifier title url dueDate "
       u"state{name type}}pageInfo{hasNextPage endCursor}}}}"_s},
      {u"variables"_s,
       QJsonObject{{u"after"_s, cursor.isEmpty() ? QJsonValue(QJsonValue::Null) : QJsonValue(cursor)}}}};
  return call;
}

bool isActive(const QJsonValue& issue) {
  const QString type = issue[u"state"][u"type"].toString();
  return type != "completed"_L1 && type != "canceled"_L1;
}

QCoro::Task<RemoteValue> fetchIssues(ProviderRequest request, std::stop_token stop) {
  const QString today = request.now().date().toString(Qt::ISODate);
  const QString noIssues = ServiceWords::tr("Linear did not return assigned issues.");
  QList<ServiceRow> rows;
  qsizetype overdue = 0;
  Paging pages(request.limits);
  while (pages.next(stop)) {
    const ServiceCall call = issuesCall(request, pages.cursor());
    const QJsonObject body = co_await request.object(call, stop);
    const QJsonValue list = body[u"data"][u"viewer"][u"assignedIssues"];
    for (const QJsonValue& issue : ProviderData::list(list, u"nodes"_s, noIssues)) {
      if (!isActive(issue)) continue;
      const QString due = issue[u"dueDate"].toString();
      if (!due.isEmpty() && due < today) ++overdue;
      rows << ServiceRow{issue[u"id"].toString(), issue[u"identifier"].toString() + u' ' + issue[u"title"].toString(),
                         issue[u"state"][u"name"].toString(), QUrl(issue[u"url"].toString())};
    }
    const QJsonValue info = list[u"pageInfo"];
    require(info[u"hasNextPage"].isBool(), noIssues);
    pages.goOn(info[u"hasNextPage"].toBool(), info[u"endCursor"].toString(),
               ServiceWords::tr("Invalid Linear continuation cursor."));
  }
  RemoteValue value = request.shown(QString::number(rows.size()), ServiceWords::tr("Active assigned issues"));
  value.metrics = {{ServiceWords::tr("Active"), QString::number(rows.size())},
                   {ServiceWords::tr("Overdue"), QString::number(overdue)}};
  value.rows = rows;
  if (pages.isPartial()) value.detail = ServiceWords::tr("Over 2,000 issues; partial count.");
  co_return value;
}

}  // namespace

Provider linear() {
  return {
      .id = u"linear"_s,
      .name = u"Linear"_s,
      .address = ProviderRow::at(ServiceHost::Linear),
      .page = u"https://linear.app"_s,
      .credential = {.label = ServiceWords::tr("Personal API key"),
                     .placeholder = u"lin_api_…"_s,
                     .explanation = ServiceWords::tr("A personal API key that may read issues."),
                     .page = QUrl(u"https://linear.app/settings/api"_s),
                     .missing = ProviderRow::addServiceCredential()},
      .limits = {.pages = 20, .pageSize = 100},
      .topics = {{.kinds = {{u"Linear"_s, KindPattern::Match::Contains}},
                  .explanation = ServiceWords::tr("The issues that are assigned to you and still open."),
                  .fetch = fetchIssues}},
  };
}

}  // namespace tarnwick
