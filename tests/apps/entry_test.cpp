#include "apps/DesktopEntry.h"
#include "apps/DesktopExec.h"
#include "apps/TerminalCommand.h"
#include "apps_fixture.h"
#include "support/FileTest.h"

namespace tarnwick::test {
namespace {

TEST(DesktopEntry, ReadsWhatTheFileSaysInTheUsersLanguage) {
  const QByteArray text =
      "# a comment\n"
      "\n"
      "[Desktop Entry]\r\n"
      "Type = Application\n"
      "Name=Editor\n"
      "Name[de]=Schreiber\n"
      "Name[de_AT]=Federl\n"
      "Name[fr]=\xc3\x89"
      "diteur\n"
      "Comment=one\\ntwo\\sthree\\\\four\\q\n"
      "Keywords=text;semi\\;colon;;last\n"
      "Keywords[de]=Wort;Satz;\n"
      "Exec=editor --new %F\n"
      "this line is nothing\n"
      "NoDisplay=true\nTerminal=0\nDBusActivatable=1\n"
      "OnlyShowIn=\n"
      "X-Flatpak=org.example.Editor\n"
      "Actions=window;gone;empty;\n"
      "[Desktop Action window]\nName=New Window\nName[de]=Neues Fenster\nExec=editor --window\nIcon=win\n"
      "[Desktop Action empty]\nExec=editor\n"
      "[Unclosed\nName=Wrong\n";
  const auto entry = DesktopEntry::parse(text, {u"de_AT"_s, u"de"_s});
  ASSERT_TRUE(entry);
  EXPECT_EQ(entry->name, u"Federl"_s);
  EXPECT_EQ(entry->untranslatedName, u"Editor"_s);
  EXPECT_EQ(entry->comment, u"one\ntwo three\\four\\q"_s);
  EXPECT_EQ(entry->keywords, (QStringList{u"Wort"_s, u"Satz"_s}));
  EXPECT_TRUE(entry->noDisplay && entry->dbusActivatable && !entry->terminal);
  EXPECT_EQ(entry->flatpakId, u"org.example.Editor"_s);
  EXPECT_FALSE(entry->shownIn({u"GNOME"_s}));
  ASSERT_EQ(entry->actions.size(), 1);
  EXPECT_EQ(entry->actions[0], (DesktopAction{u"window"_s, u"Neues Fenster"_s, u"win"_s, u"editor --window"_s}));

  const auto plain = DesktopEntry::parse(text, {u"es"_s});
  EXPECT_EQ(plain->name, u"Editor"_s);
  EXPECT_EQ(plain->untranslatedName, u"Editor"_s);
  EXPECT_EQ(plain->keywords, (QStringList{u"text"_s, u"semi;colon"_s, u"last"_s}));
}

TEST(DesktopEntry, RefusesWhatIsNone) {
  const std::pair<QByteArray, bool> cases[] = {
      {"", false},
      {QByteArray("\0\1\2[Desktop Entry]", 18), false},
      {"Type=Application\nName=A\nExec=a\n", false},
      {"[Desktop Action x]\nType=Application\nName=A\nExec=a\n", false},
      {"[Desktop Entry]\nName=A\nExec=a\n", false},
      {"[Desktop Entry]\nType=Application\nExec=a\n", false},
      {"[Desktop Entry]\nType=Application\nName=A\n", false},
      {"[Desktop Entry]\nType=Application\nName=A\nDBusActivatable=true\n", true},
      {"[Desktop Entry]\nType=Link\nName=A\n", false},
      {"[Desktop Entry]\nType=Link\nName=A\nURL=https://example.org\n", true},
      {"[Desktop Entry]\nType=Service\nName=A\nExec=a\n", false},
      {"[Desktop Entry]\nHidden=true\n", true},
      {"[Desktop Entry]\nType=Application\nName=\xff\xfe\nExec=a", true},
  };
  for (const auto& [text, accepted] : cases) EXPECT_EQ(DesktopEntry::parse(text).has_value(), accepted) << text.data();
}

TEST(DesktopEntry, IsShownWhereItWants) {
  const std::tuple<QByteArray, QStringList, bool> cases[] = {
      {"", {}, true},
      {"OnlyShowIn=KDE;\n", {u"GNOME"_s}, false},
      {"OnlyShowIn=KDE;GNOME;\n", {u"ubuntu"_s, u"GNOME"_s}, true},
      {"NotShowIn=GNOME;\n", {u"ubuntu"_s, u"GNOME"_s}, false},
      {"NotShowIn=KDE;\n", {}, true},
      // The first name that either list mentions decides.
      {"OnlyShowIn=ubuntu;\nNotShowIn=GNOME;\n", {u"ubuntu"_s, u"GNOME"_s}, true},
      {"OnlyShowIn=GNOME;\nNotShowIn=ubuntu;\n", {u"ubuntu"_s, u"GNOME"_s}, false},
  };
  for (const auto& [keys, desktops, shown] : cases) {
    const auto entry = DesktopEntry::parse("[Desktop Entry]\nType=Application\nName=A\nExec=a\n" + keys);
    EXPECT_EQ(entry->shownIn(desktops), shown) << keys.data();
  }
}

TEST(AppEnvironment, FollowsTheVariables) {
  QProcessEnvironment given = variables({{"HOME", "/home/ada"},
                                         {"XDG_DATA_DIRS", "/opt/share/:relative:/usr/share:/opt/share"},
                                         {"XDG_CONFIG_HOME", "not/absolute"},
                                         {"XDG_CURRENT_DESKTOP", "ubuntu:GNOME"},
                                         {"LANG", "fr_FR.UTF-8"},
                                         {"LC_MESSAGES", "sr_RS.UTF-8@latin"},
                                         {"LANGUAGE", "de"}});
  const auto result = AppEnvironment::fromVariables(given);
  EXPECT_EQ(result.applicationFolders(), (QStringList{u"/home/ada/.local/share/applications"_s,
                                                      u"/opt/share/applications"_s, u"/usr/share/applications"_s}));
  EXPECT_EQ(result.configHome, u"/home/ada/.config"_s);
  EXPECT_EQ(result.desktops, (QStringList{u"ubuntu"_s, u"GNOME"_s}));
  EXPECT_EQ(result.locales, (QStringList{u"de"_s, u"sr_RS@latin"_s, u"sr_RS"_s, u"sr@latin"_s, u"sr"_s}));
  EXPECT_EQ(result.desktopIdOf(u"/opt/share/applications/kde/x.desktop"_s), u"kde-x"_s);
  EXPECT_EQ(result.desktopIdOf(u"/home/ada/Desktop/x.desktop"_s), QString());
  given.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
  EXPECT_TRUE(AppEnvironment::fromVariables(given).locales.isEmpty());
}

TEST(DesktopExec, ExpandsCommandLines) {
  DesktopEntry entry;
  entry.name = u"My App"_s;
  entry.iconName = u"my-icon"_s;
  entry.path = u"/a/my.desktop"_s;
  const QUrl first = QUrl::fromLocalFile(u"/tmp/a b.txt"_s);
  const QUrl second = QUrl::fromLocalFile(u"/tmp/$(x).txt"_s);
  const QUrl web(u"https://example.org/?q=1"_s);
  // A command line, what to open and the commands; none means refused.
  const std::tuple<QString, QList<QUrl>, QList<QStringList>> cases[] = {
      {u"app"_s, {}, {{u"app"_s}}},
      {u"app  --x\t%F"_s, {}, {{u"app"_s, u"--x"_s}}},
      {u"app %F -z"_s, {first, second}, {{u"app"_s, u"/tmp/a b.txt"_s, u"/tmp/$(x).txt"_s, u"-z"_s}}},
      {u"app %f"_s, {first, second}, {{u"app"_s, u"/tmp/a b.txt"_s}, {u"app"_s, u"/tmp/$(x).txt"_s}}},
      {u"app %U"_s, {first, web}, {{u"app"_s, u"file:///tmp/a%20b.txt"_s, u"https://example.org/?q=1"_s}}},
      {u"app --open=%u"_s, {web}, {{u"app"_s, u"--open=https://example.org/?q=1"_s}}},
      {u"app \"%f\""_s, {first}, {{u"app"_s, u"/tmp/a b.txt"_s}}},
      {u"app %i --title %c %k 100%% %d%N%v x%m"_s,
       {},
       {{u"app"_s, u"--icon"_s, u"my-icon"_s, u"--title"_s, u"My App"_s, u"/a/my.desktop"_s, u"100%"_s, u""_s,
         u"x"_s}}},
      {u"\"/opt/My App/run\" \"a\\\"b\\$c\\\\d\\`e\" ''"_s, {}, {{u"/opt/My App/run"_s, u"a\"b$c\\d`e"_s, u""_s}}},
      {u"sh -c 'run %f; done' x\\ y"_s, {first}, {{u"sh"_s, u"-c"_s, u"run %f; done"_s, u"x y"_s}}},
      {u"app"_s, {first}, {}},
      {u"app %F"_s, {first, web}, {}},
      {u"app \"open"_s, {}, {}},
      {u"  "_s, {}, {}},
      {u"%f"_s, {}, {}},
  };
  for (const auto& [exec, urls, wanted] : cases) {
    QList<QStringList> commands;
    const auto failure =
        failureOf([&, &line = exec, &files = urls] { commands = DesktopExec::expand(entry, line, files); });
    EXPECT_EQ(commands, wanted) << exec.toStdString();
    EXPECT_EQ(failure.empty(), !wanted.isEmpty()) << exec.toStdString();
  }
}

TEST(DesktopExec, NamesTheProgramThatMatters) {
  const std::pair<QString, QString> cases[] = {
      {u"/usr/bin/gimp-2.10 %U"_s, u"gimp-2.10"_s},
      {u"env BAMF_DESKTOP_FILE_HINT=/x/y.desktop /snap/bin/firefox %u"_s, u"firefox"_s},
      {u"/usr/bin/flatpak run --branch=stable org.example.App"_s, QString()},
      {u"python3 /usr/share/meld/meld.py %F"_s, u"meld"_s},
      {u"/usr/bin/python3.11"_s, QString()},
      {u"java -Xmx1g -jar /opt/tool/Tool.jar"_s, u"Tool"_s},
      {u"env \"WINEPREFIX=/home/a b\" wine \"C:\\\\\\\\Games\\\\\\\\Chess.exe\""_s, u"Chess"_s},
      {u"sh -c 'cd /opt && ./run'"_s, QString()},
      {u"\"open"_s, QString()},
  };
  for (const auto& [exec, name] : cases) EXPECT_EQ(DesktopExec::executableName(exec), name) << exec.toStdString();
}

using TerminalTest = AppsTest;

TEST_F(TerminalTest, PrefersTheStandardThenTheUsersThenTheSystems) {
  const auto wrapped = [this] {
    return TerminalCommand::wrap({u"top"_s}, environment).replaceInStrings(root(u"bin/"_s), u"/"_s).join(u' ');
  };
  EXPECT_EQ(wrapped(), QString());
  const std::tuple<QString, QString, QString> steps[] = {
      {u"xfce4-terminal"_s, {}, u"/xfce4-terminal -x top"_s},
      {u"x-terminal-emulator"_s, u"missing"_s, u"/x-terminal-emulator -e top"_s},
      {u"kitty"_s, u"kitty --single"_s, u"kitty --single top"_s},
      {u"xdg-terminal-exec"_s, u"kitty --single"_s, u"/xdg-terminal-exec top"_s}};
  for (const auto& [installed, chosen, command] : steps) {
    program(installed, u"#!/bin/sh\n"_s);
    environment.terminal = chosen;
    EXPECT_EQ(wrapped(), command);
  }
}

}  // namespace
}  // namespace tarnwick::test
