#include <QProcessEnvironment>

#include "apps/DesktopEntry.h"
#include "apps/DesktopExec.h"
#include "apps/TerminalCommand.h"
#include "apps_fixture.h"
#include "base/DomainError.h"

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
  EXPECT_EQ(entry->comment, u"one\ntwo three\\four\\q"_s);
  EXPECT_EQ(entry->keywords, (QStringList{u"Wort"_s, u"Satz"_s}));
  EXPECT_TRUE(entry->noDisplay && entry->dbusActivatable && !entry->terminal);
  EXPECT_EQ(entry->flatpakId, u"org.example.Editor"_s);
  EXPECT_FALSE(entry->shownIn({u"GNOME"_s}));
  ASSERT_EQ(entry->actions.size(), 1);
  EXPECT_EQ(entry->actions[0], (DesktopAction{u"window"_s, u"Neues Fenster"_s, u"win"_s, u"editor --window"_s}));

  const auto plain = DesktopEntry::parse(text, {u"es"_s});
  EXPECT_EQ(plain->name, u"Editor"_s);
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
  struct Case {
    QByteArray keys;
    QStringList desktops;
    bool shown;
  };
  const Case cases[] = {
      {"", {}, true},
      {"OnlyShowIn=KDE;\n", {u"GNOME"_s}, false},
      {"OnlyShowIn=KDE;GNOME;\n", {u"ubuntu"_s, u"GNOME"_s}, true},
      {"NotShowIn=GNOME;\n", {u"ubuntu"_s, u"GNOME"_s}, false},
      {"NotShowIn=KDE;\n", {}, true},
      // The first name that either list mentions decides.
      {"OnlyShowIn=ubuntu;\nNotShowIn=GNOME;\n", {u"ubuntu"_s, u"GNOME"_s}, true},
      {"OnlyShowIn=GNOME;\nNotShowIn=ubuntu;\n", {u"ubuntu"_s, u"GNOME"_s}, false},
  };
  for (const Case& each : cases) {
    const auto entry = DesktopEntry::parse("[Desktop Entry]\nType=Application\nName=A\nExec=a\n" + each.keys);
    EXPECT_EQ(entry->shownIn(each.desktops), each.shown) << each.keys.data();
  }
}

TEST(AppEnvironment, FollowsTheVariables) {
  QProcessEnvironment variables;
  variables.insert(u"HOME"_s, u"/home/ada"_s);
  variables.insert(u"XDG_DATA_DIRS"_s, u"/opt/share/:relative:/usr/share:/opt/share"_s);
  variables.insert(u"XDG_CONFIG_HOME"_s, u"not/absolute"_s);
  variables.insert(u"XDG_CURRENT_DESKTOP"_s, u"ubuntu:GNOME"_s);
  variables.insert(u"LANG"_s, u"fr_FR.UTF-8"_s);
  variables.insert(u"LC_MESSAGES"_s, u"sr_RS.UTF-8@latin"_s);
  variables.insert(u"LANGUAGE"_s, u"de"_s);
  auto result = AppEnvironment::fromVariables(variables);
  EXPECT_EQ(result.applicationFolders(), (QStringList{u"/home/ada/.local/share/applications"_s,
                                                      u"/opt/share/applications"_s, u"/usr/share/applications"_s}));
  EXPECT_EQ(result.configHome, u"/home/ada/.config"_s);
  EXPECT_EQ(result.desktops, (QStringList{u"ubuntu"_s, u"GNOME"_s}));
  EXPECT_EQ(result.locales, (QStringList{u"de"_s, u"sr_RS@latin"_s, u"sr_RS"_s, u"sr@latin"_s, u"sr"_s}));
  EXPECT_EQ(result.desktopIdOf(u"/opt/share/applications/kde/x.desktop"_s), u"kde-x"_s);
  EXPECT_EQ(result.desktopIdOf(u"/home/ada/Desktop/x.desktop"_s), QString());
  variables.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
  EXPECT_TRUE(AppEnvironment::fromVariables(variables).locales.isEmpty());
}

TEST(DesktopExec, ExpandsCommandLines) {
  DesktopEntry entry;
  entry.name = u"My App"_s;
  entry.iconName = u"my-icon"_s;
  entry.path = u"/a/my.desktop"_s;
  const QUrl first = QUrl::fromLocalFile(u"/tmp/a b.txt"_s);
  const QUrl second = QUrl::fromLocalFile(u"/tmp/$(x).txt"_s);
  const QUrl web(u"https://example.org/?q=1"_s);
  struct Case {
    QString exec;
    QList<QUrl> urls;
    QList<QStringList> commands;  ///< None: refused.
  };
  const Case cases[] = {
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
  for (const Case& each : cases) {
    if (each.commands.isEmpty())
      EXPECT_THROW(DesktopExec::expand(entry, each.exec, each.urls), DomainError) << each.exec.toStdString();
    else
      EXPECT_EQ(DesktopExec::expand(entry, each.exec, each.urls), each.commands) << each.exec.toStdString();
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
  const QStringList command{u"top"_s, u"-d1"_s};
  EXPECT_EQ(TerminalCommand::wrap(command, environment), QStringList());
  program(u"xfce4-terminal"_s, u"#!/bin/sh\n"_s);
  EXPECT_EQ(TerminalCommand::wrap(command, environment),
            (QStringList{root(u"bin/xfce4-terminal"_s), u"-x"_s, u"top"_s, u"-d1"_s}));
  program(u"x-terminal-emulator"_s, u"#!/bin/sh\n"_s);
  EXPECT_EQ(TerminalCommand::wrap(command, environment).value(1), u"-e"_s);
  environment.terminal = u"missing"_s;
  EXPECT_EQ(TerminalCommand::wrap(command, environment).value(0), root(u"bin/x-terminal-emulator"_s));
  environment.terminal = u"kitty --single"_s;
  program(u"kitty"_s, u"#!/bin/sh\n"_s);
  EXPECT_EQ(TerminalCommand::wrap(command, environment), (QStringList{u"kitty"_s, u"--single"_s, u"top"_s, u"-d1"_s}));
  program(u"xdg-terminal-exec"_s, u"#!/bin/sh\n"_s);
  EXPECT_EQ(TerminalCommand::wrap(command, environment),
            (QStringList{root(u"bin/xdg-terminal-exec"_s), u"top"_s, u"-d1"_s}));
}

}  // namespace
}  // namespace tarnwick::test
