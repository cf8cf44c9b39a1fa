#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "platform/linux/BrowserProcess.h"
#include "support/TestScheduler.h"
#include "support/Wait.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

QString helper;  ///< What stands for the browser.

class BrowserProcesses : public ::testing::Test {
 protected:
  /// The browser is a script from now on. `$2` is the address, `$3` the folder.
  void setScript(const QByteArray& script) {
    helper = folder_.filePath(u"helper"_s);
    QFile file(helper);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("#!/bin/sh\n" + script);
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  }
  QString path(const QString& name) const { return folder_.filePath(name); }
  std::unique_ptr<BrowserReading> begin() {
    outcome_.reset();
    return browser_.read(QUrl(u"https://service.example"_s),
                         [this](BrowserOutcome outcome) { outcome_ = std::move(outcome); });
  }
  bool until(const std::function<bool()>& holds) {
    return waitFor([&] {
      clock_.advance(0);
      return holds();
    });
  }
  /// "text" or "failure 2".
  QString told() const {
    if (!outcome_) return u"nothing"_s;
    if (const auto* failure = std::get_if<BrowserFailure>(&*outcome_))
      return u"failure %1"_s.arg(static_cast<int>(*failure));
    const QByteArray text = std::get<QByteArray>(*outcome_);
    return text.size() < 100 ? QString::fromUtf8(text) : u"%1 bytes"_s.arg(text.size());
  }
  static QString failure(BrowserFailure failure) { return u"failure %1"_s.arg(static_cast<int>(failure)); }

  QTemporaryDir folder_;
  test::TestScheduler clock_;
  BrowserProcess browser_{{.folder = folder_.filePath(u"session"_s),
                           .title = u"Sign in"_s,
                           .environment = QProcessEnvironment::systemEnvironment(),
                           .find = [] { return helper; }},
                          clock_};
  std::optional<BrowserOutcome> outcome_;
};

TEST_F(BrowserProcesses, TellWhatTheHelperSays) {
  const struct {
    QByteArray script;
    QString told;
  } cases[] = {
      {"printf '%s' \"$1 $2\"", u"read https://service.example"_s},
      {"head -c 1200000 /dev/zero", u"1200000 bytes"_s},
      {"head -c 1200001 /dev/zero; exec cat", failure(BrowserFailure::Unanswered)},
      {"exit 3", failure(BrowserFailure::Unloaded)},
      {"exit 4", failure(BrowserFailure::Elsewhere)},
      {"exit 6", failure(BrowserFailure::Unsafe)},
      {"printf half; exit 5", failure(BrowserFailure::Unanswered)},
      {"printf half; kill -9 $$", failure(BrowserFailure::Unanswered)},
  };
  for (const auto& [script, expected] : cases) {
    setScript(script);
    const auto reading = begin();
    EXPECT_FALSE(outcome_);
    EXPECT_TRUE(until([&] { return outcome_.has_value(); }));
    EXPECT_EQ(told().toStdString(), expected.toStdString()) << script.toStdString();
  }
  helper.clear();
  const auto reading = begin();
  EXPECT_TRUE(until([&] { return outcome_.has_value(); }));
  EXPECT_EQ(told(), failure(BrowserFailure::Missing));
}

TEST_F(BrowserProcesses, AreGivenUpAfterTwentySecondsAndEndWithTheirLine) {
  setScript("touch \"$3.begun\"; cat > /dev/null; touch \"$3.ended\"");
  const auto reading = begin();
  EXPECT_TRUE(until([&] { return QFile::exists(path(u"session.begun"_s)); }));
  clock_.advance(19.5);
  EXPECT_EQ(told(), u"nothing"_s);
  clock_.advance(1);
  EXPECT_EQ(told(), failure(BrowserFailure::Unloaded));
  EXPECT_TRUE(until([&] { return QFile::exists(path(u"session.ended"_s)); }));
}

TEST_F(BrowserProcesses, SignInAloneAndForgetTheSession) {
  setScript("mkdir \"$3\" || exit 1; touch \"$3/kept\"; cat > /dev/null");
  browser_.showSignIn(QUrl(u"https://service.example"_s));
  EXPECT_TRUE(until([&] { return QFile::exists(path(u"session/kept"_s)); }));
  const auto reading = begin();
  EXPECT_TRUE(until([&] { return outcome_.has_value(); }));
  EXPECT_EQ(told(), failure(BrowserFailure::Elsewhere));
  EXPECT_TRUE(browser_.forget());
  EXPECT_FALSE(QFile::exists(path(u"session"_s)));
  EXPECT_TRUE(until([&] { return QDir(folder_.path()).entryList({u"session*"_s}).isEmpty(); }));
  EXPECT_TRUE(browser_.forget());
}

}  // namespace
}  // namespace tarnwick
