#include <gtest/gtest.h>

#include <QSet>

#include "Harbour.h"
#include "base/DomainError.h"
#include "services/ProviderTable.h"
#include "services/ServiceHTTPError.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

DockWidget berths(const QMap<QString, QString>& options) {
  return {QUuid::createUuid(), u"harbourBerths"_s, {}, options};
}

TEST(ProviderTable, FindsTheFirstRowThatServesAKind) {
  const auto row = [](const QString& id, const QList<KindPattern>& kinds) {
    return Provider{
        .id = id, .name = {}, .credential = {}, .topics = {{.kinds = kinds, .explanation = {}, .fetch = {}}}};
  };
  using enum KindPattern::Match;
  const QList<Provider> table = {row(u"exact"_s, {{u"revenueStripe"_s}, {u"cryptoTax"_s}}),
                                 row(u"within"_s, {{u"GitHub"_s, Contains}}),
                                 row(u"begins"_s, {{u"crypto"_s, BeginsWith}})};
  const struct {
    QString kind;
    QString id;
  } cases[] = {
      {u"revenueStripe"_s, u"exact"_s},  {u"revenueStripeNet"_s, {}},
      {u"myGitHubStars"_s, u"within"_s}, {u"mygithubStars"_s, {}},
      {u"cryptoChart"_s, u"begins"_s},   {u"notcryptoChart"_s, {}},
      {u"cryptoTax"_s, u"exact"_s},      {u""_s, {}},
      {u"cryptoGitHub"_s, u"within"_s},
  };
  for (const auto& [kind, id] : cases) {
    const Provider* found = providerFor(kind, table);
    EXPECT_EQ(found ? found->id : QString(), id) << kind.toStdString();
  }
}

TEST(ProviderTable, HasCompleteRows) {
  QSet<QString> ids;
  QSet<QString> signIns;
  for (const Provider& row : allProviders() + QList<Provider>{test::harbour()}) {
    SCOPED_TRACE(row.id.toStdString());
    EXPECT_FALSE(row.id.isEmpty() || ids.contains(row.id));
    ids << row.id;
    EXPECT_FALSE(row.name.isEmpty() || row.topics.isEmpty());
    // One without an address takes the user's own server.
    EXPECT_TRUE(!row.address.isEmpty() || row.normalise);
    for (const QUrl& address : row.regions.values() + QList<QUrl>{row.address}) {
      if (address.isEmpty()) continue;
      EXPECT_EQ(address.scheme(), u"https"_s);
      EXPECT_FALSE(address.host().isEmpty());
      EXPECT_TRUE(address.userInfo().isEmpty());
    }
    for (const ProviderTopic& topic : row.topics) {
      ASSERT_TRUE(topic.fetch && !topic.kinds.isEmpty());
      EXPECT_EQ(row.topic(topic.kinds.first().text), &topic) << topic.kinds.first().text.toStdString();
      EXPECT_FALSE(topic.explanation.isEmpty());
      for (const ProviderField& field : topic.fields) EXPECT_FALSE(field.key.isEmpty() || field.label.isEmpty());
    }
    EXPECT_EQ(row.credential.label.isEmpty(), row.credential.missing.isEmpty());
    if (row.signIn) {
      EXPECT_FALSE(row.signIn->id.isEmpty() || signIns.contains(row.signIn->id));
      signIns << row.signIn->id;
      EXPECT_EQ(row.signIn->authorization.scheme() + row.signIn->token.scheme(), u"httpshttps"_s);
      EXPECT_FALSE(row.signIn->scope.isEmpty() || row.signIn->clientField.isEmpty());
    }
    EXPECT_LE(row.limits.pages, 30);
  }
}

TEST(ProviderTable, BringsAWidgetIntoTheFormThatIsStored) {
  const QList<Provider> table = {test::harbour()};
  const DockWidget edited = berths({{u"quay"_s, u" North "_s}, {u"endpoint"_s, u"https://elsewhere.example"_s}});
  const DockWidget stored = configured(edited, table);
  const QMap<QString, QString> expected{
      {u"connectionMode"_s, u"native"_s}, {u"endpoint"_s, u"https://api.harbour.example"_s}, {u"quay"_s, u"north"_s}};
  EXPECT_EQ(stored.options, expected);
  EXPECT_EQ(configured(stored, table), stored);

  try {
    configured(berths({{u"quay"_s, u"  "_s}}), table);
    ADD_FAILURE() << "nothing was refused";
  } catch (const DomainError& error) {
    EXPECT_EQ(error.message(), u"Enter a quay."_s);
  }
  const DockWidget clock{QUuid::createUuid(), u"clock"_s, {}, {{u"endpoint"_s, u"kept"_s}}};
  EXPECT_EQ(configured(clock, table), clock);
}

TEST(ServiceHTTPError, SaysWhatTheUserCanDo) {
  const QDateTime noon(QDate(2026, 11, 24), QTime(12, 5));
  const QString noonText = QLocale().toString(noon.time(), QLocale::ShortFormat);
  const QString redirected =
      u"The service redirected this request. Update the connection address; credentials were not forwarded."_s;
  const struct {
    int status;
    std::optional<QDateTime> retryAt;
    QString sentence;
  } cases[] = {
      {300, {}, redirected},
      {399, noon, redirected},
      {401, {}, u"The service credential expired or was rejected. Reconnect in Connection Settings."_s},
      {403, {}, u"This credential cannot read the requested data. Check its scopes and your account plan."_s},
      {404, {}, u"The requested account or resource was not found. Check the connection fields."_s},
      {429, {}, u"The service rate limit was reached. Try again later."_s},
      {429, noon, u"The service rate limit was reached. Retry after %1."_s.arg(noonText)},
      {500, {}, u"The service is temporarily unavailable (HTTP 500). Try again later."_s},
      {599, noon, u"The service is temporarily unavailable (HTTP 599). Try again later."_s},
      {418, noon, u"Service returned HTTP 418. Check the connection settings."_s},
      {100, {}, u"Service returned HTTP 100. Check the connection settings."_s},
      {600, {}, u"Service returned HTTP 600. Check the connection settings."_s},
  };
  for (const auto& [status, retryAt, sentence] : cases) {
    const ServiceHTTPError error(status, retryAt);
    EXPECT_EQ(error.errorDescription(), sentence);
    EXPECT_EQ(QString::fromUtf8(error.what()), sentence);
    EXPECT_EQ(error.retryAt(), retryAt);
  }
}

}  // namespace
}  // namespace tarnwick
