#include <QCoroTask>
#include <QSet>

#include "services/Paging.h"
#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

QString explainResend(QStringView) { return ServiceWords::tr("Emails that were sent today and in this month."); }

QList<ProviderField> resendFields(QStringView) { return {}; }

void normaliseResend(DockWidget& widget) { OptionRules(widget).set(option::dashboard, u"https://resend.com/emails"_s); }

/// What was sent up to now, counted while pages come.
struct Sent {
  int today = 0;
  int month = 0;
  int delivered = 0;
};

/// Counts the rows of a page; false from the first on that is older than the month.
bool countSent(const QJsonArray& rows, const QDateTime& now, Sent& sent) {
  static const QSet<QString> delivered{u"delivered"_s, u"opened"_s, u"clicked"_s, u"complained"_s};
  const QDate today = now.date();
  const QDate first(today.year(), today.month(), 1);
  for (const QJsonValue& row : rows) {
    const auto moment = ProviderData::date(row[u"created_at"].toString());
    OptionRules::require(moment.has_value(), ServiceWords::tr("Resend did not return a paginated email list."));
    const QDate day = moment->toTimeZone(now.timeZone()).date();
    if (day < first) return false;
    ++sent.month;
    if (day == today) ++sent.today;
    if (delivered.contains(row[u"last_event"].toString())) ++sent.delivered;
  }
  return true;
}

QString share(const Sent& sent, bool isPartial) {
  if (isPartial) return ServiceWords::tr("Partial");
  if (sent.month == 0) return u"—"_s;
  return QString::asprintf("%.1f%%", 100.0 * sent.delivered / sent.month);
}

QCoro::Task<RemoteValue> fetchResend(ProviderRequest request, std::stop_token stop) {
  const QDateTime now = request.session->now();
  Sent sent;
  QString cursor;
  Paging pages(request.limits);
  while (pages.next(stop)) {
    QMap<QString, QString> query{{u"limit"_s, QString::number(request.limits.pageSize)}};
    if (!cursor.isEmpty()) query.insert(u"after"_s, cursor);
    ServiceCall call = request.call(u"/emails"_s, query);
    const QJsonValue body = co_await request.session->json(std::move(call), stop);
    const QString noList = ServiceWords::tr("Resend did not return a paginated email list.");
    const QJsonArray rows = ProviderData::list(body, u"data"_s, noList);
    OptionRules::require(body[u"has_more"].isBool(), noList);
    if (!countSent(rows, now, sent) || !body[u"has_more"].toBool()) {
      pages.finish();
      continue;
    }
    const QString next = rows.isEmpty() ? QString() : rows.last()[u"id"].toString();
    OptionRules::require(!next.isEmpty() && next != cursor, ServiceWords::tr("Invalid Resend continuation cursor."));
    cursor = next;
  }
  RemoteValue value = request.shown(QString::number(sent.today), ServiceWords::tr("Sent today"));
  value.metrics = {{ServiceWords::tr("Today"), QString::number(sent.today)},
                   {ServiceWords::tr("This month"), QString::number(sent.month)},
                   {ServiceWords::tr("Delivered"), share(sent, pages.isPartial())}};
  value.detail = ServiceWords::tr("Delivery includes delivered, opened, clicked and complained states. ");
  if (pages.isPartial())
    value.detail += ServiceWords::tr("Over 3,000 recent emails; month is incomplete. Delivery percentage withheld.");
  co_return value;
}

}  // namespace

Provider resend() {
  Provider row =
      ProviderRow::of(u"resend"_s, u"Resend"_s, ServiceHost::Resend, {{u"Resend"_s, KindPattern::Match::Contains}});
  row.explanation = explainResend;
  row.fields = resendFields;
  row.credential = {
      .label = ServiceWords::tr("API key"),
      .placeholder = u"re_…"_s,
      .explanation = ServiceWords::tr("An API key with full access; one that may only send reads nothing."),
      .page = QUrl(u"https://resend.com/api-keys"_s),
      .missing = ProviderRow::serviceCredentialMissing()};
  row.normalise = normaliseResend;
  row.fetch = fetchResend;
  row.limits = {.requests = 30, .pages = 30, .pageSize = 100};
  return row;
}

}  // namespace tarnwick
