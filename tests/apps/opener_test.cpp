#include <QDBusConnection>

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
                                         [] { return QDBusConnection(u"no such bus"_s); });
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
  EXPECT_EQ(failures.size(), 2);
  scheduler.advance(AppOpener::kPatience + 0.1);
  EXPECT_EQ(failures, (QStringList{u"“gone.txt” is not there any more."_s,
                                   u"No installed application opens “https://example.org/a”."_s,
                                   u"“removed” is not installed any more."_s}));
}

TEST_F(OpenerTest, FindsAnEntryThatLiesSomewhereElse) {
  write(root(u"desk/tool.desktop"_s), application(u"Tool"_s, u"note --tool"_s));
  opener->start(root(u"desk/tool.desktop"_s));
  EXPECT_EQ(ran(), QStringList{u"--tool"_s});
  EXPECT_EQ(started, QStringList{root(u"desk/tool.desktop"_s)});
}

}  // namespace
}  // namespace tarnwick::test
