#include <QCoroTask>

#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"
#include "widgets/catalog/Kinds.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kLatestMessages = 10;
const QString kInboxPage = u"https://mail.google.com/mail/u/0/#inbox"_s;

QString explainGmail(QStringView kind) {
  return kind == kind::gmailLatest ? ServiceWords::tr("The latest messages of your inbox: sender and subject, no text.")
                                   : ServiceWords::tr("How many messages of your inbox are unread.");
}

QList<ProviderField> gmailFields(QStringView) { return {}; }

void normaliseGmail(DockWidget& widget) { OptionRules(widget).set(option::dashboard, kInboxPage); }

QString headerOf(const QJsonValue& message, QLatin1StringView name) {
  for (const QJsonValue& header : message[u"payload"][u"headers"].toArray()) {
    if (header[u"name"].toString().compare(name, Qt::CaseInsensitive) == 0) return header[u"value"].toString();
  }
  return {};
}

QCoro::Task<QList<ServiceRow>> latestMessages(ProviderRequest request, std::stop_token stop) {
  ServiceCall call = request.call(u"/gmail/v1/users/me/messages"_s,
                                  {{u"labelIds"_s, u"INBOX"_s}, {u"maxResults"_s, QString::number(kLatestMessages)}});
  const QJsonValue list = co_await request.session->json(std::move(call), stop);
  QList<ServiceRow> rows;
  for (const QJsonValue& entry : list[u"messages"].toArray()) {
    const QString id = entry[u"id"].toString();
    if (rows.size() == kLatestMessages || !ProviderData::identifier(id)) continue;
    ServiceCall one = request.call("/gmail/v1/users/me/messages/"_L1 + id, {{u"format"_s, u"metadata"_s}});
    const QJsonValue message = co_await request.session->json(std::move(one), stop);
    rows << ServiceRow{id, headerOf(message, "subject"_L1), headerOf(message, "from"_L1), QUrl(kInboxPage + u'/' + id)};
  }
  co_return rows;
}

QCoro::Task<RemoteValue> fetchGmail(ProviderRequest request, std::stop_token stop) {
  ServiceCall call = request.call(u"/gmail/v1/users/me/labels/INBOX"_s);
  const QJsonValue answer = co_await request.session->json(std::move(call), stop);
  const QJsonObject inbox = ProviderData::object(answer);
  const QString unread = ProviderData::count(inbox, u"messagesUnread"_s);
  RemoteValue value = request.shown(unread, ServiceWords::tr("Unread in inbox"));
  value.metrics = {{ServiceWords::tr("Unread"), unread},
                   {ServiceWords::tr("Total"), ProviderData::count(inbox, u"messagesTotal"_s)}};
  value.detail = ServiceWords::tr("Inbox messages");
  if (request.widget.kind == kind::gmailLatest) value.rows = co_await latestMessages(request, stop);
  co_return value;
}

}  // namespace

Provider gmail() {
  Provider row =
      ProviderRow::of(u"gmail"_s, u"Gmail"_s, ServiceHost::Gmail, {{kind::gmailLatest}, {kind::gmailUnreadSummary}});
  row.explanation = explainGmail;
  row.fields = gmailFields;
  row.credential = {.label = ServiceWords::tr("Google sign-in"),
                    .placeholder = {},
                    .explanation = ServiceWords::tr("An OAuth client of your own, of the type “Desktop app”, with the "
                                                    "Gmail API on."),
                    .page = QUrl(u"https://console.cloud.google.com/apis/credentials"_s),
                    .missing = ProviderRow::providerCredentialMissing()};
  row.signIn = {.id = u"gmail"_s,
                .name = row.name,
                .authorization = ProviderRow::at(ServiceHost::GoogleSignIn, u"/o/oauth2/v2/auth"_s),
                .token = ProviderRow::at(ServiceHost::GoogleTokens, u"/token"_s),
                .scope = u"https://www.googleapis.com/auth/gmail.readonly"_s,
                .extraFields = {{u"access_type"_s, u"offline"_s}, {u"prompt"_s, u"consent"_s}},
                .clientField = u"client_id"_s,
                .neededScope = {},
                .scopeMissing = {},
                .port = 0};
  row.normalise = normaliseGmail;
  row.fetch = fetchGmail;
  row.limits = {.requests = 12};
  return row;
}

}  // namespace tarnwick
