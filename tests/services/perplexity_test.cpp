#include <gtest/gtest.h>

#include "base/DomainError.h"
#include "services/PerplexityUsage.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

/// A browser that answers when the test says so.
struct ScriptedBrowser final : BrowserReader {
  bool isInstalled() const override { return isThere; }
  std::unique_ptr<BrowserReading> read(const QUrl& home, Done done) override {
    asked << home;
    answer = std::move(done);
    return std::make_unique<BrowserReading>();
  }
  void showSignIn(const QUrl&) override { ++windows; }
  bool forget() override { return canForget; }

  QList<QUrl> asked;
  Done answer;
  bool isThere = true;
  bool canForget = true;
  int windows = 0;
};

class Perplexity : public ::testing::Test {
 protected:
  /// Follows a reading to its end.
  struct Read {
    QString told;
    std::stop_source stop;
  };
  std::shared_ptr<Read> read() {
    auto begun = std::make_shared<Read>();
    follow(usage, begun);
    return begun;
  }
  static QCoro::Task<> follow(PerplexityUsage& from, std::shared_ptr<Read> begun) {
    try {
      const std::stop_token token = begun->stop.get_token();
      const RemoteValue value = co_await from.read(QDateTime(), token);
      QStringList parts{value.value.value_or(QString()), value.subtitle, value.detail};
      for (const ServiceMetric& metric : value.metrics) parts << metric.label + u'=' + metric.value;
      begun->told = parts.join(u" | "_s);
    } catch (const DomainError& error) {
      begun->told = error.message();
    } catch (const std::exception&) {
      begun->told = u"cancelled"_s;
    }
  }

  std::shared_ptr<ScriptedBrowser> browser = std::make_shared<ScriptedBrowser>();
  PerplexityUsage usage{browser, QUrl(u"https://service.example"_s)};
};

TEST_F(Perplexity, ShowsWhatItsPageSays) {
  const QString invalid = u"Perplexity returned an invalid usage response."_s;
  const QString count = u"The provider returned an invalid count."_s;
  const QString signIn = u"Perplexity needs you to finish sign-in or browser verification. Open Sign In to continue."_s;
  const QString detail = u" remaining | Perplexity reports remaining counts without totals or reset times. | "_s;
  const struct {
    BrowserOutcome outcome;
    QString told;
  } cases[] = {
      {QByteArray(R"({"status":200,"body":"{\"remaining_labs\":9,\"remaining_pro\":284}"})"),
       u"284 | Pro"_s + detail + u"Pro=284 | Labs=9"_s},
      {QByteArray(
           R"({"status":299,"body":"{\"remaining_pro\":1,\"rate_limits\":{\"remaining_agentic_research\":0}}"})"),
       u"0 | Agentic research"_s + detail + u"Agentic research=0"_s},
      {QByteArray(R"({"status":200,"body":"{\"remaining_research\":9223372036854775807}"})"),
       u"9223372036854775807 | Research"_s + detail + u"Research=9223372036854775807"_s},
      {QByteArray(R"({"status":200,"body":"{\"remaining_pro\":9223372036854775808}"})"), count},
      {QByteArray(R"({"status":200,"body":"{\"remaining_pro\":3.5}"})"), count},
      {QByteArray(R"({"status":200,"body":"{\"remaining_pro\":-1}"})"), count},
      {QByteArray(R"({"status":200,"body":"{\"remaining_pro\":true}"})"), count},
      {QByteArray(R"({"status":200,"body":"{\"remaining_pro\":\"3\"}"})"), count},
      {QByteArray(R"({"status":200,"body":"{\"other\":3}"})"),
       u"Perplexity did not report remaining account allowances."_s},
      {QByteArray(R"({"status":200,"body":"<html>"})"), invalid},
      {QByteArray(R"({"status":"200","body":"{}"})"), invalid},
      {QByteArray(R"({"status":200,"body":{}})"), invalid},
      {QByteArray(), invalid},
      {QByteArray(R"({"status":401,"body":"{\"remaining_pro\":3}"})"), signIn},
      {QByteArray(R"({"status":199,"body":""})"), signIn},
      {BrowserFailure::Missing, u"Perplexity needs the optional package tarnwick-browser."_s},
      {BrowserFailure::Unloaded, u"Perplexity could not load. Check your connection."_s},
      {BrowserFailure::Elsewhere, u"Open Sign In and finish connecting to Perplexity."_s},
      {BrowserFailure::Unsafe, u"Perplexity is not read: this system does not let a browser run in its sandbox."_s},
      {BrowserFailure::Unanswered, invalid},
  };
  for (const auto& [outcome, told] : cases) {
    const auto reading = read();
    browser->answer(outcome);
    EXPECT_EQ(reading->told.toStdString(), told.toStdString());
  }
  EXPECT_EQ(browser->asked.constFirst(), QUrl(u"https://service.example"_s));
}

TEST_F(Perplexity, IsReadOnceAtATimeAndSaysWhatToDo) {
  const auto first = read();
  EXPECT_EQ(read()->told, u"Perplexity usage is already refreshing."_s);
  first->stop.request_stop();
  EXPECT_EQ(first->told, u"cancelled"_s);
  const auto next = read();
  browser->answer(BrowserFailure::Unloaded);
  EXPECT_EQ(next->told, u"Perplexity could not load. Check your connection."_s);

  usage.showSignIn();
  EXPECT_EQ(usage.message(), u"Sign in to Perplexity, then return to your widget and refresh."_s);
  browser->isThere = false;
  usage.showSignIn();
  EXPECT_EQ(usage.message(), u"Perplexity needs the optional package tarnwick-browser."_s);
  EXPECT_EQ(browser->windows, 1);
  browser->canForget = false;
  usage.signOut();
  EXPECT_EQ(usage.message(), u"What the session at Perplexity keeps could not be deleted."_s);
}

}  // namespace
}  // namespace tarnwick
