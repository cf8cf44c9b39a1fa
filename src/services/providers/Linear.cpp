#include <QCoroTask>

#include "services/Paging.h"
#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

QString explainLinear(QStringView) { return ServiceWords::tr("The issues that are assigned to you and still open."); }

QList<ProviderField> linearFields(QStringView) { return {}; }

void normaliseLinear(DockWidget& widget) { OptionRules(widget).set(option::dashboard, u"https://linear.app"_s); }

bool isActive(const QJsonValue& issue) {
  const QString type = issue[u"state"][u"type"].toString();
  return type != "completed"_L1 && type != "canceled"_L1;
}

QCoro::Task<RemoteValue> fetchLinear(ProviderRequest request, std::stop_token stop) {
  const QString today = request.session->now().date().toString(Qt::ISODate);
  QList<ServiceRow> rows;
  qsizetype overdue = 0;
  QString cursor;
  Paging pages(request.limits);
  while (pages.next(stop)) {
    ServiceCall call = request.call(u"/graphql"_s);
    call.bearer = false;
    call.body = QJsonObject{
        {u"query"_s,
         u"query($after:String){viewer{assignedIssues(first:100,after:$after){nodes{id identifier title url dueDate "
         u"state{name type}}pageInfo{hasNextPage endCursor}}}}"_s},
        {u"variables"_s,
         QJsonObject{{u"after"_s, cursor.isEmpty() ? QJsonValue(QJsonValue::Null) : QJsonValue(cursor)}}}};
    const QJsonValue answer = co_await request.session->json(std::move(call), stop);
    const QJsonValue body = ProviderData::object(answer);
    const QJsonArray issues = ProviderData::list(body, u"data.viewer.assignedIssues.nodes"_s,
                                                 ServiceWords::tr("Linear did not return assigned issues."));
    for (const QJsonValue& issue : issues) {
      if (!isActive(issue)) continue;
      const QString due = issue[u"dueDate"].toString();
      if (!due.isEmpty() && due < today) ++overdue;
      rows << ServiceRow{issue[u"id"].toString(), issue[u"identifier"].toString() + u' ' + issue[u"title"].toString(),
                         issue[u"state"][u"name"].toString(), QUrl(issue[u"url"].toString())};
    }
    const QJsonValue info = body[u"data"][u"viewer"][u"assignedIssues"][u"pageInfo"];
    OptionRules::require(info[u"hasNextPage"].isBool(), ServiceWords::tr("Linear did not return assigned issues."));
    if (!info[u"hasNextPage"].toBool()) {
      pages.finish();
      continue;
    }
    const QString next = info[u"endCursor"].toString();
    OptionRules::require(!next.isEmpty() && next != cursor, ServiceWords::tr("Invalid Linear continuation cursor."));
    cursor = next;
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
  Provider row =
      ProviderRow::of(u"linear"_s, u"Linear"_s, ServiceHost::Linear, {{u"Linear"_s, KindPattern::Match::Contains}});
  row.explanation = explainLinear;
  row.fields = linearFields;
  row.credential = {.label = ServiceWords::tr("Personal API key"),
                    .placeholder = u"lin_api_…"_s,
                    .explanation = ServiceWords::tr("A personal API key that may read issues."),
                    .page = QUrl(u"https://linear.app/settings/api"_s),
                    .missing = ProviderRow::serviceCredentialMissing()};
  row.normalise = normaliseLinear;
  row.fetch = fetchLinear;
  row.limits = {.requests = 20, .pages = 20, .pageSize = 100};
  return row;
}

}  // namespace tarnwick
