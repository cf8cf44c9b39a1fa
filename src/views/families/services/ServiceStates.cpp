#include <array>

#include "views/families/services/ServicesRoom.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

using ServiceChange = void (*)(RemoteReading& reading, const QDateTime& now);

/// Makes of every example what came of the next fetch.
template <ServiceChange Change>
void fillChanged(TileSources& sources) {
  for (RemoteReading& reading : sources.remoteExamples) Change(reading, sources.now);
}

void leaveHeadline(RemoteReading& reading, const QString& subtitle) {
  RemoteValue value;
  value.value = reading.value.value;
  value.subtitle = subtitle;
  reading.value = value;
}

void beFailed(RemoteReading& reading, const QDateTime& now) {
  leaveHeadline(reading, u"The service could not be reached. Check your connection and service address."_s);
  reading.value.failed = true;
  reading.goodAt = now.addSecs(-47 * 60);
}
void beRefused(RemoteReading& reading, const QDateTime&) {
  leaveHeadline(reading, u"The service credential expired or was rejected. Reconnect in Connection Settings."_s);
  reading.value.value.reset();
  reading.value.failed = true;
  reading.goodAt.reset();
}
void bePaused(RemoteReading& reading, const QDateTime& now) {
  leaveHeadline(reading, u"The service rate limit was reached. Try again later."_s);
  reading.value.failed = true;
  reading.goodAt = now.addSecs(-12 * 60);
  reading.pausedUntil = now.addSecs(25 * 60);
}
void beStale(RemoteReading& reading, const QDateTime& now) {
  reading.goodAt = now.addSecs(-3 * 3600);
  reading.waitsFor = RemoteWait::Network;
}
void beLoading(RemoteReading& reading, const QDateTime&) { reading.isAsking = reading.isLoading = true; }
void beFirst(RemoteReading& reading, const QDateTime&) {
  reading = {};
  reading.value.loading = reading.isAsking = reading.isLoading = true;
}

void beLong(RemoteReading& reading, const QDateTime& now) {
  RemoteValue& value = reading.value;
  value.value = u"Donaudampfschifffahrtsgesellschaft awaits review"_s;
  value.subtitle = u"Translations of the summer catalogue that nobody has read yet"_s;
  value.detail = u"Payments less refunds, disputes and related fees; payouts and transfers excluded. 1,284 entries."_s;
  value.metrics = {{u"Unread messages in all shared mailboxes"_s, u"1,284,900"_s},
                   {u"Waiting"_s, u"Donaudampfschifffahrtsgesellschaft"_s},
                   {u"Done"_s, u"99.25%"_s}};
  value.rows = {
      {u"a"_s, u"TRN-214 The panel opens behind the dock when the compositor restarts while it is open"_s,
       u"In Progress since the last release candidate"_s, QUrl(u"https://example.org/214"_s)},
      {u"b"_s, u"https://example.org/a/path/without/any/blank/that/could/be/broken"_s, u"+1,284.75%"_s, std::nullopt}};
  if (value.usageWindows.isEmpty()) return;
  value.usageWindows = {{u"a"_s, u"Sonnet and everything that is like it · 7 days"_s, 99.6, {}, now.addDays(6)},
                        {u"b"_s, u"Opus"_s, 0, {}, std::nullopt}};
}
void beHuge(RemoteReading& reading, const QDateTime&) {
  RemoteValue& value = reading.value;
  value.value = u"1234567890123456789"_s;
  value.metrics = {{u"Requests"_s, u"1,234,567,890,123"_s}, {u"Tokens"_s, u"9.87e+42"_s}};
  value.numbers = {1e140, 4e140, 2e140, 8e140, 3e140};
}
void beNegative(RemoteReading& reading, const QDateTime&) {
  RemoteValue& value = reading.value;
  value.value = u"-1,284.50 €"_s;
  value.subtitle = u"-12.4% · net revenue"_s;
  value.metrics = {{u"Today"_s, u"-214 €"_s}, {u"Refunds"_s, u"-1,070.50 €"_s}};
  value.rows = {{u"a"_s, u"Shop"_s, u"-2.08%"_s, std::nullopt}, {u"b"_s, u"Fairs"_s, u"+0.4%"_s, std::nullopt}};
  value.numbers = {-4, -2, -7, 1, 3, -1, -6, -2, -9, -4};
}
void beWrittenFromTheRight(RemoteReading& reading, const QDateTime& now) {
  RemoteValue& value = reading.value;
  value.value = u"١٬٢٣٤ زائر"_s;
  value.subtitle = u"زوار هذا الأسبوع"_s;
  value.metrics = {{u"اليوم"_s, u"٢١٤"_s}, {u"هذا الشهر"_s, u"٤٬١٢٠"_s}};
  value.rows = {{u"a"_s, u"מסמך לבדיקה"_s, u"ממתין"_s, QUrl(u"https://example.org/"_s)},
                {u"b"_s, u"فاتورة"_s, u"+٢٫٤٪"_s, std::nullopt}};
  if (!value.usageWindows.isEmpty()) value.usageWindows = {{u"a"_s, u"٥ ساعات"_s, 42, {}, now.addSecs(7700)}};
}
void beAll(RemoteReading& reading, const QDateTime& now) {
  RemoteValue& value = reading.value;
  value.detail = u"Market data by the service, once a day."_s;
  value.metrics = {{u"Today"_s, u"214"_s}, {u"This month"_s, u"4,120"_s}, {u"Delivered"_s, u"99.2%"_s}};
  value.rows = {{u"a"_s, u"TRN-214 Panel opens behind the dock"_s, u"In Progress"_s, QUrl(u"https://example.org/1"_s)},
                {u"b"_s, u"ACME"_s, u"+1.24%"_s, std::nullopt}};
  value.usageWindows = {{u"a"_s, u"5 hours"_s, 91, 300, now.addSecs(48 * 60)},
                        {u"b"_s, u"7 days"_s, 35, 10080, now.addDays(4)},
                        {u"c"_s, u"Tool allowance"_s, 4, {}, std::nullopt}};
  value.numbers = {12, 14, 9, 17, 21, 19, 24, 22, 30, 28};
}
/// Of what is at work: the longest of the words for that.
void beWaitedFor(RemoteReading& reading, const QDateTime&) {
  if (!reading.value.activity) return;
  reading.value.value = u"Awaiting permission"_s;
  reading.value.activity = Activity::Waiting;
}
void forgetAll(TileSources& sources) { sources.remoteExamples.clear(); }

constexpr std::array kStates = {
    PanelState{.name = "failed"_L1, .fill = fillChanged<beFailed>},
    PanelState{.name = "refused"_L1, .fill = fillChanged<beRefused>},
    PanelState{.name = "paused"_L1, .fill = fillChanged<bePaused>},
    PanelState{.name = "offline"_L1, .fill = fillChanged<beStale>},
    PanelState{.name = "loading"_L1, .fill = fillChanged<beLoading>},
    PanelState{.name = "first"_L1, .fill = fillChanged<beFirst>},
    PanelState{.name = "long"_L1, .fill = fillChanged<beLong>},
    PanelState{.name = "huge"_L1, .fill = fillChanged<beHuge>},
    PanelState{.name = "negative"_L1, .fill = fillChanged<beNegative>},
    PanelState{.name = "from-the-right"_L1, .fill = fillChanged<beWrittenFromTheRight>},
    PanelState{.name = "all"_L1, .fill = fillChanged<beAll>},
    PanelState{.name = "waited-for"_L1, .fill = fillChanged<beWaitedFor>},
    PanelState{.name = "unconnected"_L1, .fill = forgetAll},
};

}  // namespace

std::span<const PanelState> serviceStates() { return kStates; }

}  // namespace tarnwick
