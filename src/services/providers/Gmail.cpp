#include "services/ServiceHTTPError.h"
#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kLatestMessages = 10;
const QString kInboxPage = u"https://mail.google.com/mail/u/0/#inbox"_s;

QString headerOf(const QJsonValue& message, QLatin1StringView name) {
  for (const QJsonValue& header : message[u"payload"][u"headers"].toArray()) {
    if (header[u"name"].toString().compare(name, Qt::CaseInsensitive) == 0) return header[u"value"].toString();
  }
  return {};
}

QCoro::Task<RemoteValue> fetchInbox(ProviderRequest request, std::stop_token stop) {
  const ServiceCall call = request.call(u"/gmail/v1/users/me/labels/INBOX"_s);
  const QJsonObject inbox = co_await request.object(call, stop);
  const QString unread = ProviderData::count(inbox, u"messagesUnread"_s);
  RemoteValue value = request.shown(unread, ServiceWords::tr("Unread in inbox"));
  value.metrics = {{ServiceWords::tr("Unread"), unread},
                   {ServiceWords::tr("Total"), ProviderData::count(inbox, u"messagesTotal"_s)}};
  co_return value;
}

/// Absent for one that was deleted since the list was made.
QCoro::Task<std::optional<ServiceRow>> askMessage(ProviderRequest request, QString id, std::stop_token stop) {
  const ServiceCall call = request.call("/gmail/v1/users/me/messages/"_L1 + id, {{u"format"_s, u"metadata"_s}});
  try {
    const QJsonObject message = co_await request.object(call, stop);
    const QString subject = headerOf(message, "subject"_L1).trimmed();
    co_return ServiceRow{id, subject.isEmpty() ? ServiceWords::tr("No subject") : subject, headerOf(message, "from"_L1),
                         QUrl(kInboxPage + u'/' + id)};
  } catch (const ServiceHTTPError& error) {
    if (error.status() != 404) throw;
  }
  co_return std::nullopt;
}

QCoro::Task<RemoteValue> fetchLatest(ProviderRequest request, std::stop_token stop) {
  RemoteValue value = co_await fetchInbox(request, stop);
  // Beside the messages themselves it says among how many they are the latest.
  value.value = value.metrics.last().value;
  value.subtitle = ServiceWords::tr("Inbox messages");
  const ServiceCall call =
      request.call(u"/gmail/v1/users/me/messages"_s,
                   {{u"labelIds"_s, u"INBOX"_s}, {u"maxResults"_s, QString::number(kLatestMessages)}});
  const QJsonObject list = co_await request.object(call, stop);
  int asked = 0;
  for (const QJsonValue& entry : list[u"messages"].toArray()) {
    const QString id = entry[u"id"].toString();
    if (!ProviderData::identifier(id) || id.contains(".."_L1) || ++asked > kLatestMessages) continue;
    if (const auto row = co_await askMessage(request, id, stop)) value.rows << *row;
  }
  co_return value;
}

}  // namespace

Provider gmail() {
  return {
      .id = u"gmail"_s,
      .name = u"Gmail"_s,
      .address = ProviderRow::at(ServiceHost::Gmail),
      .page = kInboxPage,
      .credential = {.label = ServiceWords::tr("Google sign-in"),
                     .explanation =
                         ServiceWords::tr("Needs an OAuth client of your own, of the type “Desktop app”, in a "
                                          "project with the Gmail API on; it asks for “gmail.readonly”."),
                     .page = QUrl(u"https://console.cloud.google.com/apis/credentials"_s),
                     .missing = ProviderRow::addProviderCredential()},
      .signIn = OAuthProvider{.id = u"gmail"_s,
                              .name = u"Gmail"_s,
                              .authorization = ProviderRow::at(ServiceHost::GoogleSignIn, u"/o/oauth2/v2/auth"_s),
                              .token = ProviderRow::at(ServiceHost::GoogleTokens, u"/token"_s),
                              .scope = u"https://www.googleapis.com/auth/gmail.readonly"_s,
                              .extraFields = {{u"access_type"_s, u"offline"_s}, {u"prompt"_s, u"consent"_s}},
                              .clientField = u"client_id"_s,
                              .neededScope = {},
                              .scopeMissing = {},
                              .port = 0},
      .topics = {{.kinds = {{kind::gmailLatest}},
                  .explanation = ServiceWords::tr("The latest messages of your inbox: sender and subject, no text."),
                  .fetch = fetchLatest},
                 {.kinds = {{kind::gmailUnreadSummary}},
                  .explanation = ServiceWords::tr("How many messages of your inbox are unread."),
                  .fetch = fetchInbox}},
  };
}

}  // namespace tarnwick
