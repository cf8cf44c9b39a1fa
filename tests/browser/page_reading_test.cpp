#include <gtest/gtest.h>

#include <QFileInfo>
#include <QTemporaryDir>
#include <QWebEngineCertificateError>

#include "browser/PageReading.h"
#include "browser/Sandbox.h"
#include "platform/linux/BrowserProcess.h"
#include "platform_net/TestServer.h"
#include "support/Wait.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;
using test::TestCertificates;
using test::TestReply;
using test::TestRequest;
using test::TestServer;

/// What the service says to its page and to its script.
struct Site {
  TestReply home;
  TestReply usage;
};

/// A page that would deceive a script of its own world.
const QByteArray kPage =
    "<html><script>window.fetch = () => Promise.reject(); JSON.stringify = () => 'x';"
    "Object.defineProperty(window, 'tarnwickAnswer', {value: {isOver: true, text: 'x'}});"
    "window.open('/pop'); location.href = 'mailto:a@b.example';</script></html>";

class PageReadings : public ::testing::Test {
 protected:
  /// "200 {…}", or the exit.
  QString read(const Site& site, QList<TestRequest>* received = nullptr) {
    TestServer server(TestCertificates::all().good, [&site](const TestRequest& request) {
      return request.path == "/rest/rate-limit/all" ? site.usage : site.home;
    });
    const QUrl home(u"https://127.0.0.1:%1/"_s.arg(server.port()));
    QString told;
    const auto profile = makeServiceProfile(folder_.filePath(u"session"_s));
    PageReading reading(home, *profile, [&told](BrowserExit exit, const QString& text) {
      told = exit == BrowserExit::Answered ? text : u"exit %1"_s.arg(static_cast<int>(exit));
    });
    QObject::connect(&reading.page(), &QWebEnginePage::certificateError,
                     [](QWebEngineCertificateError error) { error.acceptCertificate(); });
    reading.start();
    EXPECT_TRUE(waitFor([&] { return !told.isEmpty(); }));
    if (received) *received = server.received();
    return told;
  }
  static QString exit(BrowserExit exit) { return u"exit %1"_s.arg(static_cast<int>(exit)); }

  QTemporaryDir folder_;
};

TEST_F(PageReadings, AskInTheSessionOfThePageAndInAWorldOfTheirOwn) {
  const TestReply home = TestReply::of(200, kPage, "Content-Type: text/html\r\nSet-Cookie: s=1; Secure\r\n");
  QList<TestRequest> received;
  EXPECT_EQ(read({home, TestReply::of(200, R"({"remaining_pro":3})", "Content-Type: application/json\r\n")}, &received)
                .toStdString(),
            R"({"status":200,"body":"{\"remaining_pro\":3}"})");
  QByteArray usage;
  for (const TestRequest& request : received) {
    EXPECT_NE(request.path, "/pop");
    if (request.path == "/rest/rate-limit/all") usage = request.head;
  }
  EXPECT_TRUE(usage.contains("\r\naccept: application/json\r\n")) << usage.toStdString();
  EXPECT_TRUE(usage.contains("\r\ncookie: s=1")) << usage.toStdString();
  const QFileInfo kept(folder_.filePath(u"session"_s));
  EXPECT_FALSE(kept.permission(QFile::ReadGroup) || kept.permission(QFile::ReadOther));
}

TEST_F(PageReadings, EndWhereThereIsNothingToRead) {
  const TestReply home = TestReply::of(200, "<html></html>", "Content-Type: text/html\r\n");
  const struct {
    Site site;
    QString told;
  } cases[] = {
      {{home, TestReply::of(401, "{}")}, uR"({"status":401,"body":"{}"})"_s},
      {{home, TestReply::of(200, QByteArray(1'048'577, 'x'))}, exit(BrowserExit::Unanswered)},
      {{home, TestReply::of(302, {}, "Location: /elsewhere\r\n")}, exit(BrowserExit::Unanswered)},
      {{home, {"", TestReply::After::Close}}, exit(BrowserExit::Unanswered)},
      {{TestReply::of(302, {}, "Location: https://localhost/\r\n"), home}, exit(BrowserExit::Elsewhere)},
      {{TestReply::of(302, {}, "Location: http://127.0.0.1/\r\n"), home}, exit(BrowserExit::Elsewhere)},
      {{{"", TestReply::After::Close}, home}, exit(BrowserExit::Unloaded)},
  };
  for (const auto& [site, told] : cases) EXPECT_EQ(read(site).toStdString(), told.toStdString());
}

TEST_F(PageReadings, OfTheProgramTrustWhatTheSystemTrusts) {
  TestServer server(TestCertificates::all().good, [](const TestRequest&) { return TestReply::of(200, kPage); });
  SystemScheduler scheduler;
  auto environment = QProcessEnvironment::systemEnvironment();
  environment.insert(u"QTWEBENGINE_CHROMIUM_FLAGS"_s, u"--ignore-certificate-errors"_s);
  BrowserProcess browser({.folder = folder_.filePath(u"session"_s), .title = {}, .environment = environment},
                         scheduler);
  std::optional<BrowserOutcome> outcome;
  const auto reading = browser.read(QUrl(u"https://127.0.0.1:%1/"_s.arg(server.port())),
                                    [&outcome](BrowserOutcome found) { outcome = std::move(found); });
  EXPECT_TRUE(waitFor([&] { return outcome.has_value(); }));
  ASSERT_TRUE(outcome && std::holds_alternative<BrowserFailure>(*outcome));
  EXPECT_EQ(std::get<BrowserFailure>(*outcome),
            isSandboxAvailable() ? BrowserFailure::Unloaded : BrowserFailure::Unsafe);
  EXPECT_TRUE(server.received().isEmpty());
}

}  // namespace
}  // namespace tarnwick
