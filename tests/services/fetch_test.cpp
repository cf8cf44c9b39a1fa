#include <gtest/gtest.h>

#include <QJsonArray>
#include <QUrlQuery>
#include <stdexcept>

#include "Harbour.h"
#include "base/DomainError.h"
#include "services/RemoteFetch.h"
#include "services/ServiceHTTPError.h"
#include "support/ScriptedSession.h"
#include "support/TestScheduler.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

/// A widget of the harbour whose value is fetched, and what its owner received.
struct Widget {
  explicit Widget(const QString& quay = u"north"_s)
      : widget{QUuid::createUuid(), u"harbourBerths"_s, {}, {{u"quay"_s, quay}}} {}
  ~Widget() {
    fetch.reset();
    // Every coroutine that was begun has ended: none holds the session any more.
    EXPECT_EQ(session.use_count(), 1);
  }

  void refresh() {
    fetch = std::make_unique<RemoteFetch>(
        time,
        [provider = provider, widget = widget, session = session](std::stop_token stop) {
          return fetchFrom(provider, widget, session, stop);
        },
        [this](const RemoteValue& value) {
          values << value;
          if (onEnd) onEnd();
        },
        [this](const FetchFailure& failure) {
          failures << failure;
          if (onEnd) onEnd();
        });
  }
  /// Until so many questions were asked: the credential, then the pages.
  void refreshUntilAsked(int questions) {
    refresh();
    time.advance(0);
    for (int number = 1; number < questions; ++number) session->answer(reply(number));
    ASSERT_EQ(session->asked.size(), questions);
  }
  static QJsonValue reply(int question) {
    if (question == 1) return u"key"_s;
    const QString name = QString::number(question);
    const QJsonArray berths{QJsonObject{{u"id"_s, name}, {u"ship"_s, "Ship "_L1 + name}}};
    return QJsonObject{{u"berths"_s, berths}, {u"next"_s, "after-"_L1 + name}};
  }
  bool receivedNothing() const { return values.isEmpty() && failures.isEmpty(); }

  test::TestScheduler time;
  Provider provider = test::harbour();
  std::shared_ptr<test::ScriptedSession> session = std::make_shared<test::ScriptedSession>();
  DockWidget widget;
  QList<RemoteValue> values;
  QList<FetchFailure> failures;
  std::function<void()> onEnd;
  std::unique_ptr<RemoteFetch> fetch;
};

TEST(RemoteFetch, AsksOnePageAfterTheOther) {
  Widget berths;
  berths.refresh();
  EXPECT_TRUE(berths.session->asked.isEmpty()) << "it began inside the call";
  berths.time.advance(0);
  berths.session->answer(u"key"_s);

  const QString address = u"https://api.harbour.example/berths?limit=2&quay=north"_s;
  ASSERT_EQ(berths.session->asked.size(), 2);
  EXPECT_EQ(berths.session->asked.last()->call.url.toString(), address);
  EXPECT_EQ(berths.session->asked.last()->call.token, u"key"_s);
  berths.session->answer(Widget::reply(2));
  ASSERT_EQ(berths.session->asked.size(), 3);
  EXPECT_EQ(berths.session->asked.last()->call.url.toString(), address + "&after=after-2"_L1);
  EXPECT_TRUE(berths.receivedNothing());
  berths.session->answer(QJsonObject{{u"berths"_s, QJsonArray{QJsonObject{{u"id"_s, u"9"_s}}}}});

  RemoteValue expected;
  expected.value = u"2"_s;
  expected.subtitle = u"Berths taken"_s;
  expected.updated = berths.session->time;
  expected.rows = {{u"2"_s, u"Ship 2"_s, {}, {}}, {u"9"_s, {}, {}, {}}};
  ASSERT_EQ(berths.values.size(), 1);
  EXPECT_EQ(berths.values.first(), expected);
  EXPECT_TRUE(berths.failures.isEmpty());
}

TEST(RemoteFetch, StopsAtTheLastPageThatIsAllowed) {
  Widget berths;
  berths.refreshUntilAsked(4);
  berths.session->answer(Widget::reply(4));
  ASSERT_EQ(berths.values.size(), 1);
  EXPECT_EQ(berths.values.first().subtitle, u"Berths taken · partial"_s);
  EXPECT_EQ(berths.session->asked.size(), 4);
}

TEST(RemoteFetch, TellsAFailureInASentenceWhereverItArises) {
  const QDateTime later(QDate(2026, 11, 24), QTime(12, 0), QTimeZone::utc());
  const auto domain = [](test::ScriptedSession& session) { session.fail(DomainError::invalid(u"No."_s)); };
  const auto limit = [&](test::ScriptedSession& session) { session.fail(ServiceHTTPError(429, later)); };
  const auto other = [](test::ScriptedSession& session) { session.fail(std::runtime_error("inside")); };
  const auto faulty = [](test::ScriptedSession& session) {
    session.answer(QJsonObject{{u"berths"_s, QJsonArray{QJsonObject{}}}});
  };
  const struct {
    const char* name;
    int question;
    std::function<void(test::ScriptedSession&)> fail;
    QString sentence;
    int status;
  } cases[] = {
      {"the keyring is locked", 1, domain, u"No."_s, 0},
      {"the first page", 2, domain, u"No."_s, 0},
      {"the last page", 4, domain, u"No."_s, 0},
      {"a pause", 2, limit, ServiceHTTPError(429, later).errorDescription(), 429},
      {"a status in a later page", 3, limit, ServiceHTTPError(429, later).errorDescription(), 429},
      {"a fault of ours", 3, other, u"The service returned an invalid response."_s, 0},
      {"an answer that the provider refuses", 3, faulty, u"The harbour returned a berth without a name."_s, 0},
      {"no credential", 1, [](test::ScriptedSession& session) { session.answer(u""_s); },
       u"Add your service credential in Connection Settings."_s, 0},
  };
  for (const auto& [name, question, fail, sentence, status] : cases) {
    SCOPED_TRACE(name);
    Widget berths;
    berths.refreshUntilAsked(question);
    fail(*berths.session);
    EXPECT_TRUE(berths.values.isEmpty());
    ASSERT_EQ(berths.failures.size(), 1);
    EXPECT_EQ(berths.failures.first().sentence, sentence);
    EXPECT_EQ(berths.failures.first().status, status);
    EXPECT_EQ(berths.failures.first().retryAt, status == 429 ? std::optional(later) : std::nullopt);
    EXPECT_EQ(berths.session->asked.size(), question) << "it went on asking";
  }
}

TEST(RemoteFetch, AsksNothingForOptionsThatTheProviderRefuses) {
  Widget berths(u""_s);
  berths.refresh();
  berths.time.advance(0);
  ASSERT_EQ(berths.failures.size(), 1);
  EXPECT_EQ(berths.failures.first().sentence, u"Enter a quay."_s);
  EXPECT_TRUE(berths.session->asked.isEmpty());
}

TEST(RemoteFetch, DoesWithoutACredentialWhereNoneIsNeeded) {
  Widget berths(u"public"_s);
  berths.refreshUntilAsked(1);
  berths.session->answer(u""_s);
  ASSERT_EQ(berths.session->asked.size(), 2);
  EXPECT_TRUE(berths.session->asked.last()->call.token.isEmpty());
}

TEST(RemoteFetch, ALockedKeyringIsTheReasonOnlyWhereTheServiceWantsACredential) {
  const QString locked = u"Keychain access unavailable (-2)."_s;
  for (const auto& [status, isReason] : {std::pair(401, true), std::pair(403, true), std::pair(404, true),
                                         std::pair(429, false), std::pair(500, false)}) {
    Widget berths(u"public"_s);
    berths.provider.signIn.reset();
    berths.session->unread = locked;
    berths.refreshUntilAsked(1);
    EXPECT_TRUE(berths.session->asked.last()->call.token.isEmpty());
    berths.session->fail(ServiceHTTPError(status));
    ASSERT_EQ(berths.failures.size(), 1);
    EXPECT_EQ(berths.failures.first().sentence == locked, isReason) << status;
  }
}

TEST(RemoteFetch, SaysNothingOnceItsOwnerIsGone) {
  for (const bool isDeaf : {false, true}) {
    for (int question = 0; question <= 4; ++question) {
      SCOPED_TRACE(testing::Message() << "after question " << question << (isDeaf ? ", answered late" : ""));
      Widget berths;
      berths.session->isDeaf = isDeaf;
      if (question == 0) {
        berths.refresh();
      } else {
        berths.refreshUntilAsked(question);
      }
      berths.fetch.reset();
      if (isDeaf && question > 0) {
        EXPECT_GT(berths.session.use_count(), 1) << "it did not wait for the answer";
        berths.session->answer(Widget::reply(question));
      }
      berths.time.advance(60);
      EXPECT_TRUE(berths.receivedNothing());
      EXPECT_EQ(berths.session->asked.size(), question) << "it went on asking";
      EXPECT_EQ(berths.session.use_count(), 1) << "its coroutines have not ended";
    }
  }
}

TEST(RemoteFetch, LetsALaterOneTakeItsPlace) {
  Widget berths;
  berths.session->isDeaf = true;
  berths.refreshUntilAsked(2);
  const auto superseded = berths.session->asked.last();
  berths.refresh();
  berths.time.advance(0);
  berths.session->answer(u"key"_s);
  berths.session->answer(QJsonObject());
  superseded->answer = Widget::reply(2);
  superseded->end();
  ASSERT_EQ(berths.values.size(), 1);
  EXPECT_EQ(berths.values.first().value, u"0"_s);
}

TEST(RemoteFetch, MayBeDestroyedByItsFinishedHandler) {
  for (const bool succeeds : {true, false}) {
    Widget berths(succeeds ? u"north"_s : u""_s);
    // A refusal of the options comes within the turn in which the fetch begins.
    berths.onEnd = [&berths] { berths.fetch.reset(); };
    if (succeeds) {
      berths.refreshUntilAsked(2);
      berths.session->answer(QJsonObject());
    } else {
      berths.refresh();
      berths.time.advance(0);
    }
    EXPECT_EQ(berths.values.size() + berths.failures.size(), 1);
    EXPECT_FALSE(berths.fetch);
  }
}

TEST(RemoteFetch, EndsWithoutAWordWhenItCancelsItself) {
  Widget berths;
  berths.refreshUntilAsked(2);
  berths.session->fail(Cancelled());
  EXPECT_TRUE(berths.receivedNothing());
}

}  // namespace
}  // namespace tarnwick
