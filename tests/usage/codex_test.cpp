// The exchange with Codex, played by a script that is one step away from the process that answers, as installed ones
// are.

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>

#include <QJsonDocument>
#include <QTimeZone>
#include <thread>

#include "base/Cancelled.h"
#include "platform/linux/ReapedChild.h"
#include "support/FileTest.h"
#include "usage/CodexUsage.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

const QDateTime kCodexNow(QDate(2026, 11, 28), QTime(12, 0), QTimeZone::utc());

QJsonObject json(const QByteArray& text) { return QJsonDocument::fromJson(text).object(); }

class CodexExchange : public FolderTest {
 protected:
  /// The script starts what answers as its child and ignores the wish to end; both note their numbers.
  void SetUp() override {
    put(u"codex"_s,
        "#!/bin/sh\ntrap '' TERM\necho $$ >> " + pids() + "\n/bin/sh " + encoded(u"server"_s) + " \"$@\"\n");
    setMode(u"codex"_s, 0755);
  }
  QByteArray pids() const { return encoded(u"pids"_s); }
  void answer(const QByteArray& body) {
    put(u"pids"_s, "");
    put(u"server"_s, "trap '' TERM\necho $$ >> " + pids() + "\n" + body + "\n");
  }
  std::string failure(double timeout = 20, std::stop_token stop = {}) {
    return failureOf([&] { result = CodexRPCRead::run(at(u"codex"_s), startReapedChild, timeout, stop); });
  }
  /// Whether none of the processes is left.
  bool isOver() {
    const QByteArrayList numbers = QByteArray::fromStdString(content(u"pids"_s)).split('\n');
    return std::ranges::all_of(numbers, [](const QByteArray& number) {
      return number.isEmpty() || ::kill(number.toInt(), 0) != 0 || isZombie(number);
    });
  }
  /// Ended, and only not waited for by whoever took it over.
  static bool isZombie(const QByteArray& number) {
    QFile status(u"/proc/"_s + QString::fromLatin1(number) + u"/stat"_s);
    return !status.open(QIODevice::ReadOnly) || status.readAll().contains(") Z ");
  }

  QJsonObject result;
};

const QByteArray kGreet = "read first; echo '{\"id\":1,\"result\":{}}'; read second; read third; ";

TEST_F(CodexExchange, AsksStepByStepAndLeavesNobodyBehind) {
  answer("read first; echo \"$first\" > " + encoded(u"said"_s) + "\n" + "echo \"$@\" >> " + encoded(u"said"_s) + "\n" +
         "echo 'no json'; echo '{\"method\":\"note\"}'; echo '{\"id\":2,\"result\":{\"early\":1}}'\n"
         "echo '{\"id\":1,\"result\":{}}'; read second; read third; echo \"$second\" \"$third\" >> " +
         encoded(u"said"_s) + "\n" +
         "head -c 300000 /dev/zero >&2; echo '{\"id\":9,\"error\":{}}'; printf '{\"id\":2,\"result\":{\"rateLimits\"'; "
         "echo ':{}}}'; sleep 60");
  EXPECT_EQ(failure(), "");
  EXPECT_TRUE(result.contains(u"rateLimits"_s));
  EXPECT_TRUE(isOver());
  const QByteArrayList said = QByteArray::fromStdString(content(u"said"_s)).split('\n');
  EXPECT_EQ(
      json(said.value(0)),
      json(R"({"id":1,"method":"initialize","params":{"clientInfo":{"name":"tarnwick","title":"Tarnwick","version":")" +
           QByteArray(TARNWICK_VERSION) + "\"}}}"));
  EXPECT_EQ(said.value(1), "app-server --listen stdio://");
  EXPECT_EQ(said.value(2), R"({"method":"initialized"} {"id":2,"method":"account/rateLimits/read"})");
}

TEST_F(CodexExchange, EndsWithItsSentenceAndLeavesNobodyBehind) {
  const struct {
    QByteArray body;
    double timeout;
    std::string sentence;
  } cases[] = {
      {"exit 0", 20, "The Codex usage connection was interrupted."},
      {"setsid sleep 60 & exit 0", 20, "The Codex usage connection was interrupted."},
      {"sleep 60", 1, "Codex did not return usage within 1 seconds. Check your CLI installation and sign-in."},
      {kGreet + "while :; do echo '{\"method\":\"note\"}'; done", 1,
       "Codex did not return usage within 1 seconds. Check your CLI installation and sign-in."},
      {kGreet + "head -c 2000001 /dev/zero; sleep 60", 20, "The Codex response exceeded the size limit."},
      {kGreet + "echo '{\"id\":2,\"error\":{\"code\":1}}'; sleep 60", 20,
       "Codex could not read usage. Sign in to Codex with your ChatGPT account, then reconnect."},
  };
  for (const auto& each : cases) {
    answer(each.body);
    const std::string sentence = failure(each.timeout);
    // A flood may pass the size before the time.
    if (sentence != "The Codex response exceeded the size limit.") {
      EXPECT_EQ(sentence, each.sentence) << each.body.constData();
    }
    EXPECT_TRUE(isOver()) << each.body.constData();
  }
  setMode(u"codex"_s, 0644);
  EXPECT_EQ(failure(), "Select the installed Codex executable in Connection Settings.");
}

TEST_F(CodexExchange, IsCancelledWhileItWaits) {
  answer("echo up > " + encoded(u"up"_s) + "\nsleep 60");
  std::stop_source stop;
  std::jthread other([&] {
    while (!QFile::exists(at(u"up"_s))) std::this_thread::yield();
    stop.request_stop();
  });
  EXPECT_THROW(failure(20, stop.get_token()), Cancelled);
  EXPECT_TRUE(isOver());
}

TEST_F(CodexExchange, EndsWithUsHoweverWeEnd) {
  answer("echo up > " + encoded(u"up"_s) + "\nsleep 60");
  const pid_t us = ::fork();
  if (us == 0) {
    failure();
    ::_exit(0);
  }
  while (!QFile::exists(at(u"up"_s))) std::this_thread::yield();
  ::kill(us, SIGKILL);
  ::waitpid(us, nullptr, 0);
  while (!isOver()) std::this_thread::yield();
}

TEST_F(CodexExchange, IsLookedForWhereItUsuallyIs) {
  const QByteArray home = qgetenv("HOME");
  qputenv("HOME", encoded(u"home"_s));
  put(u"home/.npmrc"_s, "registry=x\nprefix = ~/packages\n");
  const QString places[] = {
      u"home/.nvm/versions/node/v9.11.2/bin"_s,
      u"home/.nvm/versions/node/v22.3.0/bin"_s,
      u"home/.asdf/shims"_s,
      u"home/.volta/bin"_s,
      u"home/packages/bin"_s,
      u"home/.local/bin"_s,
  };
  for (const QString& place : places) {
    put(place + u"/codex"_s, "");
    EXPECT_NE(CodexRPCRead::defaultExecutable(), at(place + u"/codex"_s)) << "it may not be run";
    setMode(place + u"/codex"_s, 0755);
    EXPECT_EQ(CodexRPCRead::defaultExecutable(), at(place + u"/codex"_s));
  }
  qputenv("HOME", home);
  // What lies beside it is found by it.
  put(u"interpreter"_s, "#!/bin/sh\nexec /bin/sh \"$@\"\n");
  setMode(u"interpreter"_s, 0755);
  put(u"codex"_s, "#!/usr/bin/env interpreter\n. " + encoded(u"server"_s) + "\n");
  answer(kGreet + "echo '{\"id\":2,\"result\":{\"rateLimits\":{}}}'");
  EXPECT_EQ(failure(), "");
}

TEST(CodexUsage, IsShownByItsWindows) {
  const struct {
    QByteArray result;
    QString shown;  ///< Headline, subtitle, then each window; or the sentence.
  } cases[] = {
      {R"({"rateLimits":{"limitId":"codex","primary":{"usedPercent":42.4,"windowDurationMins":300,"resetsAt":1795900000},
           "secondary":{"usedPercent":130,"windowDurationMins":10080,"resetsAt":null}},
           "rateLimitsByLimitId":{"codex":{"limitId":"codex","primary":{"usedPercent":1}},
           "mini":{"limitName":"Mini","primary":{"usedPercent":0,"resetsAt":"2026-11-28T15:00:00Z"}}}})",
       u"58%|Remaining · 5h|5h=58% left|168h=0% left|Mini · Usage=100% left"_s},
      {R"({"rateLimits":{"primary":{"usedPercent":-1}}})", u"Codex returned a negative usage percentage."_s},
      {R"({"rateLimits":{"primary":{"usedPercent":"5"}},"rateLimitsByLimitId":null})",
       u"Usage windows are unavailable for this Codex account."_s},
      {R"({})", u"Usage windows are unavailable for this Codex account."_s},
  };
  for (const auto& each : cases) {
    QStringList shown;
    const std::string failed = failureOf([&] {
      const RemoteValue value = CodexUsageData::value(json(each.result), kCodexNow);
      shown << value.value.value_or(QString()) << value.subtitle;
      for (const ServiceMetric& metric : value.metrics) shown << metric.label + u'=' + metric.value;
      EXPECT_TRUE(value.detail.contains(u" · reset unavailable"_s)) << qPrintable(value.detail);
    });
    EXPECT_EQ(failed.empty() ? shown.join(u'|') : QString::fromStdString(failed), each.shown);
  }
}

}  // namespace
}  // namespace tarnwick
