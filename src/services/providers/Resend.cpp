#include <QSet>

#include "services/Paging.h"
#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

QString noEmails() { return ServiceWords::tr("Resend did not return a paginated email list."); }

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
    require(moment.has_value(), noEmails());
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

QCoro::Task<RemoteValue> fetchEmails(ProviderRequest request, std::stop_token stop) {
  Sent sent;
  Paging pages(request.limits);
  while (pages.next(stop)) {
    QMap<QString, QString> query{{u"limit"_s, QString::number(request.limits.pageSize)}};
    if (!pages.cursor().isEmpty()) query.insert(u"after"_s, pages.cursor());
    const ServiceCall call = request.call(u"/emails"_s, query);
    const QJsonValue body = co_await request.answer(call, stop);
    const QJsonArray rows = ProviderData::list(body, u"data"_s, noEmails());
    require(body[u"has_more"].isBool(), noEmails());
    const bool isWithinMonth = countSent(rows, request.now(), sent);
    pages.goOn(isWithinMonth && body[u"has_more"].toBool(), rows.isEmpty() ? QString() : rows.last()[u"id"].toString(),
               ServiceWords::tr("Invalid Resend continuation cursor."));
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
  return {
      .id = u"resend"_s,
      .name = u"Resend"_s,
      .address = ProviderRow::at(ServiceHost::Resend),
      .page = u"https://resend.com/emails"_s,
      .credential = {.label = ServiceWords::tr("API key"),
                     .placeholder = u"re_…"_s,
                     .explanation =
                         ServiceWords::tr("An API key with full access; one that may only send reads nothing."),
                     .page = QUrl(u"https://resend.com/api-keys"_s),
                     .missing = ProviderRow::addServiceCredential()},
      .limits = {.pages = 30, .pageSize = 100},
      .topics = {{.kinds = {{u"Resend"_s, KindPattern::Match::Contains}},
                  .explanation = ServiceWords::tr("Emails that were sent today and in this month."),
                  .fetch = fetchEmails}},
  };
}

}  // namespace tarnwick
