#include <QCoroTask>

#include "services/Paging.h"
#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"
#include "widgets/catalog/Kinds.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

QString explainDropbox(QStringView) { return ServiceWords::tr("What a folder of your Dropbox holds."); }

QList<ProviderField> dropboxFields(QStringView) {
  return {{option::dropboxPath, ServiceWords::tr("Folder"), u"/Projects"_s}};
}

void normaliseDropbox(DockWidget& widget) {
  OptionRules options(widget);
  QString path = options.trimmed(option::dropboxPath);
  while (path.size() > 1 && path.endsWith(u'/')) path.chop(1);
  options.set(option::dropboxPath, path);
  OptionRules::require(path.isEmpty() || path.startsWith(u'/'),
                       ServiceWords::tr("A Dropbox folder path starts with /, or is empty for root."));
  options.set(option::dashboard,
              "https://www.dropbox.com/home"_L1 + QString::fromLatin1(QUrl::toPercentEncoding(path, "/")));
}

/// The first page names the folder, those after it the place in the list.
ServiceCall folderCall(const ProviderRequest& request, const QString& cursor) {
  ServiceCall call = request.call(cursor.isEmpty() ? u"/2/files/list_folder"_s : u"/2/files/list_folder/continue"_s);
  if (!cursor.isEmpty()) {
    call.body = QJsonObject{{u"cursor"_s, cursor}};
    return call;
  }
  // The root is the empty path.
  const QString path = request.option(option::dropboxPath);
  call.body = QJsonObject{{u"path"_s, path == "/"_L1 ? QString() : path},
                          {u"recursive"_s, false},
                          {u"limit"_s, request.limits.pageSize},
                          {u"include_deleted"_s, false}};
  return call;
}

QCoro::Task<RemoteValue> fetchDropbox(ProviderRequest request, std::stop_token stop) {
  QList<ServiceRow> rows;
  QString cursor;
  Paging pages(request.limits);
  while (pages.next(stop)) {
    ServiceCall call = folderCall(request, cursor);
    const QJsonValue body = co_await request.session->json(std::move(call), stop);
    for (const QJsonValue& entry :
         ProviderData::list(body, u"entries"_s, ServiceWords::tr("Dropbox did not return a folder listing."))) {
      const QString tag = entry[u".tag"].toString();
      OptionRules::require(!tag.isEmpty(), ServiceWords::tr("Dropbox did not return file metadata."));
      if (tag == "deleted"_L1) continue;
      const QString path = entry[u"path_display"].toString();
      rows << ServiceRow{
          entry[u"id"].toString(), entry[u"name"].toString(), path,
          QUrl("https://www.dropbox.com/home"_L1 + QString::fromLatin1(QUrl::toPercentEncoding(path, "/")))};
    }
    OptionRules::require(body[u"has_more"].isBool(), ServiceWords::tr("Dropbox did not return file metadata."));
    if (!body[u"has_more"].toBool()) {
      pages.finish();
      continue;
    }
    const QString next = body[u"cursor"].toString();
    OptionRules::require(!next.isEmpty() && next != cursor,
                         ServiceWords::tr("Dropbox returned an invalid continuation cursor."));
    cursor = next;
  }
  RemoteValue value =
      request.shown(QString::number(rows.size()), pages.isPartial() ? ServiceWords::tr("Folder items · partial listing")
                                                                    : ServiceWords::tr("Folder items"));
  value.rows = rows;
  co_return value;
}

}  // namespace

Provider dropbox() {
  Provider row = ProviderRow::of(u"dropbox"_s, u"Dropbox"_s, ServiceHost::Dropbox, {{kind::dropbox}});
  row.explanation = explainDropbox;
  row.fields = dropboxFields;
  row.credential = {.label = ServiceWords::tr("Dropbox sign-in"),
                    .placeholder = {},
                    .explanation = ServiceWords::tr("An app of your own with “files.metadata.read”."),
                    .page = QUrl(u"https://www.dropbox.com/developers/apps"_s),
                    .missing = ProviderRow::providerCredentialMissing()};
  row.signIn = {.id = u"dropbox"_s,
                .name = row.name,
                .authorization = ProviderRow::at(ServiceHost::DropboxSignIn, u"/oauth2/authorize"_s),
                .token = ProviderRow::at(ServiceHost::Dropbox, u"/oauth2/token"_s),
                .scope = u"files.metadata.read"_s,
                .extraFields = {{u"token_access_type"_s, u"offline"_s}},
                .clientField = u"client_id"_s,
                .neededScope = {},
                .scopeMissing = {},
                .port = 43879};
  row.normalise = normaliseDropbox;
  row.fetch = fetchDropbox;
  row.limits = {.requests = 20, .pages = 20, .pageSize = 100};
  return row;
}

}  // namespace tarnwick
