#include "browser/ServicePage.h"

#include <QAuthenticator>
#include <QDir>
#include <QFile>
#include <QWebEngineDownloadRequest>
#include <QWebEngineFullScreenRequest>
#include <QWebEngineRegisterProtocolHandlerRequest>
#include <QWebEngineSettings>

namespace tarnwick {

namespace {

void restrict(QWebEngineSettings& settings) {
  using enum QWebEngineSettings::WebAttribute;
  for (const auto off : {PluginsEnabled, PdfViewerEnabled, JavascriptCanOpenWindows, JavascriptCanAccessClipboard,
                         JavascriptCanPaste, LocalContentCanAccessRemoteUrls, LocalContentCanAccessFileUrls,
                         AllowRunningInsecureContent, ScreenCaptureEnabled, HyperlinkAuditingEnabled,
                         FullScreenSupportEnabled, DnsPrefetchEnabled, NavigateOnDropEnabled})
    settings.setAttribute(off, false);
  settings.setAttribute(WebRTCPublicInterfacesOnly, true);
  settings.setAttribute(PlaybackRequiresUserGesture, true);
  settings.setUnknownUrlSchemePolicy(QWebEngineSettings::DisallowUnknownUrlSchemes);
}

}  // namespace

std::unique_ptr<QWebEngineProfile> makeServiceProfile(const QString& folder) {
  QDir().mkpath(folder);
  QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  auto profile = std::make_unique<QWebEngineProfile>(QStringLiteral("service"));
  profile->setPersistentStoragePath(folder);
  profile->setCachePath(folder);
  // None on the disk; with no cache at all Qt 6.4 loads nothing.
  profile->setHttpCacheType(QWebEngineProfile::MemoryHttpCache);
  profile->setPersistentCookiesPolicy(QWebEngineProfile::ForcePersistentCookies);
  profile->setSpellCheckEnabled(false);
  restrict(*profile->settings());
  QObject::connect(profile.get(), &QWebEngineProfile::downloadRequested,
                   [](QWebEngineDownloadRequest* download) { download->cancel(); });
  return profile;
}

ServicePage::ServicePage(const QUrl& home, Roaming roaming, QWebEngineProfile& profile)
    : QWebEnginePage(&profile), home_(home), roaming_(roaming) {
  setAudioMuted(true);
  connect(this, &QWebEnginePage::featurePermissionRequested, this, [this](const QUrl& origin, Feature feature) {
    setFeaturePermission(origin, feature, PermissionDeniedByUser);
  });
  connect(this, &QWebEnginePage::fullScreenRequested, this,
          [](QWebEngineFullScreenRequest request) { request.reject(); });
  connect(this, &QWebEnginePage::registerProtocolHandlerRequested, this,
          [](QWebEngineRegisterProtocolHandlerRequest request) { request.reject(); });
  // Nobody is asked for a password by anything but the page itself.
  connect(this, &QWebEnginePage::authenticationRequired, this,
          [](const QUrl&, QAuthenticator* answer) { *answer = QAuthenticator(); });
}

bool ServicePage::isOwn(const QUrl& address) const {
  return address.scheme() == QLatin1String("https") && address.host() == home_.host() &&
         address.port(443) == home_.port(443) && address.userInfo().isEmpty();
}

bool ServicePage::acceptNavigationRequest(const QUrl& address, NavigationType, bool isMainFrame) {
  // An empty frame is nowhere.
  if (!isMainFrame && address.scheme() == QLatin1String("about")) return true;
  const bool isFree = roaming_ == Roaming::AnyHost && address.scheme() == QLatin1String("https");
  if (isFree || isOwn(address)) return true;
  if (isMainFrame && address.scheme().startsWith(QLatin1String("http"))) wasLedAway_ = true;
  return false;
}

}  // namespace tarnwick
