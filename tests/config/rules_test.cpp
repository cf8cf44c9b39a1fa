#include <gmock/gmock.h>

#include <functional>

#include "config/DockConfiguration.h"
#include "config/ForeignOptions.h"
#include "config/LayoutSignature.h"
#include "config/Reordering.h"
#include "config/SaveSchedule.h"
#include "config/WidgetTransfer.h"
#include "support/FileTest.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

TEST(LayoutSignature, IgnoresWhatChangesByItself) {
  const DockConfiguration base;
  const auto differs = [&](const std::function<void(DockConfiguration&)>& change) {
    DockConfiguration changed = base;
    change(changed);
    return LayoutSignature(changed) != LayoutSignature(base);
  };
  for (const auto key :
       {"deadline"_L1, "remaining"_L1, "started"_L1, "elapsed"_L1, "phase"_L1, "sessions"_L1, "lastReminder"_L1,
        "glasses"_L1, "day"_L1, "lastWallpaperChange"_L1, "standingMinutes"_L1, "text"_L1, "completedDays"_L1}) {
    EXPECT_FALSE(differs([&](auto& c) { c.profiles[0].widgets[6].options.insert(key, u"1"_s); })) << key.data();
  }
  for (const auto key : {"minutes"_L1, "history"_L1, "Text"_L1}) {
    EXPECT_TRUE(differs([&](auto& c) { c.profiles[0].widgets[6].options.insert(key, u"1"_s); })) << key.data();
  }
  EXPECT_FALSE(differs([](auto& c) {
    c.todos.append(TodoItem{});
    c.shelf.append(u"/f"_s);
    c.clipboard.append(u"x"_s);
  }));
  EXPECT_TRUE(differs([](auto& c) { c.profiles[0].widgets.move(0, 1); }));
}

TEST(SaveSchedule, SavesSoonAndNeverLaterThanPlanned) {
  const struct {
    bool layout;
    std::optional<double> sinceLastSave;
    std::optional<double> pendingIn;
    double delay;
  } cases[] = {
      {true, {}, {}, 0.25},
      {true, 3, {}, 0.25},
      {true, 3, 6.9, 0.25},
      {true, 3, 0.1, 0.1},
      {false, {}, {}, 0.25},
      {false, 0, {}, 10},
      {false, 3, {}, 7},
      {false, 9.9, {}, 0.25},
      {false, 3, 5, 5},
      {false, 500, {}, 0.25},
      {false, 3, -2, 0},
      {false, 3, 0.25, 0.25},
      {false, 3, 60, 7},
      // A clock that was set back must not put a save off for long.
      {false, -3600, {}, 10},
  };
  for (const auto& c : cases) {
    EXPECT_DOUBLE_EQ(SaveSchedule::delay(c.layout, c.sinceLastSave, c.pendingIn), c.delay);
  }
}

TEST(Reordering, MovesWithinTheList) {
  const QList<int> list{1, 2, 3, 4};
  const struct {
    qsizetype from, to;
    QList<int> after;
  } cases[] = {{0, 3, {2, 3, 4, 1}}, {3, 0, {4, 1, 2, 3}}, {1, 2, {1, 3, 2, 4}}, {2, 2, list},
               {-1, 2, list},        {0, 4, list},         {4, 0, list},         {0, -1, list}};
  for (const auto& c : cases) EXPECT_EQ(Reordering::reordered(list, c.from, c.to), c.after);
}

TEST(WidgetTransfer, CarriesAWidgetThroughTextAndRefusesEverythingElse) {
  const DockWidget carried{QUuid::createUuid(), u"cpu"_s, u"Größe"_s, {{u"minutes"_s, u"5"_s}}};
  EXPECT_EQ(WidgetTransfer::decode(WidgetTransfer::encode(carried)), carried);
  const auto transfer = [](const QByteArray& json) {
    return QString(u"tarnwick-widget:"_s + QString::fromLatin1(json.toBase64()));
  };
  const auto widget = [](const QByteArray& kind, const QByteArray& options) {
    return R"({"id":"00000000-0000-4000-8000-000000000001","kind":")" + kind + R"(","title":"","options":{)" + options +
           "}}";
  };
  const QString good = transfer(widget("cpu", R"("a":"1")"));
  ASSERT_EQ(good.back(), u'=') << "the padding is what two rows below take away and add";
  // The longest text that is still allowed, and one more step of base64.
  const auto filled = [&](qsizetype room) { return transfer(widget("cpu", "").leftJustified(room, ' ')); };
  const QString longest = filled(65516 / 4 * 3);
  const QString tooLong = filled(65520 / 4 * 3);
  ASSERT_EQ(longest.size() + tooLong.size(), 65532 + 65536);
  for (const QString& text : {tooLong, QString(), good.sliced(1), good.toUpper(), good.chopped(1), QString(good + u'='),
                              QString(good + u'\n'), u"tarnwick-widget:e-_="_s, u"tarnwick-widget:ü==="_s}) {
    EXPECT_EQ(failureOf([&] { WidgetTransfer::decode(text); }), "Invalid widget transfer.") << text.toStdString();
  }
  const std::pair<QString, const char*> cases[] = {
      {good, ""},
      {longest, ""},
      {transfer(R"({"id":"00000000-0000-4000-8000-000000000001","kind":"cpu","title":""})"),
       "The value of “options” is missing."},
      {transfer("[]"), "The document is not in the expected format."},
      {transfer(widget("nothing", "")), "Invalid widget identity or type: nothing"},
      {transfer(widget("cpu", R"("token":"x")")), "Credentials belong in Keychain, not configuration."},
      {transfer(widget("cpu", R"("goal":"x")")), "Invalid numeric value for goal."},
  };
  for (const auto& [text, message] : cases) {
    EXPECT_EQ(failureOf([&, &given = text] { WidgetTransfer::decode(given); }), message) << text.left(60).toStdString();
  }
}

TEST(ForeignOptions, AreLeftOutUnlessTheWidgetHasThemHere) {
  using Options = QMap<QString, QString>;
  const QString server = u"https://home.test"_s;
  const DockWidget home{QUuid::createUuid(),
                        u"homeAssistant"_s,
                        {},
                        {{u"server"_s, server}, {u"endpoint"_s, server}, {u"entity"_s, u"light.desk"_s}}};
  const auto with = [&](const QString& key, const QString& value) {
    DockWidget widget = home;
    widget.options[key] = value;
    return widget;
  };
  DockWidget other = home;
  other.id = QUuid::createUuid();
  const Options entity{{u"entity"_s, u"light.desk"_s}};
  const Options whole = home.options;
  const struct {
    const char* name;
    DockWidget brought;
    Options stays;
  } cases[] = {
      {"that is here", home, whole},
      {"that is not here", other, entity},
      {"another server",
       with(u"server"_s, u"https://evil.test"_s),
       {{u"endpoint"_s, server}, {u"entity"_s, u"light.desk"_s}}},
      {"the right to switch", with(u"control"_s, u"true"_s), whole},
      {"a program", with(u"codexExecutable"_s, u"/tmp/x"_s), whole},
      {"a program for hooks", with(u"claudeHookExecutable"_s, u"/tmp/x"_s), whole},
      {"settings of another program", with(u"claudeSettings"_s, u"/tmp/x"_s), whole},
      {"a folder", with(u"historyDirectory"_s, u"/tmp"_s), whole},
      {"where the user is", with(u"weatherLocation"_s, u"current"_s), whole},
      {"where somebody else is", with(u"weatherLocation"_s, u"there"_s),
       with(u"weatherLocation"_s, u"there"_s).options},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.name);
    DockConfiguration here;
    here.profiles[0].widgets = {home};
    DockConfiguration imported;
    imported.profiles[0].widgets = {each.brought};
    ForeignOptions::leaveOut(imported, here);
    EXPECT_EQ(imported.profiles[0].widgets[0].options, each.stays);
    const Options alone = WidgetTransfer::decode(WidgetTransfer::encode(each.brought)).options;
    EXPECT_FALSE(alone.contains(u"server"_s) || alone.value(u"weatherLocation"_s) == u"current"_s);
  }
}

TEST(DockLayout, HasATextForEveryCase) {
  QSet<QString> texts;
  for (const DockLayout layout : kDockLayouts) texts << label(layout) << description(layout) << rawText(layout);
  EXPECT_EQ(texts.size(), 21);
}

}  // namespace
}  // namespace tarnwick
