// The docks of GNOME, Xfce and Plasma, and desktops without any.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QProcess>
#include <QTemporaryDir>

#include "desktop/Program.h"
#include "dock/NativeDockState.h"
#include "handover/Docks.h"
#include "handover/FakePlasma.h"
#include "platform/docks/SystemDockPreferences.h"

namespace tarnwick::testing {
namespace {

using namespace Qt::StringLiterals;

class OtherDocksTest : public ::testing::Test {
 protected:
  QString file() const { return NativeDockState::recoveryFile(folder.path()); }

  QTemporaryDir folder;
};

TEST_F(OtherDocksTest, TheExtensionOfGnome) {
  const QString path = u"/org/gnome/shell/extensions/dash-to-dock/"_s;
  const NameOwner shell(u"org.gnome.Shell"_s);
  const QMap<QString, QString> users[] = {
      {},
      {{u"show-delay"_s, u"0.1"_s}, {u"intellihide"_s, u"true"_s}, {u"dash-max-icon-size"_s, u"32"_s}},
      {{u"dock-fixed"_s, u"true"_s}, {u"autohide"_s, u"false"_s}, {u"require-pressure-to-show"_s, u"false"_s}},
  };
  for (const auto& user : users) {
    ASSERT_TRUE(output({u"dconf"_s, u"reset"_s, u"-f"_s, path}));
    for (auto it = user.cbegin(); it != user.cend(); ++it) {
      ASSERT_TRUE(output({u"dconf"_s, u"write"_s, path + it.key(), it.value()}));
    }
    const QByteArray before = dconfDump();
    SystemDockPreferences preferences(folder.path());
    NativeDockState state(folder.path(), preferences);
    for (const auto& [layout, delay] : {std::pair(DockLayout::Swap, "0.0"), {DockLayout::Replace, "1000.0"}}) {
      state.apply(layout);
      const QByteArray now = dconfDump();
      EXPECT_FALSE(state.takeNotice());
      for (const QByteArray& line :
           {QByteArray("dock-fixed=false"), QByteArray("autohide=true"), QByteArray("intellihide=false"),
            QByteArray("require-pressure-to-show=false"), QByteArray("show-delay=") + delay}) {
        EXPECT_TRUE(now.contains('\n' + line + '\n')) << now.constData() << line.constData();
      }
    }
    state.restore();
    EXPECT_EQ(dconfDump(), before);
  }
}

TEST_F(OtherDocksTest, ThePanelsOfXfceAlongTheBottom) {
  const auto query = [](const QStringList& words) {
    return output(QStringList{u"xfconf-query"_s, u"-c"_s, u"xfce4-panel"_s} + words);
  };
  const auto set = [&](const QString& property, const QString& type, const QString& value) {
    ASSERT_TRUE(query({u"-p"_s, u"/panels/"_s + property, u"-n"_s, u"-t"_s, type, u"-s"_s, value}));
  };
  const NameOwner panel(u"org.xfce.Panel"_s);
  ASSERT_TRUE(query({u"-p"_s, u"/panels"_s, u"-n"_s, u"-a"_s, u"-t"_s, u"int"_s, u"-s"_s, u"1"_s, u"-t"_s, u"int"_s,
                     u"-s"_s, u"2"_s, u"-t"_s, u"int"_s, u"-s"_s, u"3"_s}));
  set(u"panel-1/position"_s, u"string"_s, u"p=6;x=0;y=0"_s);
  set(u"panel-2/position"_s, u"string"_s, u"p=10;x=0;y=0"_s);
  set(u"panel-3/position"_s, u"string"_s, u"p=8;x=0;y=0"_s);
  set(u"panel-3/autohide-behavior"_s, u"uint"_s, u"1"_s);
  set(u"panel-3/output-name"_s, u"string"_s, u"monitor-0"_s);
  const auto values = [&] { return query({u"-lv"_s}).value().simplified(); };
  const QByteArray before = values();

  SystemDockPreferences preferences(folder.path());
  NativeDockState state(folder.path(), preferences);
  state.apply(DockLayout::Replace);
  EXPECT_TRUE(values().contains("panel-2/autohide-behavior 2 /panels/panel-2/output-name Tarnwick"));
  EXPECT_TRUE(values().contains("panel-3/autohide-behavior 2 /panels/panel-3/output-name Tarnwick"));
  EXPECT_FALSE(values().contains("panel-1/autohide"));
  // Without a delay it comes out at its own output again.
  state.apply(DockLayout::Swap);
  EXPECT_TRUE(values().contains("panel-3/autohide-behavior 2 /panels/panel-3/output-name monitor-0"));
  EXPECT_FALSE(values().contains("Tarnwick"));
  state.apply(DockLayout::Fixed);
  EXPECT_EQ(values(), before);
  EXPECT_FALSE(QFile::exists(file()));

  // A panel that was removed in between gets nothing.
  state.apply(DockLayout::Swap);
  ASSERT_TRUE(query({u"-p"_s, u"/panels"_s, u"-n"_s, u"-a"_s, u"-t"_s, u"int"_s, u"-s"_s, u"1"_s, u"-t"_s, u"int"_s,
                     u"-s"_s, u"2"_s}));
  ASSERT_TRUE(query({u"-p"_s, u"/panels/panel-3"_s, u"-r"_s, u"-R"_s}));
  state.restore();
  EXPECT_FALSE(values().contains("panel-3"));
  EXPECT_FALSE(values().contains("autohide"));
  ASSERT_TRUE(query({u"-p"_s, u"/panels"_s, u"-r"_s, u"-R"_s}));
}

TEST_F(OtherDocksTest, ThePanelsOfPlasmaAndADockThatIsNotThere) {
  const QStringList before{u"2 top none"_s, u"7 bottom dodgewindows"_s, u"9 bottom none"_s};
  QByteArray record;
  QStringList hidden;
  {
    const FakePlasma plasma(before);
    SystemDockPreferences preferences(folder.path());
    NativeDockState state(folder.path(), preferences);
    state.apply(DockLayout::Swap);
    EXPECT_FALSE(state.takeNotice());
    state.apply(DockLayout::Replace);
    EXPECT_EQ(state.takeNotice(),
              u"This desktop’s panels can be hidden, but they still appear when the pointer reaches the edge of the "
              "screen."_s);
    hidden = plasma.panels();
    EXPECT_EQ(hidden, QStringList({u"2 top none"_s, u"7 bottom autohide"_s, u"9 bottom autohide"_s}));
    state.apply(DockLayout::Floating);
    EXPECT_EQ(plasma.panels(), before);
    state.apply(DockLayout::Replace);
    // The program ends here without giving back.
  }
  // Under another desktop nothing of that is written anywhere.
  const NameOwner shell(u"org.gnome.Shell"_s);
  const QByteArray settings = dconfDump();
  SystemDockPreferences preferences(folder.path());
  NativeDockState state(folder.path(), preferences);
  EXPECT_TRUE(state.recoveryError());
  EXPECT_ANY_THROW(state.apply(DockLayout::Replace));
  EXPECT_EQ(dconfDump(), settings);
  EXPECT_TRUE(QFile::exists(file()));

  // Plasma comes up, and gets its panels back by itself.
  bool asked = false;
  state.setNeedsApply([&] { asked = true; });
  const FakePlasma plasma(hidden);
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return asked; }));
  EXPECT_EQ(plasma.panels(), before);
  EXPECT_FALSE(QFile::exists(file()) || state.recoveryError());
}

TEST_F(OtherDocksTest, PanelsOfPlasmaThatComeAfterTheNameOfTheShell) {
  // The shell is there with its name alone when we look for docks, or comes so while we run.
  for (const bool isFirst : {true, false}) {
    std::unique_ptr<FakePlasma> plasma;
    if (isFirst) plasma = std::make_unique<FakePlasma>(QStringList());
    SystemDockPreferences preferences(folder.path());
    NativeDockState state(folder.path(), preferences);
    state.setNeedsApply([&] { state.apply(DockLayout::Replace); });
    state.apply(DockLayout::Replace);
    if (!plasma) plasma = std::make_unique<FakePlasma>(QStringList());
    const int asked = plasma->questions();
    EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return plasma->questions() > asked; }));
    EXPECT_EQ(plasma->panels(), QStringList());
    plasma->setPanels({u"4 bottom none"_s});
    EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return plasma->panels() == QStringList{u"4 bottom autohide"_s}; }));
    state.restore();
    EXPECT_EQ(plasma->panels(), QStringList{u"4 bottom none"_s});
  }
  // A repair that found a shell without panels is finished when they come.
  {
    const FakePlasma plasma({u"4 bottom windowsgobelow"_s});
    SystemDockPreferences preferences(folder.path());
    NativeDockState state(folder.path(), preferences);
    state.apply(DockLayout::Swap);
    // The program ends here without giving back.
  }
  FakePlasma plasma({});
  SystemDockPreferences preferences(folder.path());
  const NativeDockState state(folder.path(), preferences);
  EXPECT_TRUE(state.recoveryError());
  plasma.setPanels({u"4 bottom autohide"_s});
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return plasma.panels() == QStringList{u"4 bottom windowsgobelow"_s}; }));
  EXPECT_FALSE(state.recoveryError() || QFile::exists(file()));
}

TEST_F(OtherDocksTest, AShellThatDoesNotAnswerHoldsNoStartUp) {
  const NativeDockState::Terms start{.asksFirst = true};
  {
    const FakePlasma plasma({u"4 bottom windowsgobelow"_s});
    SystemDockPreferences preferences(folder.path());
    NativeDockState state(folder.path(), preferences);
    state.apply(DockLayout::Swap);
    // The program ends here without giving back.
  }
  SystemDockPreferences preferences(folder.path());
  int applied = 0;
  {
    const MutePlasma mute;
    NativeDockState state(folder.path(), preferences, NoGuard::shared(), start);
    state.setNeedsApply([&] { ++applied; });
    EXPECT_FALSE(state.recoveryError()) << "the answer, or its absence, comes later";
    state.apply(DockLayout::Swap);
    EXPECT_FALSE(state.current()) << "nor is anything hidden meanwhile";
    ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return applied == 1; }));
    EXPECT_EQ(mute.calls(), 1) << "nothing was tried that waits";
    EXPECT_TRUE(state.recoveryError());
    EXPECT_ANY_THROW(state.apply(DockLayout::Swap)) << "first it is said";
    EXPECT_EQ(mute.calls(), 1);
    EXPECT_ANY_THROW(state.apply(DockLayout::Swap)) << "and then it is asked again";
    EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return mute.calls() > 1; }));
    EXPECT_TRUE(QFile::exists(file()));
  }
  // One that answers gets its panels back as soon as it has, and the layout is applied after that.
  const FakePlasma plasma({u"4 bottom autohide"_s});
  applied = 0;
  NativeDockState state(folder.path(), preferences, NoGuard::shared(), start);
  state.setNeedsApply([&] { ++applied; });
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return applied > 0; }));
  EXPECT_EQ(plasma.panels(), QStringList{u"4 bottom windowsgobelow"_s});
  EXPECT_FALSE(state.recoveryError() || QFile::exists(file()));
  state.apply(DockLayout::Swap);
  EXPECT_EQ(plasma.panels(), QStringList{u"4 bottom autohide"_s});
  state.restore();
}

TEST_F(OtherDocksTest, AShellThatFallsSilentHoldsTheEndForOneCallAndGetsItsPanelsBackLater) {
  const QStringList before{u"4 bottom windowsgobelow"_s, u"7 bottom none"_s, u"9 bottom dodgewindows"_s};
  QStringList hidden;
  SystemDockPreferences preferences(folder.path());
  NativeDockState state(folder.path(), preferences);
  {
    const FakePlasma plasma(before);
    state.apply(DockLayout::Swap);
    hidden = plasma.panels();
  }
  for (int attempt = 1; attempt <= 2; ++attempt) {
    const MutePlasma mute;
    EXPECT_ANY_THROW(state.restore()) << attempt;
    EXPECT_EQ(mute.calls(), 1) << "each of the next would wait as long";
    EXPECT_TRUE(QFile::exists(file()));
  }
  const FakePlasma plasma(hidden);
  state.restore();
  EXPECT_EQ(plasma.panels(), before);
  EXPECT_FALSE(QFile::exists(file()));
}

TEST_F(OtherDocksTest, TheGuardiansRepairGoesOnUntilASilentShellAnswers) {
  const QStringList before{u"4 bottom windowsgobelow"_s, u"7 bottom none"_s};
  QStringList hidden;
  QProcess program;
  {
    const FakePlasma plasma(before);
    program.start(QCoreApplication::applicationDirPath() + u"/handover_holder"_s, {folder.path(), u"swap"_s});
    ASSERT_TRUE(VirtualDisplay::waitUntil([&] {
      hidden = plasma.panels();
      return hidden.count(u"4 bottom autohide"_s) + hidden.count(u"7 bottom autohide"_s) == 2;
    }));
  }
  {
    const MutePlasma mute;
    program.kill();
    ASSERT_TRUE(program.waitForFinished());
    // The two calls of its first attempt, and one of the next.
    EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return mute.calls() > 2; }));
    EXPECT_TRUE(QFile::exists(file()));
  }
  const FakePlasma plasma(hidden);
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return plasma.panels() == before && !QFile::exists(file()); }));
}

TEST_F(OtherDocksTest, WhatTheUserChangesMeanwhileStays) {
  const QString own = folder.filePath(u"dock-preferences.json"_s);
  const auto set = [&](const QByteArray& json) {
    QFile out(own);
    ASSERT_TRUE(out.open(QIODevice::WriteOnly));
    out.write(json);
  };
  const auto get = [&] {
    QFile in(own);
    return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
  };
  const QByteArray users = R"({"autohide":"false","autohide-delay":"0.5"})";
  const struct {
    const char* present;
    const char* bySameProcess;
    const char* byTheNext;
  } cases[] = {
      {R"({"autohide":"true","autohide-delay":"1000.0"})", R"({"autohide":"false","autohide-delay":"0.5"})",
       R"({"autohide":"false","autohide-delay":"0.5"})"},
      {R"({"autohide":"true","autohide-delay":"0.2"})", R"({"autohide":"false","autohide-delay":"0.2"})",
       R"({"autohide":"false","autohide-delay":"0.2"})"},
      {R"({"autohide":"never","autohide-delay":"1000.0"})", R"({"autohide":"never","autohide-delay":"0.5"})",
       R"({"autohide":"never","autohide-delay":"0.5"})"},
      // Who wrote it knows that this delay is not what it wrote; the next start cannot.
      {R"({"autohide":"true","autohide-delay":"0.0"})", R"({"autohide":"false","autohide-delay":"0.0"})",
       R"({"autohide":"false","autohide-delay":"0.5"})"},
      // A repair may have reset what it could not give back.
      {R"({"autohide":"true"})", R"({"autohide":"false"})", R"({"autohide":"false","autohide-delay":"0.5"})"},
  };
  for (const auto& c : cases) {
    for (const bool sameProcess : {true, false}) {
      SCOPED_TRACE(::testing::Message() << c.present << sameProcess);
      set(users);
      auto preferences = std::make_unique<SystemDockPreferences>(folder.path());
      auto state = std::make_unique<NativeDockState>(folder.path(), *preferences);
      state->apply(DockLayout::Swap);
      state->apply(DockLayout::Replace);
      set(c.present);
      if (!sameProcess) {
        state.reset();
        preferences = std::make_unique<SystemDockPreferences>(folder.path());
        state = std::make_unique<NativeDockState>(folder.path(), *preferences);
      }
      state->restore();
      EXPECT_EQ(get(), sameProcess ? c.bySameProcess : c.byTheNext);
      EXPECT_FALSE(QFile::exists(file()));
    }
  }
}

TEST_F(OtherDocksTest, AnEndlessDelayOfOursIsNeverTheUsers) {
  const QString own = folder.filePath(u"dock-preferences.json"_s);
  QFile out(own);
  ASSERT_TRUE(out.open(QIODevice::WriteOnly));
  out.write(R"({"autohide":"true","autohide-delay":"1000.0"})");
  out.close();
  SystemDockPreferences preferences(folder.path());
  NativeDockState state(folder.path(), preferences);
  state.apply(DockLayout::Replace);
  state.restore();
  QFile in(own);
  ASSERT_TRUE(in.open(QIODevice::ReadOnly));
  EXPECT_EQ(in.readAll(), R"({"autohide":"true"})") << "that it hides is a value like any other";
}

TEST_F(OtherDocksTest, WithoutADockEveryStepWorksAndSaysSo) {
  const QString own = folder.filePath(u"dock-preferences.json"_s);
  SystemDockPreferences preferences(folder.path());
  NativeDockState state(folder.path(), preferences);
  state.apply(DockLayout::Swap);
  EXPECT_EQ(state.takeNotice(), u"No dock that can be hidden was found."_s);
  QFile in(own);
  ASSERT_TRUE(in.open(QIODevice::ReadOnly));
  EXPECT_EQ(in.readAll(), R"({"autohide":"true","autohide-delay":"0.0"})");
  state.apply(DockLayout::Fixed);
  EXPECT_FALSE(QFile::exists(own) || QFile::exists(file()));
}

}  // namespace
}  // namespace tarnwick::testing
