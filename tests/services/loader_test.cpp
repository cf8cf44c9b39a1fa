#include <gtest/gtest.h>

#include <QCoroTask>
#include <QUrlQuery>

#include "Harbour.h"
#include "base/DomainError.h"
#include "services/RemoteFetch.h"
#include "services/WebSession.h"
#include "services/WidgetLoader.h"
#include "support/ScriptedSession.h"
#include "support/TestScheduler.h"
#include "widgets/catalog/Kinds.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

const QString kLater = u"This connection is not part of this version yet."_s;
const QString kNowhere = u"Location Services are disabled. Choose a city or enable Location Services."_s;
const QString kUnconnected = u"Connect this widget in its settings."_s;

QCoro::Task<GeocodeCache::Place> here(std::stop_token) { co_return GeocodeCache::Place{1, 2, u"Current location"_s}; }

/// The host that a widget's fetch asks first, or the sentence that it ends with before it asks.
QString firstAsked(const QString& kind, const QMap<QString, QString>& options,
                   const WidgetLoader::Locate& locate = here) {
  test::TestScheduler time;
  const auto session = std::make_shared<test::ScriptedSession>();
  const QList<Provider> providers = {test::harbour()};
  const WidgetLoader loader(Weather(session, {QUrl(u"https://places.example"_s), QUrl(u"https://sky.example"_s)}),
                            locate, providers);
  const DockWidget widget{QUuid::createUuid(), kind, {}, options};
  QString sentence;
  const RemoteFetch fetch(
      time, [&](std::stop_token stop) { return loader.load(widget, session, false, stop); }, [](const RemoteValue&) {},
      [&](const FetchFailure& failure) { sentence = failure.sentence; });
  time.advance(0);
  while (!session->asked.isEmpty() && session->asked.constLast()->call.url.isEmpty()) session->answer(u"key"_s);
  return session->asked.isEmpty() ? sentence : session->asked.constLast()->call.url.host();
}

TEST(WidgetLoader, AsksTheSourceThatKindAndOptionsName) {
  const QString address = u"https://numbers.example/x"_s;
  const struct {
    QString kind;
    QMap<QString, QString> options;
    QString asked;
  } cases[] = {
      {kind::weatherCurrent, {{option::city, u"Kendal"_s}}, u"places.example"_s},
      {kind::todayClock, {{option::city, u"Kendal"_s}}, u"places.example"_s},
      // Where it is counts for the city that it was chosen for alone.
      {kind::todayClock,
       {{option::city, u"Kendal"_s}, {option::cityPosition, u"54.3280,-2.7460,Kendal"_s}},
       u"sky.example"_s},
      {kind::todayClock,
       {{option::city, u"Paris"_s}, {option::cityPosition, u"54.3280,-2.7460,Kendal"_s}},
       u"places.example"_s},
      {kind::todayOverview, {{option::city, u"Kendal"_s}}, u"places.example"_s},
      {kind::weatherWind, {{option::weatherLocation, value::current}, {option::city, u"Kendal"_s}}, u"sky.example"_s},
      {kind::weatherCurrent, {{option::endpoint, address}}, u"Choose a city."_s},
      {kind::revenueStripe, {{option::endpoint, address}}, u"numbers.example"_s},
      {kind::revenueStripe,
       {{option::endpoint, address}, {option::connectionMode, u"unheard of"_s}},
       u"numbers.example"_s},
      {kind::revenueStripe, {}, kUnconnected},
      // A mode that no reader or service has for this kind leaves the address.
      {kind::revenueStripe,
       {{option::connectionMode, value::native}, {option::endpoint, address}},
       u"numbers.example"_s},
      {kind::revenueStripe,
       {{option::connectionMode, value::claudeActivity}, {option::endpoint, address}},
       u"numbers.example"_s},
      {kind::geminiAPIUsage, {{option::connectionMode, value::codexLocal}}, kUnconnected},
      {kind::geminiAPIUsage, {{option::connectionMode, value::geminiHistory}, {option::endpoint, address}}, kLater},
      {kind::codexUsage, {{option::connectionMode, value::codexLocal}}, kLater},
      {u"harbourBerths"_s,
       {{option::connectionMode, value::native}, {u"quay"_s, u"north"_s}},
       test::harbour().address.host()},
  };
  for (const auto& [kind, options, asked] : cases) EXPECT_EQ(firstAsked(kind, options), asked) << kind.toStdString();
  EXPECT_EQ(firstAsked(kind::weatherCurrent, {{option::weatherLocation, value::current}}, {}), kNowhere);
}

}  // namespace
}  // namespace tarnwick
