#include "calendar/MeetingLink.h"

#include <QUrl>
#include <QUrlQuery>
#include <algorithm>
#include <array>

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr auto kSecure = "https://"_L1;
constexpr qsizetype kMostAddresses = 64;
constexpr qsizetype kMostLength = 4096;

/// A service by the end of its host and the beginnings of its paths that lead into a meeting: the same hosts serve help
/// pages and lists of telephone numbers. No beginning means any path but the empty one.
struct Service {
  QLatin1StringView name;
  QLatin1StringView host;
  std::array<QLatin1StringView, 5> paths = {};
};

constexpr Service kServices[] = {
    {"Zoom"_L1, "zoom.us"_L1, {"/j/"_L1, "/my/"_L1, "/w/"_L1, "/s/"_L1, "/wc/"_L1}},
    {"Zoom"_L1, "zoomgov.com"_L1, {"/j/"_L1, "/my/"_L1, "/w/"_L1, "/s/"_L1, "/wc/"_L1}},
    {"Zoom"_L1, "zoom.com"_L1, {"/j/"_L1, "/my/"_L1, "/w/"_L1, "/s/"_L1, "/wc/"_L1}},
    {"Google Meet"_L1, "meet.google.com"_L1},
    {"Google Meet"_L1, "hangouts.google.com"_L1},
    {"Microsoft Teams"_L1, "teams.microsoft.com"_L1, {"/l/meetup-join/"_L1, "/meet/"_L1, "/l/meeting/"_L1}},
    {"Microsoft Teams"_L1, "teams.microsoft.us"_L1, {"/l/meetup-join/"_L1, "/meet/"_L1}},
    {"Microsoft Teams"_L1, "teams.live.com"_L1, {"/meet/"_L1}},
    {"Webex"_L1, "webex.com"_L1, {"/meet/"_L1, "/join/"_L1, "/m/"_L1, "/wbxmjs/"_L1}},
    {"Jitsi Meet"_L1, "meet.jit.si"_L1},
    {"Jitsi Meet"_L1, "8x8.vc"_L1},
    {"Whereby"_L1, "whereby.com"_L1},
    {"GoTo Meeting"_L1, "gotomeet.me"_L1},
    {"GoTo Meeting"_L1, "meet.goto.com"_L1},
    {"GoTo Meeting"_L1, "gotomeeting.com"_L1, {"/join/"_L1}},
    {"BlueJeans"_L1, "bluejeans.com"_L1},
    {"Skype"_L1, "join.skype.com"_L1},
    {"Skype"_L1, "meet.lync.com"_L1},
    {"Amazon Chime"_L1, "chime.aws"_L1},
    {"RingCentral"_L1, "v.ringcentral.com"_L1, {"/join/"_L1}},
    {"FaceTime"_L1, "facetime.apple.com"_L1, {"/join"_L1}},
    {"Slack"_L1, "slack.com"_L1, {"/huddle/"_L1}},
    {"Jitsi Meet"_L1, "meet.ffmuc.net"_L1},
};

bool isHost(const QString& host, QLatin1StringView end) {
  return host == end || (host.endsWith(end) && host.size() > end.size() && host[host.size() - end.size() - 1] == u'.');
}

bool leadsIn(const Service& service, const QString& path) {
  if (service.paths[0].isEmpty()) return path.size() > 1;
  return std::ranges::any_of(service.paths, [&](auto start) { return !start.isEmpty() && path.startsWith(start); });
}

QLatin1StringView serviceOf(const QUrl& url) {
  if (url.scheme() != "https"_L1) return {};
  const QString host = url.host();
  const QString path = url.path();
  for (const Service& service : kServices) {
    if (isHost(host, service.host) && leadsIn(service, path)) return service.name;
  }
  // Meetings of a company are below a folder of its own, or behind an old script.
  if (isHost(host, "webex.com"_L1) && (path.contains("/j.php"_L1) || path.contains("/meet/"_L1))) return "Webex"_L1;
  if (host.startsWith("jitsi."_L1) && path.size() > 1) return "Jitsi Meet"_L1;
  if (path.contains("/bigbluebutton/"_L1)) return "BigBlueButton"_L1;
  return {};
}

/// Mail services lead every address through one of their own, to check it.
QString unwrapped(const QString& address) {
  const QUrl url(address);
  const QString host = url.host();
  QString inner;
  if (isHost(host, "safelinks.protection.outlook.com"_L1)) {
    inner = QUrlQuery(url).queryItemValue(u"url"_s, QUrl::FullyDecoded);
  } else if (isHost(host, "google.com"_L1) && url.path() == "/url"_L1) {
    inner = QUrlQuery(url).queryItemValue(u"q"_s, QUrl::FullyDecoded);
  }
  return inner.startsWith(kSecure) ? inner : address;
}

bool endsAddress(QChar c) {
  return c.isSpace() || c == u'"' || c == u'<' || c == u'>' || c == u'\'' || c == u'|' || c == u'\\' || c == u'`' ||
         c.unicode() < 0x20;
}

QString freed(QStringView found) {
  while (!found.isEmpty() && u".,;:!?)]}*_"_s.contains(found.back())) {
    // A closing parenthesis may belong to the address.
    if (found.back() == u')' && found.contains(u'(')) break;
    found.chop(1);
  }
  QString address = found.toString();
  return unwrapped(address.replace("&amp;"_L1, "&"_L1));
}

}  // namespace

QStringList MeetingLink::addresses(const QString& text) {
  QStringList found;
  qsizetype from = 0;
  while (found.size() < kMostAddresses && (from = text.indexOf(kSecure, from, Qt::CaseInsensitive)) >= 0) {
    qsizetype end = from;
    while (end < text.size() && end - from < kMostLength && !endsAddress(text[end])) ++end;
    const QString address = freed(QStringView(text).sliced(from, end - from));
    if (!QUrl(address).host().isEmpty() && !found.contains(address)) found.append(address);
    from = end;
  }
  return found;
}

QString MeetingLink::service(const QString& link) { return serviceOf(QUrl(link)); }

QString MeetingLink::find(const CalendarEvent& event) {
  const QStringList conferences = addresses(event.conferences.join(u'\n'));
  const QStringList place = addresses(event.location);
  QStringList all = conferences + place;
  all += addresses(event.url);
  all += addresses(event.notes);
  const auto known =
      std::ranges::find_if(all, [](const QString& address) { return !serviceOf(QUrl(address)).isEmpty(); });
  if (known != all.end()) return *known;
  if (!conferences.isEmpty()) return conferences.first();
  return place.isEmpty() ? QString() : place.first();
}

}  // namespace tarnwick
