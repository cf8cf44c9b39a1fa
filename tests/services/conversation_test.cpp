#include <gtest/gtest.h>

#include <QLocale>
#include <algorithm>

#include "base/DomainError.h"
#include "services/ProviderTable.h"
#include "services/ServiceHTTPError.h"
#include "support/Conversations.h"
#include "support/ScriptedSession.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;
using test::Conversation;
using test::Exchange;
using test::told;
using Options = QMap<QString, QString>;

/// The outcome of a fetch whose service answers so: what is shown, or the sentence of a failure. `requests` are what
/// was asked. With `pressed` that of the button in the panel, with this text entered for it.
QString outcome(const QString& kind, const Options& options, const QString& credential,
                const std::function<QString(int)>& answerOf, QStringList& requests,
                const std::optional<QString>& pressed = std::nullopt) {
  const auto session = std::make_shared<test::ScriptedSession>();
  const DockWidget widget{QUuid::createUuid(), kind, {}, options};
  const Provider* provider = providerFor(kind);
  if (!provider) return u"no provider"_s;
  QString shown;
  const auto run = [&]() -> QCoro::Task<> {
    try {
      if (pressed) {
        const QString result = co_await actAt(*provider, widget, *pressed, session, {});
        shown = u"done "_s + result;
        co_return;
      }
      const RemoteValue value = co_await fetchFrom(*provider, widget, session, {});
      shown = told(value);
    } catch (const DomainError& error) {
      shown = error.message();
      // What is wrong with an option is said at a line of the form.
      if (const auto* about = dynamic_cast<const OptionError*>(&error)) {
        const QList<ProviderField> fields = provider->fields(kind);
        EXPECT_TRUE(std::ranges::find(fields, about->key, &ProviderField::key) != fields.end())
            << about->key.toStdString();
      } else if (!pressed) {
        EXPECT_FALSE(session->asked.isEmpty()) << "no option is to blame: " << shown.toStdString();
      }
    } catch (const ServiceHTTPError& error) {
      shown = error.errorDescription();
    }
  };
  const QCoro::Task<> task = run();
  if (!shown.isEmpty()) return shown;
  session->answer(credential);
  while (shown.isEmpty()) {
    requests << told(session->asked.constLast()->call);
    if (requests.size() > 40) return u"asks without end"_s;
    const QString answer = answerOf(static_cast<int>(requests.size()) - 1);
    if (const int status = answer.toInt())
      session->fail(ServiceHTTPError(status));
    else
      session->answer(test::parsed(answer));
  }
  return shown;
}

void hold(const Conversation& each) {
  SCOPED_TRACE(each.kind.toStdString());
  QStringList requests;
  const QString shown = outcome(
      each.kind, each.options, u"key"_s, [&](int index) { return each.exchanges.value(index).answer; }, requests);
  QStringList expected;
  for (const Exchange& exchange : each.exchanges) expected << exchange.request;
  EXPECT_EQ(requests.join(u'\n').toStdString(), expected.join(u'\n').toStdString());
  EXPECT_EQ(shown.toStdString(), each.shown.toStdString());
}

class Conversations : public ::testing::Test {
 protected:
  Conversations() { QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates)); }
  ~Conversations() override { QLocale::setDefault(QLocale::system()); }
};

TEST_F(Conversations, AskInOrderAndShowWhatComes) {
  for (const Conversation& each : test::conversations()) hold(each);
}

TEST_F(Conversations, EndWithASentenceWhereAnAnswerIsNotWhatWasAskedFor) {
  const Options repository{{u"field"_s, u"forks"_s}, {u"repository"_s, u"a/b"_s}};
  const Options project{{u"projectRef"_s, u"abcdefghijklmnopqrst"_s}};
  const Options site{{u"site"_s, u"example.com"_s}};
  const Options entity{{u"server"_s, u"https://home.example"_s}, {u"entity"_s, u"light.a"_s}};
  const Options shop{{u"shop"_s, u"a.myshopify.com"_s}, {u"shopifyReportMode"_s, u"orders"_s}};
  const QString boolean = u"A boolean cannot be used as a metric count."_s;
  const QString count = u"The provider returned an invalid count."_s;
  const QString unexpected = u"The provider returned an unexpected response."_s;
  const QString percentage = u"Invalid usage percentage."_s;
  const QString emails = u"Resend did not return a paginated email list."_s;
  const QString errors =
      u"The provider could not complete this query. Check the credential’s permissions and account plan."_s;
  const struct {
    QString kind;
    Options options;
    QString answer;  ///< Of several parted by " then " the last one to all requests that follow.
    QString sentence;
  } cases[] = {
      {u"analyticsGitHub"_s, repository, u"[]"_s, u"The provider returned an unexpected response."_s},
      {u"analyticsGitHub"_s, repository, uR"({"errors":[{}],"forks":1})"_s,
       u"The provider could not complete this query. Check the credential’s permissions and account plan."_s},
      {u"analyticsGitHub"_s, repository, uR"({"forks":true})"_s, u"A boolean cannot be used as a metric count."_s},
      {u"analyticsGitHub"_s, repository, uR"({"forks":"many"})"_s,
       u"The provider did not return a numeric forks value."_s},
      {u"analyticsGitHub"_s, repository, uR"({"forks":2.5})"_s, u"The provider returned an invalid count."_s},
      {u"analyticsGitHub"_s, repository, uR"({"forks":-1})"_s, u"The provider returned an invalid count."_s},
      {u"analyticsGitHub"_s, repository, uR"({"forks":null})"_s, u"The service returned an unavailable value."_s},
      {u"analyticsGitHub"_s, {}, uR"({"message":"x"})"_s, u"GitHub did not return notifications."_s},
      {u"analyticsGitHubContributions"_s,
       {{u"username"_s, u"a"_s}},
       uR"({"data":{"user":null}})"_s,
       u"GitHub did not return a contribution calendar."_s},
      {u"productivityLinear"_s, {}, uR"({"data":{}})"_s, u"Linear did not return assigned issues."_s},
      {u"productivityLinear"_s,
       {},
       uR"({"data":{"viewer":{"assignedIssues":{"nodes":[],"pageInfo":{"hasNextPage":true}}}}})"_s,
       u"Invalid Linear continuation cursor."_s},
      {u"analyticsSupabase"_s, project, uR"({"error":{"message":"no"}})"_s,
       u"Supabase could not return usage. Check project permissions."_s},
      {u"analyticsSupabase"_s, project, uR"({"result":[{}]})"_s, u"Supabase did not return request metrics."_s},
      {u"analyticsResend"_s, {}, uR"({"data":[]})"_s, u"Resend did not return a paginated email list."_s},
      {u"analyticsResend"_s, {}, uR"({"data":[],"has_more":true})"_s, u"Invalid Resend continuation cursor."_s},
      {u"analyticsPlausible"_s, site, uR"({"results":[]})"_s, u"Plausible did not return visitor data."_s},
      {u"revenueStripe"_s, {}, u"[]"_s, u"Stripe did not return a paginated balance ledger."_s},
      {u"revenueStripe"_s,
       {},
       uR"({"data":[],"has_more":true})"_s,
       u"Stripe returned an invalid continuation cursor."_s},
      {u"revenueStripe"_s,
       {},
       uR"({"data":[{"id":"1","currency":"eur","net":1}]})"_s,
       u"Stripe returned an incomplete balance transaction."_s},
      {u"cryptoChart"_s, {}, uR"({"bitcoin":{"usd":1}})"_s, u"CoinGecko did not return valid price history."_s},
      {u"cryptoQuote"_s, {}, u"{}"_s, u"CoinGecko did not return bitcoin. Check the coin ID."_s},
      {u"revenueDodoPayments"_s,
       {},
       uR"({"items":[{"currency":"usd","event_type":"payment","amount":1}]})"_s,
       u"Ledger direction is missing."_s},
      {u"revenueDodoPayments"_s,
       {},
       uR"({"items":[{"currency":"usd","event_type":"payment","is_credit":true,"amount":"1"}]})"_s,
       u"The ledger returned an invalid amount."_s},
      {u"revenueDodoPayments"_s, {}, u"{}"_s, u"Dodo did not return ledger entries."_s},
      {u"dubShortener"_s, {}, u"{}"_s, u"Dub did not return links."_s},
      {u"analyticsDataFast"_s, {}, uR"({"data":[]})"_s, u"DataFast did not return a single aggregate overview."_s},
      {u"analyticsDataFastChart"_s,
       {},
       uR"({"data":[{"visitors":1,"pageviews":1,"sessions":1}]} then {"data":{}})"_s,
       u"DataFast did not return its time series."_s},
      {u"socialYouTube"_s, {{u"channel"_s, u"@a"_s}}, uR"({"items":[]})"_s, u"YouTube channel not found."_s},
      {u"homeAssistant"_s, entity, uR"({"entity_id":"light.b"})"_s,
       u"Home Assistant did not return the requested entity."_s},
      {u"stockChart"_s, {}, uR"({"status":"error"})"_s, u"The provider did not return stock price history."_s},
      {u"dropbox"_s, {}, u"[]"_s, u"Dropbox did not return a folder listing."_s},
      {u"dropbox"_s, {}, uR"({"entries":[{}]})"_s, u"Dropbox did not return file metadata."_s},
      {u"dropbox"_s, {}, uR"({"entries":[],"has_more":true})"_s, u"Dropbox returned an invalid continuation cursor."_s},
      {u"socialTikTok"_s,
       {},
       uR"({"error":{"code":"access_token_invalid"}})"_s,
       u"TikTok could not read the account. Check token scopes and expiry."_s},
      {u"claudePlanUsage"_s, {}, uR"({"five_hour":{"utilization":120}})"_s, u"Invalid usage percentage."_s},
      // What is not measured is left out.
      {u"claudePlanUsage"_s,
       {},
       uR"({"seven_day_sonnet":{"utilization":25},"seven_day_opus":null})"_s,
       u"75% | Remaining · Sonnet · 7 days | Sonnet · 7 days · 25% used · reset unavailable | Sonnet · 7 days=75% left "
       u"|  |  | claude.seven_day_sonnet Sonnet · 7 days 25% 10080 never"_s},
      {u"claudePlanUsage"_s, {}, u"{}"_s, u"This account has not reported readable usage windows."_s},
      {u"openCodeUsage"_s, {}, u"{}"_s, u"OpenCode did not return Go usage windows."_s},
      {u"glmUsage"_s, {}, u"{}"_s, u"Z.ai did not return Coding Plan quotas."_s},
      {u"copilotUsage"_s,
       {},
       u"{}"_s,
       u"GitHub did not report a measurable individual Copilot allowance. Check Copilot settings."_s},
      {u"cursorPersonalUsage"_s,
       {},
       uR"({"individualUsage":{"plan":{"used":5}}})"_s,
       u"Cursor has not reported an allowance limit."_s},
      {u"cursorPersonalUsage"_s, {}, u"{}"_s, u"Cursor did not report a measurable subscription allowance."_s},
      {u"analyticsCursorUsage"_s, {}, uR"({"usageEvents":[]})"_s, u"Cursor did not return paginated team usage."_s},
      // A number is neither a truth nor a word, and no more than there can be of what it counts.
      {u"revenueStripe"_s,
       {},
       uR"({"data":[{"id":"1","reporting_category":"charge","currency":"usd","net":"1"}]})"_s,
       u"Stripe returned an incomplete balance transaction."_s},
      {u"revenueStripe"_s,
       {},
       uR"({"data":[{"id":"1","reporting_category":"charge","currency":"usd","net":1.5}]})"_s,
       u"Stripe returned an incomplete balance transaction."_s},
      {u"revenueStripe"_s,
       {},
       uR"({"data":[],"has_more":"no"})"_s,
       u"Stripe did not return a paginated balance ledger."_s},
      {u"revenuePolar"_s, {}, uR"({"totals":{"net_revenue":true}})"_s, boolean},
      {u"revenuePolar"_s, {}, uR"({"totals":{}})"_s, u"The provider did not return a numeric net_revenue value."_s},
      {u"cryptoQuote"_s, {}, uR"({"bitcoin":{"usd":false}})"_s, boolean},
      {u"analyticsPlausible"_s, site, uR"({"results":[{"metrics":["many"]}]})"_s,
       u"The provider did not return a numeric visitors value."_s},
      {u"analyticsSimpleAnalytics"_s, site, uR"({"status":"success","visitors":true})"_s, boolean},
      {u"analyticsSimpleAnalytics"_s, site, uR"({"status":"error"})"_s, unexpected},
      {u"analyticsDataFast"_s, {}, uR"({"data":[{"visitors":1.5}]})"_s, count},
      {u"analyticsDubOverview"_s, {}, uR"({"clicks":9007199254740994})"_s, count},
      {u"socialYouTube"_s,
       {{u"channel"_s, u"@a"_s}},
       uR"({"items":[{"statistics":{"subscriberCount":true}}]})"_s,
       boolean},
      {u"socialTikTok"_s, {}, uR"({"data":{"user":{"follower_count":-1}}})"_s, count},
      {u"gmailUnreadSummary"_s,
       {},
       uR"({"messagesUnread":"a few"})"_s,
       u"The provider did not return a numeric messagesUnread value."_s},
      {u"homeAssistant"_s, entity, uR"({"entity_id":"light.a","state":true})"_s,
       u"Choose a number, text, or list field."_s},
      {u"stockQuote"_s, {}, uR"({"code":401,"status":"error"})"_s, unexpected},
      {u"stockWatchlist"_s, {}, uR"({"code":429,"status":"error"})"_s, unexpected},
      {u"stockQuote"_s, {}, uR"({"close":true,"percent_change":"1"})"_s, boolean},
      {u"claudePlanUsage"_s, {}, uR"({"five_hour":{"utilization":"5"}})"_s, percentage},
      {u"claudePlanUsage"_s, {}, uR"({"five_hour":{"utilization":-1}})"_s, percentage},
      {u"copilotUsage"_s, {}, uR"({"quota_snapshots":{"chat":{"percent_remaining":true}}})"_s, percentage},
      {u"glmUsage"_s, {}, uR"({"data":{"limits":[{"type":"TIME_LIMIT","percentage":101}]}})"_s, percentage},
      {u"cursorPersonalUsage"_s, {}, uR"({"individualUsage":{"plan":{"used":9,"limit":3}}})"_s, percentage},
      {u"analyticsCursorUsage"_s,
       {},
       uR"({"pagination":{"hasNextPage":false},"usageEvents":[{"isTokenBasedCall":true,"tokenUsage":{},"chargedCents":"1"}]})"_s,
       u"Cursor did not return paginated team usage."_s},
      // Errors beside what was asked for.
      {u"productivityLinear"_s,
       {},
       uR"({"errors":[{}],"data":{"viewer":{"assignedIssues":{"nodes":[],"pageInfo":{"hasNextPage":false}}}}})"_s,
       errors},
      {u"revenueStripe"_s, {}, uR"({"errors":["no"],"data":[]})"_s, errors},
      {u"analyticsPlausible"_s, site, uR"({"errors":[1],"results":[{"metrics":[1]}]})"_s, errors},
      {u"dropbox"_s, {}, uR"({"errors":[{}],"entries":[],"has_more":false})"_s, errors},
      {u"shopifyRevenue"_s, shop, uR"({"errors":[{}],"data":{"orders":{"nodes":[]}}})"_s, errors},
      // Dates that are none.
      {u"analyticsResend"_s, {}, uR"({"has_more":false,"data":[{"id":"1","created_at":"yesterday"}]})"_s, emails},
      {u"analyticsResend"_s,
       {},
       uR"({"has_more":false,"data":[{"id":"1","created_at":"2026-13-40T00:00:00Z"}]})"_s,
       emails},
      {u"analyticsResend"_s, {}, uR"({"has_more":false,"data":[{"id":"1","created_at":1795515840}]})"_s, emails},
      // Pages without an end and without an order, and a sum in no currency.
      {u"shopifyRevenue"_s, shop,
       uR"({"data":{"orders":{"nodes":[],"pageInfo":{"hasNextPage":true,"endCursor":"c%1"}}}})"_s, unexpected},
      {u"shopifyRevenue"_s, shop, uR"({"data":{"orders":{"nodes":[],"pageInfo":{"hasNextPage":false}}}})"_s,
       unexpected},
      {u"shopifyRevenue"_s, shop,
       uR"({"data":{"orders":{"nodes":[{"id":"1","createdAt":"today","currentTotalPriceSet":{"shopMoney":{"amount":"1","currencyCode":"USD"}}}]}}})"_s,
       u"Shopify returned an incomplete order metric."_s},
      {u"shopifyRevenue"_s, shop,
       uR"({"data":{"orders":{"nodes":[{"id":"1","createdAt":"2026-11-24T09:00:00Z","currentTotalPriceSet":{"shopMoney":{"amount":"nan","currencyCode":"USD"}}}],"pageInfo":{"hasNextPage":false}}}})"_s,
       u"The order total is invalid."_s},
      {u"grokUsage"_s,
       {},
       u"403"_s,
       u"This credential cannot read the requested data. Check its scopes and your account plan."_s},
  };
  for (const auto& each : cases) {
    QStringList requests;
    EXPECT_EQ(outcome(
                  each.kind, each.options, u"key"_s,
                  [&](int index) {
                    const QStringList answers = each.answer.split(u" then "_s);
                    return QString(answers[std::min<qsizetype>(index, answers.size() - 1)])
                        .replace(u"%1"_s, QString::number(index));
                  },
                  requests),
              each.sentence)
        << each.kind.toStdString() << each.answer.toStdString();
  }
}

TEST_F(Conversations, BeginWithOptionsAndCredentialsThatCanBeUsed) {
  const QString coins = u"Enter up to 12 CoinGecko coin IDs separated by commas."_s;
  const QString entity = u"Enter an entity ID such as sensor.temperature."_s;
  const QString shop = u"Enter the store’s exact Shopify domain, such as your-store.myshopify.com."_s;
  const struct {
    QString kind;
    Options options;
    QString credential;
    QString sentence;
  } cases[] = {
      {u"analyticsGitHubContributions"_s, {{u"username"_s, u"a b"_s}}, u"key"_s, u"Enter a GitHub username."_s},
      {u"analyticsGitHub"_s, {{u"field"_s, u"watchers"_s}}, u"key"_s, u"Choose a supported GitHub metric."_s},
      {u"analyticsGitHub"_s, {{u"field"_s, u"forks"_s}}, u"key"_s, u"Enter a repository for this metric."_s},
      {u"analyticsGitHubOverview"_s,
       {{u"repository"_s, u"a/b/c"_s}},
       u"key"_s,
       u"Enter a repository as owner/repository."_s},
      {u"analyticsGitHub"_s, {}, u""_s, u"Add your service credential in Connection Settings."_s},
      {u"analyticsSupabase"_s,
       {{u"projectRef"_s, u"../x"_s}},
       u"key"_s,
       u"Enter the 20-letter Supabase project reference."_s},
      {u"analyticsPlausible"_s, {}, u"key"_s, u"Enter your Plausible site domain."_s},
      {u"revenueStripe"_s, {{u"currency"_s, u"USD"_s}}, u"key"_s, u"Enter a three-letter currency code."_s},
      {u"revenuePolar"_s, {{u"currency"_s, u"usd"_s}}, u"key"_s, u"Enter a three-letter currency code."_s},
      {u"cryptoQuote"_s, {{u"coin"_s, u"a,b,c,d,e,f,g,h,i,j,k,l,m"_s}}, u""_s, coins},
      {u"cryptoQuote"_s, {{u"coin"_s, u"a/b"_s}}, u""_s, coins},
      {u"analyticsSimpleAnalytics"_s, {{u"site"_s, u"a/../b"_s}}, u""_s, u"Enter your site’s domain without a path."_s},
      {u"socialYouTube"_s, {}, u"key"_s, u"Enter a YouTube handle."_s},
      {u"socialTwitter"_s, {{u"username"_s, u"@"_s}}, u"key"_s, u"Enter an X username."_s},
      {u"dropbox"_s,
       {{u"dropboxPath"_s, u"Projects"_s}},
       u"key"_s,
       u"A Dropbox folder path starts with /, or is empty for root."_s},
      {u"homeAssistant"_s, {{u"server"_s, u"http://home"_s}}, u"key"_s, u"Enter a valid HTTPS service address."_s},
      {u"homeAssistant"_s, {}, u"key"_s, u"Enter a valid HTTPS service address."_s},
      {u"homeAssistant"_s, {{u"server"_s, u"https://ho me"_s}}, u"key"_s, u"The service address is invalid."_s},
      {u"homeAssistant"_s, {{u"server"_s, u"https://u:p@home"_s}}, u"key"_s, u"Enter a valid HTTPS service address."_s},
      {u"homeAssistant"_s, {{u"server"_s, u"https://home"_s}, {u"entity"_s, u"a.b/../c"_s}}, u"key"_s, entity},
      {u"homeAssistant"_s,
       {{u"server"_s, u"https://home"_s}, {u"entity"_s, u"light.a"_s}},
       u""_s,
       u"Add your provider credential in Connection Settings."_s},
      {u"shopifyRevenue"_s, {{u"shop"_s, u"tarn.example"_s}}, u"key"_s, shop},
      {u"shopifyRevenue"_s,
       {{u"shop"_s, u"a.myshopify.com"_s}, {u"shopifyReportMode"_s, u"all"_s}},
       u"key"_s,
       u"Choose Shopify Analytics or paid-order totals."_s},
      {u"shopifyRevenue"_s,
       {{u"shop"_s, u"a.myshopify.com"_s}, {u"periodDays"_s, u"2"_s}},
       u"key"_s,
       u"Choose a period of 1, 7, or 30 days."_s},
      {u"shopifyRevenue"_s, {{u"shop"_s, u"a.myshopify.com/admin"_s}}, u"key"_s, shop},
      {u"shopifyRevenue"_s, {{u"shop"_s, u"a.myshopify.com.evil.example"_s}}, u"key"_s, shop},
      {u"shopifyRevenue"_s, {{u"shop"_s, u"evil.example/a.myshopify.com"_s}}, u"key"_s, shop},
      {u"shopifyRevenue"_s, {{u"shop"_s, u"Tarn.myshopify.com"_s}}, u"key"_s, shop},
      {u"shopifyRevenue"_s, {{u"shop"_s, u"-a.myshopify.com"_s}}, u"key"_s, shop},
      {u"homeAssistant"_s, {{u"server"_s, u"https://home"_s}, {u"entity"_s, u"../api/config"_s}}, u"key"_s, entity},
      {u"homeAssistant"_s, {{u"server"_s, u"https://home"_s}, {u"entity"_s, u"light"_s}}, u"key"_s, entity},
      {u"homeAssistant"_s, {{u"server"_s, u"https://home"_s}, {u"entity"_s, u"light..a"_s}}, u"key"_s, entity},
      {u"homeAssistant"_s,
       {{u"server"_s, u"https://home/?a=b"_s}, {u"entity"_s, u"light.a"_s}},
       u"key"_s,
       u"Enter a valid HTTPS service address."_s},
      {u"analyticsGitHub"_s,
       {{u"field"_s, u"forks"_s}, {u"repository"_s, u"a/.."_s}},
       u"key"_s,
       u"Enter a repository as owner/repository."_s},
      {u"analyticsGitHubContributions"_s, {{u"username"_s, u"../user"_s}}, u"key"_s, u"Enter a GitHub username."_s},
      {u"stockQuote"_s,
       {{u"symbols"_s, u"a,b,c,d,e,f,g,h,i,j,k,l,m"_s}},
       u"key"_s,
       u"Enter up to 12 stock symbols separated by commas."_s},
      {u"grokUsage"_s, {}, u"a\tb"_s, u"Add a valid Grok CLI access token in Connection Settings."_s},
      {u"cursorPersonalUsage"_s, {}, u"name=a; other=b"_s, u"Enter only the Cursor session token value."_s},
      {u"stockQuote"_s, {{u"symbols"_s, u","_s}}, u"key"_s, u"Enter up to 12 stock symbols separated by commas."_s},
      {u"claudePlanUsage"_s,
       {},
       u" two words "_s,
       u"Add a valid Claude Code OAuth access token in Connection Settings."_s},
      {u"glmUsage"_s, {}, u""_s, u"Add a valid coding plan api key in Connection Settings."_s},
      {u"cursorPersonalUsage"_s, {}, u"a;b"_s, u"Enter only the Cursor session token value."_s},
      {u"cursorPersonalUsage"_s, {}, u""_s, u"Add a valid WorkosCursorSessionToken value in Connection Settings."_s},
      {u"analyticsCursorUsage"_s, {}, u" "_s, u"Add a valid Cursor Team Admin API key in Connection Settings."_s},
      {u"copilotUsage"_s, {}, u""_s, u"Add a valid GitHub token with Copilot access in Connection Settings."_s},
      {u"openCodeUsage"_s, {}, u""_s, u"Add a valid coding plan api key in Connection Settings."_s},
  };
  for (const auto& each : cases) {
    QStringList requests;
    EXPECT_EQ(outcome(
                  each.kind, each.options, each.credential, [](int) { return u"{}"_s; }, requests),
              each.sentence)
        << each.kind.toStdString();
    EXPECT_TRUE(requests.isEmpty()) << each.kind.toStdString();
  }
}

/// A list that is followed across pages.
struct PagedList {
  QString kind;
  Options options;
  QString row;    ///< %1 is its number.
  QString frame;  ///< %1 are the rows, %2 whether the list goes on, %3 where; without %2 a page says nothing of that.
  int pages;      ///< At most.
  int size;
  QString headline;  ///< %1 is how many were read.
  QString mark;      ///< Before it where the list was cut short.
  QString cut;       ///< What subtitle and detail end with then.
  QString lost;      ///< Of a cursor that leads nowhere.

  bool isBlind() const { return !frame.contains(u"%2"_s); }
  QString page(int number, int count, bool goesOn, const QString& cursor) const {
    QStringList rows;
    for (int i = 0; i < count; ++i) rows << QString(row).replace(u"%1"_s, QString::number(number * size + i));
    return QString(frame)
        .replace(u"%3"_s, cursor)
        .replace(u"%2"_s, goesOn ? u"true"_s : u"false"_s)
        .replace(u"%1"_s, rows.join(u','));
  }
  /// What comes of pages of which the last that may be read holds `last` entries, and how many requests that takes.
  QString read(int last, bool goesOn, qsizetype& asked) const {
    QStringList requests;
    const auto answer = [&](int index) {
      if (index < pages - 1) return page(index, size, true, u"c%1"_s.arg(index));
      if (index == pages - 1) return page(index, last, goesOn, u"c%1"_s.arg(index));
      return page(index, goesOn ? 1 : 0, false, {});
    };
    const QStringList shown = outcome(kind, options, u"key"_s, answer, requests).split(u" | "_s);
    asked = requests.size();
    QStringList told = shown.mid(0, 3);
    told.removeAll(QString());
    return told.join(u" | "_s);
  }
  /// What is said of a second page that goes on at `cursor`.
  QString readTo(const QString& cursor) const {
    QStringList requests;
    return outcome(
        kind, options, u"key"_s,
        [&](int index) {
          // Where the last row is the cursor, the row is the same again.
          return page(index == 0 || !frame.contains(u"%3"_s) ? 0 : index, 1, true, index == 0 ? u"c"_s : cursor);
        },
        requests);
  }
};

TEST_F(Conversations, StopAtTheirLastPageAndSaySo) {
  const PagedList lists[] = {
      {u"revenueStripe"_s,
       {},
       uR"({"id":"r%1","reporting_category":"charge","currency":"usd","net":100})"_s,
       uR"({"has_more":%2,"data":[%1]})"_s,
       30,
       100,
       u"$%L1.00"_s,
       u"Partial · "_s,
       u" More than 3,000 transactions; this is not a complete total."_s,
       u"Stripe returned an invalid continuation cursor."_s},
      {u"analyticsResend"_s,
       {},
       uR"({"id":"r%1","created_at":"2026-11-24T09:00:00Z","last_event":"sent"})"_s,
       uR"({"has_more":%2,"data":[%1]})"_s,
       30,
       100,
       u"%1"_s,
       {},
       u"Over 3,000 recent emails; month is incomplete. Delivery percentage withheld."_s,
       u"Invalid Resend continuation cursor."_s},
      {u"analyticsGitHub"_s,
       {},
       uR"({"id":"%1"})"_s,
       u"[%1]"_s,
       20,
       100,
       u"%1"_s,
       {},
       u"Over 2,000 notifications; partial count."_s,
       {}},
      {u"analyticsGitHub"_s,
       {},
       uR"({"id":"%1"})"_s,
       u"[%1]"_s,
       20,
       50,
       u"%1"_s,
       {},
       u"Over 1,000 notifications; partial count."_s,
       {}},
      {u"productivityLinear"_s,
       {},
       uR"({"id":"%1","state":{"type":"started"}})"_s,
       uR"({"data":{"viewer":{"assignedIssues":{"nodes":[%1],"pageInfo":{"hasNextPage":%2,"endCursor":"%3"}}}}})"_s,
       20,
       100,
       u"%1"_s,
       {},
       u"Over 2,000 issues; partial count."_s,
       u"Invalid Linear continuation cursor."_s},
      {u"revenueDodoPayments"_s,
       {},
       uR"({"currency":"USD","event_type":"payment","is_credit":true,"amount":100})"_s,
       uR"({"items":[%1]})"_s,
       20,
       100,
       u"$%L1.00"_s,
       u"Partial · "_s,
       u" More entries exist; this is not a complete total."_s,
       {}},
      {u"dropbox"_s,
       {},
       uR"({".tag":"file","id":"%1","name":"n","path_display":"/n"})"_s,
       uR"({"has_more":%2,"cursor":"%3","entries":[%1]})"_s,
       20,
       100,
       u"%1"_s,
       {},
       u"Folder items · partial listing"_s,
       u"Dropbox returned an invalid continuation cursor."_s},
      {u"analyticsCursorUsage"_s,
       {},
       uR"({"isTokenBasedCall":true,"tokenUsage":{},"chargedCents":100})"_s,
       uR"({"pagination":{"hasNextPage":%2},"usageEvents":[%1]})"_s,
       30,
       100,
       u"$%L1.00"_s,
       u"Partial · "_s,
       u" More than 3,000 events; this is not a complete period."_s,
       {}},
      {u"shopifyRevenue"_s,
       {{u"shop"_s, u"a.myshopify.com"_s}, {u"shopifyReportMode"_s, u"orders"_s}},
       uR"({"id":"%1","createdAt":"2026-11-24T09:00:00Z","currentTotalPriceSet":{"shopMoney":{"amount":"1.0","currencyCode":"USD"}}})"_s,
       uR"({"data":{"orders":{"nodes":[%1],"pageInfo":{"hasNextPage":%2,"endCursor":"%3"}}}})"_s,
       20,
       250,
       u"$%L1.00"_s,
       u"Partial · "_s,
       u" More than 5,000 orders; this is not a complete total."_s,
       u"The provider returned an unexpected response."_s},
  };
  for (const PagedList& list : lists) {
    SCOPED_TRACE(list.kind.toStdString() + " of " + std::to_string(list.size));
    const int whole = list.pages * list.size;
    qsizetype asked = 0;
    const QString cut = list.read(list.size, true, asked);
    EXPECT_TRUE(cut.startsWith(list.mark + list.headline.arg(whole) + u" | "_s) && cut.endsWith(list.cut))
        << cut.toStdString();
    EXPECT_EQ(asked, list.pages);
    // A full page of a list that says nothing may have another behind it.
    const QString full = list.read(list.size, false, asked);
    EXPECT_EQ(full.endsWith(list.cut), list.isBlind()) << full.toStdString();
    for (const int last : {list.isBlind() ? list.size / 2 - 1 : list.size - 1, 7}) {
      const QString less = list.read(last, false, asked);
      EXPECT_TRUE(less.startsWith(list.headline.arg(whole - list.size + last) + u" | "_s) && !less.endsWith(list.cut))
          << less.toStdString();
      EXPECT_EQ(asked, list.pages);
    }
    if (list.lost.isEmpty()) continue;
    EXPECT_EQ(list.readTo(u"c"_s).toStdString(), list.lost.toStdString());
    if (list.frame.contains(u"%3"_s)) {
      EXPECT_EQ(list.readTo({}).toStdString(), list.lost.toStdString());
    }
  }
}

TEST_F(Conversations, AskForAnotherPageBehindAFullOne) {
  const struct {
    QString kind, row, frame;
    int entries;
    qsizetype requests;
  } cases[] = {
      {u"revenueDodoPayments"_s, uR"({"currency":"EUR"})"_s, uR"({"items":[%1]})"_s, 99, 1},
      {u"revenueDodoPayments"_s, uR"({"currency":"EUR"})"_s, uR"({"items":[%1]})"_s, 100, 2},
      // It may be asked for more than it gives at a time.
      {u"analyticsGitHub"_s, uR"({"id":"1"})"_s, u"[%1]"_s, 49, 1},
      {u"analyticsGitHub"_s, uR"({"id":"1"})"_s, u"[%1]"_s, 50, 2},
  };
  for (const auto& each : cases) {
    QStringList requests;
    const QString shown = outcome(
        each.kind, {}, u"key"_s,
        [&](int index) { return QString(each.frame).arg(QStringList(index ? 0 : each.entries, each.row).join(u',')); },
        requests);
    EXPECT_EQ(requests.size(), each.requests) << each.kind.toStdString() << each.entries;
    EXPECT_FALSE(shown.contains(u"artial"_s) || shown.contains(u"not a complete"_s)) << shown.toStdString();
    EXPECT_TRUE(shown.contains(QString::number(each.entries))) << shown.toStdString();
  }
}

TEST_F(Conversations, MakeAtMostThirtyRequests) {
  // The longest of all: every page of the notifications, and what the overview asks besides.
  const QString page = u'[' + QStringList(100, uR"({"id":"1"})"_s).join(u',') + u']';
  QStringList requests;
  const QString shown = outcome(
      u"analyticsGitHubOverview"_s, {{u"repository"_s, u"a/b"_s}}, u"key"_s,
      [&](int index) {
        if (requests[index].contains(u"/notifications"_s)) return page;
        return uR"({"stargazers_count":1,"data":{"viewer":{"pullRequests":{"totalCount":5}}}})"_s;
      },
      requests);
  EXPECT_TRUE(shown.startsWith(u"2000 | "_s)) << shown.toStdString();
  EXPECT_EQ(requests.size(), 22);
  for (const Provider& row : allProviders()) EXPECT_LE(row.limits.pages, 30) << row.id.toStdString();
}

TEST(ProviderActions, AreOneRequestOfWhatTheFormAllows) {
  const auto home = [](const QString& entity, const QString& control) {
    return Options{{u"connectionMode"_s, u"native"_s},
                   {u"server"_s, u"https://home.example"_s},
                   {u"entity"_s, entity},
                   {u"control"_s, control}};
  };
  const Options native{{u"connectionMode"_s, u"native"_s}};
  const QString toggle =
      uR"(POST https://home.example/api/services/homeassistant/toggle Bearer key {"entity_id":"%1"})"_s;
  const QString link = uR"(POST https://api.dub.co/links Bearer key {"url":"https://one.example/a%20b"})"_s;
  const QString page = u"https://one.example/a b"_s;
  const QString refused = u"The form of this widget does not allow that."_s;
  const struct {
    QString kind;
    Options options;
    QString text, asked, answer, outcome;
  } cases[] = {
      {u"homeAssistant"_s, home(u"light.hall"_s, u"true"_s), {}, toggle.arg(u"light.hall"_s), u"[]"_s, u"done "_s},
      {u"homeAssistant"_s,
       home(u"switch.fan"_s, u"true"_s),
       {},
       toggle.arg(u"switch.fan"_s),
       u"503"_s,
       u"The service is temporarily unavailable (HTTP 503). Try again later."_s},
      {u"homeAssistant"_s, home(u"light.hall"_s, {}), {}, {}, {}, refused},
      {u"homeAssistant"_s, home(u"light.hall"_s, u"1"_s), {}, {}, {}, refused},
      {u"homeAssistant"_s, home(u"lock.door"_s, u"true"_s), {}, {}, {}, refused},
      {u"homeAssistant"_s,
       home(u"light.hall/../lock.door"_s, u"true"_s),
       {},
       {},
       {},
       u"Enter an entity ID such as sensor.temperature."_s},
      {u"dubShortener"_s, native, page, link, uR"({"shortLink":"https://dub.sh/x"})"_s, u"done https://dub.sh/x"_s},
      {u"dubShortener"_s, native, page, link, uR"({"shortLink":"javascript:1"})"_s,
       u"Dub did not return a short link."_s},
      {u"dubShortener"_s, native, u"one.example"_s, {}, {}, u"Enter a web address to shorten."_s},
      {u"dubShortener"_s, native, u"javascript:alert(1)"_s, {}, {}, u"Enter a web address to shorten."_s},
      {u"dubShortener"_s, {}, page, {}, {}, refused},
      {u"analyticsDubOverview"_s, native, page, {}, {}, refused},
  };
  for (const auto& each : cases) {
    QStringList requests;
    const QString came = outcome(
        each.kind, each.options, u"key"_s, [&](int) { return each.answer; }, requests, each.text);
    EXPECT_EQ(came.toStdString(), each.outcome.toStdString());
    EXPECT_EQ(requests.join(u'|').toStdString(), each.asked.toStdString());
  }
}

}  // namespace
}  // namespace tarnwick
