#include <gtest/gtest.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <QTemporaryDir>
#include <QUrlQuery>
#include <cerrno>
#include <cstddef>

#include "base/DomainError.h"
#include "secret/FakeSecretStore.h"
#include "secret/Told.h"
#include "services/ProviderTable.h"
#include "services/ServiceHTTPError.h"
#include "services/oauth/OAuthContract.h"
#include "services/oauth/OAuthTokens.h"
#include "support/ScriptedSession.h"
#include "support/Wait.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

const QDateTime kNow(QDate(2026, 11, 24), QTime(10, 24), QTimeZone::utc());

OAuthProvider signInOf(const QString& kind) { return providerFor(kind)->signIn.value(); }

OAuthRecord stored(qint64 secondsLeft) {
  return {u"gmail"_s, u"client"_s, u"secret"_s, u"old"_s, u"refresh"_s, kNow.addSecs(secondsLeft)};
}

/// What a call ends with: its result, or its sentence.
template <class Work>
QString outcomeOf(const Work& work) {
  try {
    return work();
  } catch (const DomainError& error) {
    return error.message();
  } catch (const OAuthDeclined&) {
    return OAuthDeclined::sentence();
  }
}

TEST(SignIn, AsksTheServiceForWhatItsRowSays) {
  const OAuthProvider dropbox = signInOf(u"dropbox"_s);
  // The verifier and its challenge of RFC 7636, appendix B.
  const QString challenge = OAuthContract::challenge(u"dBjftJeZ4CVP-mB92K27uhbUJU1p1r_wW1gFWFOEjXk"_s);
  EXPECT_EQ(challenge, u"E9Melhoa2OwvFrEMTJguCHaoeK1t8URWbuGJSstw-cM"_s);
  const QUrl address = OAuthContract::authorizationAddress(
      dropbox, OAuthContract::authorizationFields(dropbox, u"a b&c"_s, u"http://127.0.0.1:43879/callback"_s, u"s~"_s,
                                                  challenge));
  EXPECT_EQ(address.toString(QUrl::FullyEncoded).toStdString(),
            "https://www.dropbox.com/oauth2/authorize?client_id=a%20b%26c&code_challenge=" + challenge.toStdString() +
                "&code_challenge_method=S256&redirect_uri=http%3A%2F%2F127.0.0.1%3A43879%2Fcallback&response_type="
                "code&scope=files.metadata.read&state=s~&token_access_type=offline");
  const QString first = OAuthContract::random();
  EXPECT_EQ(first.size(), 43);
  EXPECT_NE(first, OAuthContract::random());
}

/// Ends the process, with 0 where it says that it cannot begin to sign in without random bytes.
[[noreturn]] void beginWithoutRandomBytes() {
  sock_filter rules[] = {BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
                         BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, __NR_getrandom, 0, 1),
                         BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EIO),
                         BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW)};
  const sock_fprog program{4, rules};
  if (::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 || ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) != 0)
    ::_exit(2);
  ::_exit(outcomeOf(&OAuthContract::random) == "Could not create a secure sign-in session."_L1 ? 0 : 1);
}

TEST(SignIn, DoesNotBeginWithoutRandomBytes) { EXPECT_EXIT(beginWithoutRandomBytes(), testing::ExitedWithCode(0), ""); }

TEST(SignIn, TakesOfAnAnswerOnlyWhatMakesAWholeSignIn) {
  const QString noOffline =
      u"The provider did not return offline access. Reconnect and allow the requested read access."_s;
  const auto answer = [](QJsonObject changed) {
    QJsonObject all{{u"access_token"_s, u"new"_s}, {u"refresh_token"_s, u"next"_s}, {u"expires_in"_s, 3600}};
    for (const QString& key : changed.keys()) all[key] = changed[key];
    return all;
  };
  const struct {
    const char* kind;
    QJsonObject answer;
    bool hasPrevious;
    QString outcome;
  } cases[] = {
      {"gmailLatest", answer({}), false, u"new next 3600"_s},
      {"gmailLatest", answer({{u"refresh_token"_s, QJsonValue()}}), true, u"new refresh 3600"_s},
      {"gmailLatest", answer({{u"refresh_token"_s, u""_s}}), false, noOffline},
      {"gmailLatest", answer({{u"access_token"_s, 5}}), true, u"The provider did not return an access token."_s},
      {"gmailLatest", answer({{u"expires_in"_s, 0}}), true, u"Invalid token expiry."_s},
      {"gmailLatest", answer({{u"expires_in"_s, u"3600"_s}}), true, u"Invalid token expiry."_s},
      {"gmailLatest", answer({{u"expires_in"_s, 1e300}}), true, u"Invalid token expiry."_s},
      {"socialTikTok", answer({{u"scope"_s, u"user.info.basic,user.info.stats"_s}}), false, u"new next 3600"_s},
      {"socialTikTok", answer({{u"scope"_s, u"user.info.statistics"_s}}), false,
       u"TikTok statistics access was not granted. Reconnect and allow user.info.stats to display follower counts."_s},
  };
  for (const auto& each : cases) {
    const auto previous = each.hasPrevious ? std::optional(stored(0)) : std::nullopt;
    EXPECT_EQ(outcomeOf([&] {
                const OAuthRecord record = OAuthContract::record(each.answer, signInOf(QString::fromLatin1(each.kind)),
                                                                 u"c"_s, {}, previous, kNow);
                EXPECT_EQ(OAuthRecord::decode(record.encoded()), record);
                return u"%1 %2 %3"_s.arg(record.accessToken, record.refreshToken).arg(kNow.secsTo(record.expires));
              }),
              each.outcome);
  }
  for (const char* text : {"", "ghp_pasted", "{}", R"({"type":"tarnwick.oauth.v2"})"})
    EXPECT_FALSE(OAuthRecord::decode(QString::fromLatin1(text))) << text;
}

TEST(SignIn, TakesTheCodeOfItsOwnBrowserVisitOnly) {
  const QString invalid = u"Invalid sign-in callback."_s;
  const struct {
    const char* target;
    QString outcome;
  } cases[] = {
      {"/callback?code=4%2Fa%2Bb&state=s", u"4/a+b"_s},
      {"/callback?code=x&state=t", u"This sign-in callback belongs to a different session."_s},
      {"/callback?code=x", u"This sign-in callback belongs to a different session."_s},
      {"/callback?error=access_denied&state=s", OAuthDeclined::sentence()},
      {"/callback?error=access_denied", u"This sign-in callback belongs to a different session."_s},
      {"/callback?code=&state=s", invalid},
      {"/callback", invalid},
      {"/callback/?code=x&state=s", invalid},
      {"/favicon.ico", invalid},
      {"@evil.example/callback?code=x&state=s", invalid},
      {"", invalid},
  };
  for (const auto& each : cases) {
    EXPECT_EQ(outcomeOf([&] { return OAuthContract::callback(QString::fromLatin1(each.target), u"s"_s); }),
              each.outcome)
        << each.target;
  }
}

/// Sign-ins in a keyring in memory, and a service that answers when the test says so.
class Tokens : public ::testing::Test {
 protected:
  struct Asked {
    QString result;
    bool isOver = false;
  };
  void keep(const QString& text) {
    secrets->items = {{{Keychain::kService, Keychain::account(widget), {}}, {}, text.toUtf8()}};
  }
  QString kept() const {
    return secrets->items.isEmpty() ? QString() : QString::fromUtf8(secrets->items.first().value);
  }
  std::shared_ptr<Asked> ask(std::stop_token stop = {}) {
    auto asked = std::make_shared<Asked>();
    [](OAuthTokens from, DockWidget which, std::shared_ptr<ServiceSession> over, std::stop_token end,
       std::shared_ptr<Asked> told) -> QCoro::Task<> {
      try {
        told->result = co_await from.token(which, signInOf(which.kind), over, end);
      } catch (const DomainError& error) {
        told->result = error.message();
      } catch (const ServiceHTTPError& error) {
        told->result = error.errorDescription();
      } catch (const Cancelled&) {
        told->result = u"cancelled"_s;
      }
      told->isOver = true;
    }(tokens, widget, session, stop, asked);
    return asked;
  }
  static QString resultOf(const std::shared_ptr<Asked>& asked) {
    EXPECT_TRUE(waitFor([&] { return asked->isOver; }));
    return asked->result;
  }

  QTemporaryDir folder;
  std::shared_ptr<test::FakeSecretStore> secrets = std::make_shared<test::FakeSecretStore>();
  std::shared_ptr<test::ScriptedSession> session = std::make_shared<test::ScriptedSession>();
  Keychain keychain{secrets, folder.path()};
  OAuthTokens tokens{keychain};
  DockWidget widget = providerFor(u"gmailLatest"_s)->configured({QUuid::createUuid(), u"gmailLatest"_s, {}, {}});
  const QJsonObject fresh{{u"access_token"_s, u"new"_s}, {u"expires_in"_s, 3600}};
};

TEST_F(Tokens, AreRefreshedInTimeAndOnceForAllWhoAsk) {
  EXPECT_EQ(resultOf(ask()), QString());
  keep(u"pasted"_s);
  EXPECT_EQ(resultOf(ask()), u"pasted"_s);
  keep(stored(61).encoded());
  EXPECT_EQ(resultOf(ask()), u"old"_s);
  OAuthRecord foreign = stored(61);
  foreign.provider = u"dropbox"_s;
  keep(foreign.encoded());
  EXPECT_EQ(resultOf(ask()), u"This saved sign-in belongs to a different provider."_s);
  EXPECT_TRUE(session->asked.isEmpty());

  keep(stored(60).encoded());
  std::stop_source stop;
  const auto first = ask(stop.get_token());
  const auto second = ask();
  ASSERT_TRUE(waitFor([&] { return session->asked.size() == 1; }));
  const ServiceCall& call = session->asked.first()->call;
  EXPECT_EQ(call.url, QUrl(u"https://oauth2.googleapis.com/token"_s));
  EXPECT_EQ(call.form, "client_id=client&client_secret=secret&grant_type=refresh_token&refresh_token=refresh");
  stop.request_stop();
  EXPECT_EQ(resultOf(first), u"cancelled"_s) << "who waits no longer ends no refresh of others";
  session->answer(fresh);
  EXPECT_EQ(resultOf(second), u"new"_s);
  EXPECT_EQ(session->asked.size(), 1);
  EXPECT_EQ(OAuthRecord::decode(kept())->refreshToken, u"refresh"_s);
  EXPECT_EQ(resultOf(ask()), u"new"_s);
}

TEST_F(Tokens, OfARefreshThatFailedStayAsTheyWere) {
  const QString before = stored(0).encoded();
  keep(before);
  const auto asked = ask();
  ASSERT_TRUE(waitFor([&] { return session->asked.size() == 1; }));
  session->fail(ServiceHTTPError(400));
  EXPECT_EQ(resultOf(asked), u"The service credential expired or was rejected. Reconnect in Connection Settings."_s);
  EXPECT_EQ(kept(), before);
  const auto again = ask();
  EXPECT_TRUE(waitFor([&] { return session->asked.size() == 2; })) << "the next one asks anew";
  session->answer(fresh);
  EXPECT_EQ(resultOf(again), u"new"_s);
}

TEST_F(Tokens, ThatCannotBeKeptAreUsedAndKeptLater) {
  keep(stored(0).encoded());
  const auto asked = ask();
  ASSERT_TRUE(waitFor([&] { return session->asked.size() == 1; }));
  secrets->failure = SecretFailure::Locked;
  session->answer(fresh);
  EXPECT_EQ(resultOf(asked), u"Keychain could not save the credential (-2)."_s);
  EXPECT_EQ(resultOf(ask()), u"new"_s);
  secrets->failure.reset();
  EXPECT_EQ(resultOf(ask()), u"new"_s);
  EXPECT_EQ(OAuthRecord::decode(kept())->accessToken, u"new"_s);
  EXPECT_EQ(session->asked.size(), 1);

  // The same of one that the user just signed in to.
  OAuthRecord another = stored(3600);
  another.accessToken = u"another"_s;
  secrets->failure = SecretFailure::Locked;
  EXPECT_EQ(test::endOf(tokens.keep(widget, another, u"Gmail"_s, {})), "Keychain could not save the credential (-2).");
  EXPECT_EQ(resultOf(ask()), u"another"_s);
  secrets->failure.reset();
  EXPECT_EQ(resultOf(ask()), u"another"_s);
  EXPECT_EQ(OAuthRecord::decode(kept()), another);
}

TEST_F(Tokens, ThatWereRemovedOrReplacedNeverComeBack) {
  const QString account = Keychain::account(widget);
  const auto save = [&](const QString& value) {
    return test::begin(keychain.save(value, account, u"Gmail"_s, SecretStore::Asking::Never));
  };
  const struct {
    const char* what;
    std::function<test::Told()> happens;
    QString result;
    QString kept;
  } cases[] = {
      {"removed", [&] { return save({}); }, {}, {}},
      {"its widget is gone", [&] { return test::begin(keychain.deleteAll({widget.id})); }, {}, {}},
      {"another in its place", [&] { return save(u"pasted"_s); }, u"pasted"_s, u"pasted"_s},
  };
  for (const auto& each : cases) {
    for (const bool isOnItsWay : {false, true}) {
      SCOPED_TRACE(each.what + std::string(isOnItsWay ? ", while the new one is written" : ", while it is refreshed"));
      EXPECT_EQ(test::endOf(keychain.save(stored(0).encoded(), account, u"Gmail"_s, SecretStore::Asking::Never)),
                "done");
      const qsizetype before = session->asked.size();
      const auto asked = ask();
      ASSERT_TRUE(waitFor([&] { return session->asked.size() == before + 1; }));
      test::Told told;
      if (isOnItsWay) {
        secrets->slow.emplace();
        const OneShotEvent slow = *secrets->slow;
        session->answer(fresh);
        secrets->slow.reset();
        told = each.happens();
        slow.happen();
      } else {
        told = each.happens();
        session->answer(fresh);
      }
      EXPECT_EQ(test::endOf(told), "done");
      EXPECT_EQ(resultOf(asked), each.result);
      EXPECT_EQ(resultOf(ask()), each.result);
      EXPECT_EQ(kept(), each.kept);
      EXPECT_EQ(session->asked.size(), before + 1);
    }
  }
}

}  // namespace
}  // namespace tarnwick
