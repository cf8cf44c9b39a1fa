#include <gtest/gtest.h>

#include <QProcess>

#include "support/FileTest.h"
#include "usage/ClaudeHooks.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

const QString kProgram = u"/opt/it's here/tarnwick"_s;
const QString kFolder = u"/home/me/Claude Activity"_s;

JSONNode parsed(std::string_view text) {
  auto node = parseJSON(text);
  EXPECT_TRUE(node) << text;
  return node ? *std::move(node) : JSONNode::object();
}

std::string merged(std::string_view settings, bool remove) {
  return prettyJSON(ClaudeHooks::merging(parsed(settings), kProgram, kFolder, remove));
}

std::string refusal(std::string_view settings) {
  return failureOf([settings] { merged(settings, false); });
}

TEST(ClaudeHooks, AreOneWordEachForTheShell) {
  QProcess shell;
  shell.start(u"/bin/sh"_s, {u"-c"_s, u"printf '%s\\n' "_s + ClaudeHooks::command(kProgram, kFolder)});
  ASSERT_TRUE(shell.waitForFinished());
  EXPECT_EQ(QString::fromUtf8(shell.readAllStandardOutput()).split(u'\n'),
            (QStringList{kProgram, u"--claude-hook"_s, kFolder, {}}));
}

TEST(ClaudeHooks, ComeAndGoAndLeaveAllElseAsItIsWritten) {
  const std::string_view others[] = {
      R"({})",
      R"({"z":1.0,"a":100000000000000000001,"e":"\u00e4\/","hooks":{"Stop":[{"matcher":"x","hooks":[{"type":"command","command":"say"}]}]}})",
      R"({"hooks":{"Notification":[{"hooks":[]}],"PreToolUse":[{"own":[1e400],"hooks":[{"command":7}]}]}})",
  };
  for (const std::string_view before : others) {
    const std::string plain = prettyJSON(parsed(before));
    const std::string once = merged(before, false);
    EXPECT_NE(once, plain);
    EXPECT_EQ(merged(once, false), once) << "a second time changes nothing";
    EXPECT_EQ(merged(once, true), plain);
    const JSONNode settings = parsed(once);
    const JSONNode* hooks = settings.find("hooks");
    ASSERT_TRUE(hooks);
    for (const char* event : {"PermissionRequest", "PostToolUse", "PostToolUseFailure", "PreToolUse", "SessionEnd",
                              "SessionStart", "Stop", "StopFailure", "UserPromptSubmit"}) {
      const JSONNode* groups = hooks->find(event);
      ASSERT_TRUE(groups) << event;
      EXPECT_EQ(prettyJSON(groups->items.back()),
                prettyJSON(parsed(R"({"matcher":"","hooks":[{"type":"command","command":)" +
                                  quotedJSON(ClaudeHooks::command(kProgram, kFolder).toStdString()) +
                                  R"(,"timeout":5,"async":true}]})")));
    }
  }
  EXPECT_NE(prettyJSON(parsed(others[1])).find("100000000000000000001"), std::string::npos);
  // A group that held another's hook beside ours keeps it.
  JSONNode shared = parsed(merged("{}", false));
  JSONNode hooks = *shared.find("hooks");
  JSONNode stop = *hooks.find("Stop");
  JSONNode list = *stop.items[0].find("hooks");
  list.items.push_back(parsed(R"({"type":"command","command":"say"})"));
  stop.items[0].set("hooks", list);
  hooks.set("Stop", stop);
  shared.set("hooks", hooks);
  EXPECT_EQ(prettyJSON(ClaudeHooks::merging(shared, kProgram, kFolder, true)),
            prettyJSON(parsed(R"({"hooks":{"Stop":[{"matcher":"","hooks":[{"type":"command","command":"say"}]}]}})")));
}

TEST(ClaudeHooks, RefuseWhatTheyDoNotUnderstand) {
  const std::pair<std::string_view, std::string_view> cases[] = {
      {R"({"hooks":[]})", "Claude settings has an unsupported hooks value; no settings were changed."},
      {R"({"hooks":{"Stop":{}}})", "A Claude hook group is incomplete."},
      {R"({"hooks":{"Stop":[1]}})", "A Claude hook group is incomplete."},
      {R"({"hooks":{"Stop":[{"matcher":""}]}})", "A Claude hook group is incomplete."},
      {R"({"hooks":{"Stop":[{"hooks":["say"]}]}})", "A Claude hook entry has an unsupported format."},
  };
  for (const auto& [settings, sentence] : cases) EXPECT_EQ(refusal(settings), sentence) << settings;
}

class ClaudeSettings : public FolderTest {
 protected:
  std::string install(bool remove = false, const QStringList& also = {}) {
    return failureOf(
        [&] { ClaudeHooks::install(at(u"settings.json"_s), QStringList{kProgram} + also, kFolder, remove); });
  }
  QStringList backups() const {
    return QDir(folder_.path()).entryList({u"settings.tarnwick-backup-*.json"_s}, QDir::Files | QDir::Hidden);
  }
};

TEST_F(ClaudeSettings, AreCopiedBeforeTheyAreChanged) {
  EXPECT_EQ(install(), "");
  EXPECT_EQ(content(u"settings.json"_s), merged("{}", false));
  EXPECT_EQ(backups(), QStringList()) << "there was nothing to copy";
  const QByteArray before = R"({"hooks": {}, "model": "x" })";
  put(u"settings.json"_s, before);
  setMode(u"settings.json"_s, 0640);
  // An executable that has moved is found by where it was.
  const QString moved = u"/old/place/tarnwick"_s;
  const std::string withOld = prettyJSON(ClaudeHooks::merging(parsed(before.toStdString()), moved, kFolder, false));
  put(u"settings.json"_s, QByteArray::fromStdString(withOld));
  EXPECT_EQ(install(false, {moved}), "");
  EXPECT_EQ(content(u"settings.json"_s), merged(before.toStdString(), false));
  EXPECT_EQ(mode(u"settings.json"_s), 0640U);
  ASSERT_EQ(backups().size(), 1);
  EXPECT_EQ(content(backups().first()), withOld);
  EXPECT_EQ(install(true), "");
  EXPECT_EQ(content(u"settings.json"_s), prettyJSON(parsed(R"({"model":"x"})")));
}

TEST_F(ClaudeSettings, AreNotTakenFromWhoChangesThemMeanwhile) {
  const QString changed = u"Claude settings changed while preparing the hooks. Try again."_s;
  const std::pair<std::optional<QByteArray>, std::optional<QByteArray>> cases[] = {
      {R"({"model":"x"})", R"({"model":"y"})"},
      {R"({"model":"x"})", std::nullopt},
      {std::nullopt, "{}"},
  };
  const auto bring = [this](const std::optional<QByteArray>& content) {
    QFile::remove(at(u"settings.json"_s));
    if (content) put(u"settings.json"_s, *content);
  };
  for (const auto& [before, after] : cases) {
    bring(before);
    const auto change = ClaudeHooks::prepared(at(u"settings.json"_s), {kProgram}, kFolder, false);
    bring(after);
    EXPECT_EQ(failureOf([&] { ClaudeHooks::write(change); }), changed.toStdString());
    EXPECT_EQ(entries(), after ? QStringList{u"settings.json"_s} : QStringList());
    if (after) {
      EXPECT_EQ(content(u"settings.json"_s), after->toStdString());
    }
  }
}

TEST_F(ClaudeSettings, StayAsTheyWereAfterAFailure) {
  const char* unreadable = "Claude settings could not be read; no settings were changed.";
  const std::pair<QByteArray, std::string> cases[] = {
      {"[]", unreadable},
      {"{\"a\":1,\"a\":2}", unreadable},
      {"{} // mine", unreadable},
      {"{\"a\":01}", unreadable},
      {"{\"a\":\"\xFF\"}", unreadable},
      {"{\"a\":" + QByteArray(512, '[') + QByteArray(512, ']') + "}", unreadable},
      {"{\"a\":\"" + QByteArray(8 * 1024 * 1024, 'x') + "\"}", unreadable},
      {R"({"hooks":7})", "Claude settings has an unsupported hooks value; no settings were changed."},
  };
  for (const auto& [before, sentence] : cases) {
    put(u"settings.json"_s, before);
    EXPECT_EQ(install(), sentence) << before.left(60).constData();
    EXPECT_EQ(content(u"settings.json"_s), before.toStdString());
    EXPECT_EQ(entries(), QStringList{u"settings.json"_s});
  }
  ASSERT_TRUE(QFile::rename(at(u"settings.json"_s), at(u"real.json"_s)));
  ASSERT_TRUE(QFile::link(at(u"real.json"_s), at(u"settings.json"_s)));
  EXPECT_EQ(install(), "Choose the real Claude settings file; its current path is a symbolic link.");
  ASSERT_TRUE(QFile::remove(at(u"settings.json"_s)));
  put(u"settings.json"_s, "{}");
  {
    const AsFullDisk full(8);
    EXPECT_NE(install(), "");
  }
  EXPECT_EQ(content(u"settings.json"_s), "{}");
  setMode(u"."_s, 0500);
  {
    const AsPlainUser user(folder_.path());
    EXPECT_NE(install(), "");
  }
  setMode(u"."_s, 0700);
  EXPECT_EQ(content(u"settings.json"_s), "{}");
  EXPECT_EQ(entries(), (QStringList{u"real.json"_s, u"settings.json"_s}));
}

}  // namespace
}  // namespace tarnwick
