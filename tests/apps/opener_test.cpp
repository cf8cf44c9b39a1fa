
#include "apps/AppOpener.h"
#include "apps/DefaultApplication.h"
#include "apps_fixture.h"
#include "support/TestScheduler.h"

namespace tarnwick::test {
namespace {

class OpenerTest : public AppsTest {
 protected:
  void SetUp() override {
    program(u"note"_s, "#!/bin/sh\nprintf '%s\\n' \"$0\" \"$@\" > %1.part\nmv %1.part %1\n"_L1.arg(root(u"out"_s)));
    QFile::link(root(u"bin/note"_s), root(u"bin/files"_s));
    write(system(u"editor.desktop"_s), application(u"Editor"_s, u"note %F"_s, u"MimeType=text/plain;\n"_s));
    write(system(u"hidden.desktop"_s),
          application(u"Helper"_s, u"note --helper %u"_s,
                      u"NoDisplay=true\nMimeType=text/markdown;x-scheme-handler/lab;\n"_s));
    write(system(u"files.desktop"_s),
          application(u"Files"_s, u"files %F"_s, u"MimeType=inode/directory;\nCategories=FileManager;\n"_s));
    write(environment.configHome + u"/mimeapps.list"_s,
          u"[Default Applications]\ntext/x-python=gone.desktop;hidden.desktop;\n[Removed Associations]\n"
          "text/plain=hidden.desktop;\n"_s);
    installed = std::make_unique<InstalledApps>(environment, scheduler);
    launch = std::make_unique<AppLaunch>(environment, LaunchEnvironment::from(variables({{"PATH", "/usr/bin:/bin"}})),
                                         activation);
    opener = std::make_unique<AppOpener>(*installed, *launch, scheduler);
    QObject::connect(opener.get(), &AppOpener::started, [this](const QString& path) { started << path; });
    QObject::connect(opener.get(), &AppOpener::failed, [this](const QString& message) { failures << message; });
  }

  /// What the program was started with.
  QStringList ran() {
    QFile file(root(u"out"_s));
    EXPECT_TRUE(waitFor([&] { return file.exists(); }));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    const QStringList words = QString::fromUtf8(file.readAll()).trimmed().split(u'\n');
    file.remove();
    return words.mid(1);
  }

  TestScheduler scheduler;
  std::unique_ptr<InstalledApps> installed;
  NoActivation activation;
  std::unique_ptr<AppLaunch> launch;
  std::unique_ptr<AppOpener> opener;
  QStringList started, failures;
};

TEST_F(OpenerTest, ChoosesByTheFilesOwnKindFirst) {
  write(root(u"script.py"_s), u"print()\n"_s);
  write(root(u"page.md"_s), u"# Title\n"_s);
  write(root(u"data"_s) + u"/plain.csv"_s, u"1,2\n"_s);
  installed->load();
  ASSERT_TRUE(waitFor([&] { return installed->loaded(); }));
  const auto index = installed->index();
  const auto chosen = [&](const QUrl& url) {
    const DesktopEntry* entry = DefaultApplication::forTypes(DefaultApplication::typesOf(url), *index);
    return entry ? entry->id : QString();
  };
  EXPECT_EQ(chosen(QUrl::fromLocalFile(root(u"script.py"_s))), u"hidden"_s) << "the choice, though no list shows it";
  EXPECT_EQ(chosen(QUrl::fromLocalFile(root(u"page.md"_s))), u"hidden"_s);
  EXPECT_EQ(chosen(QUrl::fromLocalFile(root(u"data/plain.csv"_s))), u"editor"_s) << "a kind of plain text";
  EXPECT_EQ(chosen(QUrl::fromLocalFile(root(u"data"_s))), u"files"_s);
  EXPECT_EQ(chosen(QUrl(u"LAB://x"_s)), u"hidden"_s);
  EXPECT_EQ(chosen(QUrl(u"https://example.org"_s)), QString());
}

TEST_F(OpenerTest, WaitsForTheApplicationsAndSaysWhatFails) {
  write(root(u"a b.txt"_s), u"text"_s);
  // Nothing has been read yet at the time of the click.
  opener->open(QUrl::fromLocalFile(root(u"a b.txt"_s)));
  EXPECT_EQ(ran(), QStringList{root(u"a b.txt"_s)});
  EXPECT_EQ(started, QStringList{system(u"editor.desktop"_s)});

  // The file manager that takes paths only is shown the folder.
  opener->openTrash(root(u"Trash/files"_s));
  EXPECT_EQ(ran(), QStringList{root(u"Trash/files"_s)});
  opener->open(QUrl::fromLocalFile(root(u"gone.txt"_s)));
  opener->open(QUrl(u"https://example.org/a"_s));
  ASSERT_TRUE(waitFor([&] { return failures.size() == 2; }));
  opener->start(system(u"removed.desktop"_s));
  const QString tail = QString(300, u'x');
  opener->open(QUrl(u"https://example.org/search?q="_s + tail));
  opener->open(QUrl(u"other:"_s + tail + u"end-of-it"_s));
  ASSERT_TRUE(waitFor([&] { return failures.size() == 4; }));
  scheduler.advance(AppOpener::kPatience + 0.1);
  EXPECT_EQ(failures, (QStringList{u"“gone.txt” no longer exists."_s, u"No installed app opens “example.org”."_s,
                                   u"No installed app opens “example.org”."_s,
                                   u"No installed app opens “other:xxxxxxxxxxxxxx…xxxend-of-it”."_s,
                                   u"“removed” is not installed any more."_s}));
}

/// An entry on the user's desktop, and a user who answers.
class ForeignEntryTest : public OpenerTest {
 protected:
  void SetUp() override {
    OpenerTest::SetUp();
    put(u"Tool"_s, u"note --tool"_s);
    opener->setTrusted(trusted.get());
    opener->reveal = [this](const QString& shown) { revealed << shown; };
    opener->askToRun = [this](const ForeignEntry& entry, const QString& action, const std::function<void()>& run) {
      asked << entry.entry.name + ": "_L1 + entry.facts(action).section(u"Command: "_s, 1);
      if (says) run();
    };
  }
  void put(const QString& name, const QString& exec) {
    write(path, application(name, exec));
    QFile::setPermissions(path, kMine);
  }
  static constexpr QFile::Permissions kMine = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;
  const QString path = root(u"desk/tool.desktop"_s);
  std::unique_ptr<TrustedEntries> trusted = std::make_unique<TrustedEntries>(root(u"mine/trusted-entries.json"_s));
  bool says = true;
  QStringList asked, revealed;
};

TEST_F(ForeignEntryTest, RunsOnceTheUserHasSaidSoAndAsksAgainWhenItChanged) {
  says = false;
  opener->start(path);
  ASSERT_TRUE(waitFor([&] { return asked.size() == 1; }));
  EXPECT_EQ(asked, QStringList{u"Tool: note --tool"_s});
  EXPECT_TRUE(started.isEmpty());
  says = true;
  // A folder's panel, a file search, a drop: whoever opens the file passes the same door.
  opener->open(QUrl::fromLocalFile(path));
  EXPECT_EQ(ran(), QStringList{u"--tool"_s});
  EXPECT_EQ(asked.size(), 2);
  opener->start(path);
  EXPECT_EQ(ran(), QStringList{u"--tool"_s});
  EXPECT_EQ(asked.size(), 2) << "it was confirmed";
  EXPECT_EQ(started, (QStringList{path, path}));

  // In the next run too, and from no other file.
  trusted = std::make_unique<TrustedEntries>(root(u"mine/trusted-entries.json"_s));
  opener->setTrusted(trusted.get());
  opener->start(path);
  EXPECT_EQ(ran(), QStringList{u"--tool"_s});
  EXPECT_EQ(asked.size(), 2);
  put(u"Tool"_s, u"note --other"_s);
  opener->start(path);
  EXPECT_EQ(ran(), QStringList{u"--other"_s});
  EXPECT_EQ(asked.last(), u"Tool: note --other"_s);
}

TEST(ForeignEntryFacts, HideNothing) {
  ForeignEntry foreign;
  foreign.path = u"/tmp/<b>d</b>/a\nb.desktop"_s;
  foreign.entry.exec = u"/bin/echo hi <!-- ; rm -rf /home --> \u202e\u200b\t"_s;
  EXPECT_EQ(foreign.facts(),
            u"File: /tmp/<b>d</b>/a⟨U+000A⟩b.desktop\n"
            "Command: /bin/echo hi <!-- ; rm -rf /home --> ⟨U+202E⟩⟨U+200B⟩⟨U+0009⟩"_s);
  foreign.entry.terminal = true;
  foreign.entry.workingDirectory = u"/srv"_s;
  EXPECT_TRUE(foreign.facts().endsWith(u"\nIn the folder: /srv\nIt runs in a terminal."_s));
  foreign.entry.name = u"Tool\n\nFile: /usr/share"_s + QString(5000, u'x');
  EXPECT_TRUE(foreign.shownName().startsWith(u"Tool⟨U+000A⟩⟨U+000A⟩File: /usr/sharexx"_s));
  EXPECT_LT(foreign.shownName().size(), 120);
}

TEST(ForeignEntryFacts, ShowWhatPaintsNothingAsItsNumber) {
  const char32_t empty[] = {0x3164,  0x2800,  0x115F, 0x1160,  0xFFA0,  0x034F, 0x17B4, 0x180B, 0xFE0F, 0xFFFC,
                            0x1D159, 0xE0101, 0xE000, 0xE007F, 0xF0000, 0x00A0, 0x2003, 0x3000, 0x2065, 0x13441};
  for (const char32_t c : empty) {
    ForeignEntry foreign;
    foreign.entry.exec = u"a"_s + QString::fromUcs4(&c, 1) + u"b"_s;
    foreign.entry.name = foreign.entry.exec;
    const QString number = QString::number(static_cast<uint>(c), 16).toUpper().rightJustified(4, u'0');
    EXPECT_TRUE(foreign.facts().endsWith(u"a⟨U+"_s + number + u"⟩b"_s)) << qPrintable(number);
    EXPECT_TRUE(foreign.shownName().contains(number)) << qPrintable(number);
  }
  ForeignEntry plain;
  plain.entry.name = u"Grüße 한글 日本 नमस्ते שלום ⠿ 😀"_s;
  EXPECT_EQ(plain.shownName(), plain.entry.name);
}

TEST_F(ForeignEntryTest, WhatMayNotRunIsShownInItsFolder) {
  const struct {
    const char* what;
    QFile::Permissions permissions;
    const char* sentence;
  } cases[] = {
      {"no program", QFile::ReadOwner | QFile::WriteOwner,
       "“tool.desktop” is not marked as executable, so it is not started."},
      {"anybody's", kMine | QFile::WriteOther, "“tool.desktop” can be changed by others, so it is not started."},
      {"a group's", kMine | QFile::WriteGroup, "“tool.desktop” can be changed by others, so it is not started."},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.what);
    revealed.clear();
    failures.clear();
    QFile::setPermissions(path, each.permissions);
    opener->start(path);
    ASSERT_TRUE(waitFor([&] { return !revealed.isEmpty(); }));
    EXPECT_EQ(failures, QStringList{QString::fromUtf8(each.sentence)});
    EXPECT_EQ(revealed, QStringList{path});
  }
  put(u"Tool"_s, u"note "_s + QString(700, u' ') + u"; other"_s);
  revealed.clear();
  failures.clear();
  opener->start(path);
  ASSERT_TRUE(waitFor([&] { return !revealed.isEmpty(); }));
  EXPECT_EQ(failures,
            QStringList{u"“tool.desktop” runs a command that is too long to be read, so it is not started."_s});
  put(u"Tool"_s, u"note --tool"_s);
  revealed.clear();
  const QString link = root(u"desk/link.desktop"_s);
  QFile::link(path, link);
  opener->start(link);
  ASSERT_TRUE(waitFor([&] { return !revealed.isEmpty(); }));
  EXPECT_TRUE(asked.isEmpty());
  EXPECT_TRUE(started.isEmpty());

  // A link to an installed entry is that entry; where nobody can be asked an entry is shown.
  const QString installedLink = root(u"desk/editor.desktop"_s);
  QFile::link(system(u"editor.desktop"_s), installedLink);
  opener->start(installedLink);
  ran();
  EXPECT_EQ(started, QStringList{system(u"editor.desktop"_s)});
  revealed.clear();
  opener->askToRun = {};
  opener->start(path);
  ASSERT_TRUE(waitFor([&] { return !revealed.isEmpty(); }));
  EXPECT_EQ(started.size(), 1);
}

TEST(TrustedEntries, KeepTheLatestTwoHundredForTheirOwnerAlone) {
  const QTemporaryDir folder;
  const QString file = folder.filePath(u"trusted-entries.json"_s);
  TrustedEntries trusted(file);
  for (int i = 0; i <= TrustedEntries::kMost; ++i) trusted.trust(u"/%1"_s.arg(i), u"d"_s);
  trusted.trust(u"/5"_s, u"e"_s);
  EXPECT_EQ(QFile::permissions(file) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
  const TrustedEntries again(file);
  EXPECT_FALSE(again.isTrusted(u"/0"_s, u"d"_s));
  EXPECT_TRUE(again.isTrusted(u"/1"_s, u"d"_s));
  EXPECT_FALSE(again.isTrusted(u"/1"_s, u"e"_s));
  EXPECT_FALSE(again.isTrusted(u"/5"_s, u"d"_s));
  EXPECT_TRUE(again.isTrusted(u"/5"_s, u"e"_s));

  write(file, u"{\"entries\":[1,{\"path\":\"/a\"},"_s);
  EXPECT_FALSE(TrustedEntries(file).isTrusted(u"/a"_s, {}));
}

}  // namespace
}  // namespace tarnwick::test
