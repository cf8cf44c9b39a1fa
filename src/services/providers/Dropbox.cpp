#include "services/Paging.h"
#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

QString folderPage(const QString& path) { return "https://www.dropbox.com/home"_L1 + ProviderData::encoded(path, "/"); }

void normaliseDropbox(DockWidget& widget) {
  OptionRules options(widget);
  QString path = options.trimmed(option::dropboxPath);
  while (path.size() > 1 && path.endsWith(u'/')) path.chop(1);
  options.set(option::dropboxPath, path);
  OptionRules::require(option::dropboxPath, path.isEmpty() || path.startsWith(u'/'),
                       ServiceWords::tr("A Dropbox folder path starts with /, or is empty for root."));
  options.set(option::dashboard, folderPage(path));
}

ServiceCall firstPage(const ProviderRequest& request) {
  // The root is the empty path.
  const QString path = request.option(option::dropboxPath);
  ServiceCall call = request.call(u"/2/files/list_folder"_s);
  call.body = QJsonObject{{u"path"_s, path == "/"_L1 ? QString() : path},
                          {u"recursive"_s, false},
                          {u"limit"_s, request.limits.pageSize},
                          {u"include_deleted"_s, false}};
  return call;
}

ServiceCall pageFrom(const ProviderRequest& request, const QString& cursor) {
  ServiceCall call = request.call(u"/2/files/list_folder/continue"_s);
  call.body = QJsonObject{{u"cursor"_s, cursor}};
  return call;
}

QCoro::Task<RemoteValue> fetchFolder(ProviderRequest request, std::stop_token stop) {
  const QString noMetadata = ServiceWords::tr("Dropbox did not return file metadata.");
  QList<ServiceRow> rows;
  Paging pages(request.limits);
  while (pages.next(stop)) {
    const ServiceCall call = pages.page() == 1 ? firstPage(request) : pageFrom(request, pages.cursor());
    const QJsonValue body = co_await request.answer(call, stop);
    for (const QJsonValue& entry :
         ProviderData::list(body, u"entries"_s, ServiceWords::tr("Dropbox did not return a folder listing."))) {
      const QString tag = entry[u".tag"].toString();
      require(!tag.isEmpty(), noMetadata);
      if (tag == "deleted"_L1) continue;
      const QString path = entry[u"path_display"].toString();
      rows << ServiceRow{entry[u"id"].toString(), entry[u"name"].toString(), path, QUrl(folderPage(path))};
    }
    require(body[u"has_more"].isBool(), noMetadata);
    pages.goOn(body[u"has_more"].toBool(), body[u"cursor"].toString(),
               ServiceWords::tr("Dropbox returned an invalid continuation cursor."));
  }
  RemoteValue value =
      request.shown(QString::number(rows.size()), pages.isPartial() ? ServiceWords::tr("Folder items · partial listing")
                                                                    : ServiceWords::tr("Folder items"));
  value.rows = rows;
  co_return value;
}

}  // namespace

Provider dropbox() {
  return {
      .id = u"dropbox"_s,
      .name = u"Dropbox"_s,
      .address = ProviderRow::at(ServiceHost::Dropbox),
      .credential = {.label = ServiceWords::tr("Dropbox sign-in"),
                     .explanation = ServiceWords::tr("Needs an app of your own with “files.metadata.read”; its app "
                                                     "key is the client ID."),
                     .page = QUrl(u"https://www.dropbox.com/developers/apps"_s),
                     .missing = ProviderRow::addProviderCredential()},
      .signIn = OAuthProvider{.id = u"dropbox"_s,
                              .name = u"Dropbox"_s,
                              .authorization = ProviderRow::at(ServiceHost::DropboxSignIn, u"/oauth2/authorize"_s),
                              .token = ProviderRow::at(ServiceHost::Dropbox, u"/oauth2/token"_s),
                              .scope = u"files.metadata.read"_s,
                              .extraFields = {{u"token_access_type"_s, u"offline"_s}},
                              .clientField = u"client_id"_s,
                              .neededScope = {},
                              .scopeMissing = {},
                              .port = 43879},
      .limits = {.pages = 20, .pageSize = 100},
      .normalise = normaliseDropbox,
      .topics = {{.kinds = {{kind::dropbox}},
                  .explanation = ServiceWords::tr("What a folder of your Dropbox holds."),
                  .fields = {{option::dropboxPath, ServiceWords::tr("Folder"), u"/Projects"_s}},
                  .fetch = fetchFolder}},
  };
}

}  // namespace tarnwick
