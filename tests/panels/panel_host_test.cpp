#include <gtest/gtest.h>

#include <QPointer>
#include <QTest>

#include "app/PanelHost.h"
#include "support/RecordingCommands.h"
#include "support/TestFrameClock.h"
#include "support/TestScheduler.h"
#include "support/TestServices.h"
#include "views/controls/Fields.h"
#include "views/controls/Rows.h"
#include "views/panels/PanelPresentation.h"
#include "views/snapshot/SnapshotFixture.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

struct FakePopup final : Popup {
  FakePopup(std::unique_ptr<QWidget> widget, int& count) : content(std::move(widget)), alive(count) {
    ++alive;
    content->setAttribute(Qt::WA_TranslucentBackground);
    reposition();
    content->show();
  }
  ~FakePopup() override { --alive; }
  void reposition() override { content->resize(content->sizeHint()); }
  void moveBeside(const QRect&) override {}
  void giveBackKeyboard() override { hasKeyboard = false; }
  void escape() {
    content->hide();
    Q_EMIT closed();
  }

  std::unique_ptr<QWidget> content;
  int& alive;
  bool hasKeyboard = true;
};

struct FakePanel final : Panel {
  void place(const PanelPlacement&) override {}
  void setShown(bool) override {}
  bool isShown() const override { return true; }
  void setInputRegion(const QRegion&) override {}
  void setOutline(const QRegion&) override {}
  void setBlurBehind(const QRegion&) override {}
  void reserve(Edge, int) override {}
  void setKeyboard(Keyboard) override {}
  void setAboveFullscreen(bool) override {}
  void setHiddenFromCapture(bool) override {}
  std::unique_ptr<Popup> popup(std::unique_ptr<QWidget> content, const QRect& rectangle,
                               const PopupStyle& wanted) override {
    beside = rectangle;
    style = wanted;
    auto made = std::make_unique<FakePopup>(std::move(content), alive);
    last = made.get();
    return made;
  }
  void openMenu(QMenu&, const QRect&) override {}

  QRect beside;
  PopupStyle style;
  FakePopup* last = nullptr;
  int alive = 0;
};

struct FakePanels final : Panels {
  std::unique_ptr<Panel> make(std::unique_ptr<QWidget>) override { return std::make_unique<FakePanel>(); }
  bool isComposited() const override { return composited; }
  bool canBlur() const override { return false; }
  Capability captureProtection() const override { return Capability::yes(); }
  bool composited = true;
};

struct FakeClocks final : FrameClocks {
  std::unique_ptr<FrameClock> make(const QString&) override {
    auto made = std::make_unique<test::TestFrameClock>();
    last = made.get();
    return made;
  }
  QPointer<test::TestFrameClock> last;
};

struct PanelHostTest : testing::Test {
  PanelHostTest() {
    QObject::connect(&host, &PanelHost::openChanged, &host, [this](const QString& display, const QUuid& widget) {
      changes << display + u' ' + (widget.isNull() ? u"-"_s : u"+"_s);
    });
  }
  QUuid id(const QString& kind) const { return SnapshotFixture::widgetOf(kind).id; }
  void open(const QString& kind) { host.open(u"one"_s, id(kind), *dock, tile); }
  void settle() {
    if (clocks.last) clocks.last->beat(5);
    QCoreApplication::processEvents();
  }

  SnapshotStore fixture;
  PanelContext context = fixture.contextOf(u"cpu"_s);
  FakePanels panels;
  FakeClocks clocks;
  std::unique_ptr<FakePanel> dock = std::make_unique<FakePanel>();
  const QRect tile{100, 20, 76, 64};
  test::TestScheduler scheduler;
  test::TestServices desktop{scheduler, AppEnvironment()};
  const Services services = desktop.with(panels, clocks);
  test::RecordingCommands commands;
  PanelHost host{
      fixture.store(),
      services,
      commands,
      {[](const QString&) { return KeptSources::given(&SnapshotFixture::sources); }, fixture.readings().services()}};
  QStringList changes;
};

TEST_F(PanelHostTest, OpensOneAtATimeAndTogglesIt) {
  open(u"cpu"_s);
  EXPECT_EQ(dock->beside, tile);
  EXPECT_FALSE(dock->style.margins.isNull());
  EXPECT_TRUE(host.hasActivePanel(u"one"_s));
  EXPECT_FALSE(host.hasActivePanel(u"two"_s));
  settle();
  open(u"ram"_s);
  EXPECT_EQ(dock->alive, 1);
  EXPECT_EQ(host.openWidget(), id(u"ram"_s));
  settle();
  EXPECT_EQ(dock->alive, 1) << "the first one's end does not take the second";
  open(u"ram"_s);
  EXPECT_FALSE(host.hasActivePanel(u"one"_s));
  EXPECT_EQ(dock->alive, 1) << "it goes by its spring";
  EXPECT_FALSE(dock->last->hasKeyboard) << "what is typed meanwhile is not for it";
  settle();
  EXPECT_EQ(dock->alive, 0);
  EXPECT_EQ(changes, (QStringList{u"one +"_s, u"one -"_s, u"one +"_s, u"one -"_s}));

  // The panel of another kind takes the place of its own, and a click on the tile closes it as well.
  open(u"todayClock"_s);
  settle();
  host.open(u"one"_s, id(u"todayClock"_s), *dock, tile, u"weatherCurrent"_s);
  settle();
  EXPECT_TRUE(host.hasActivePanel(u"one"_s));
  EXPECT_EQ(dock->alive, 1);
  open(u"todayClock"_s);
  EXPECT_FALSE(host.hasActivePanel(u"one"_s));
}

TEST_F(PanelHostTest, ClosesWithWhatItBelongsTo) {
  struct Case {
    const char* name;
    std::function<void()> happens;
  };
  const auto reopen = [this] {
    if (!dock) dock = std::make_unique<FakePanel>();
    open(u"cpu"_s);
    settle();
  };
  const std::vector<Case> cases = {
      {"Escape", [this] { dock->last->escape(); }},
      {"the display's dock", [this] { Q_EMIT dock->closed(); }},
      {"the host's owner", [this] { host.closeOn(u"one"_s); }},
      {"the compositor",
       [this] {
         panels.composited = false;
         Q_EMIT panels.compositingChanged();
       }},
      {"the widget",
       [this] {
         fixture.store().edit([this](DockConfiguration& config) {
           for (DockProfile& profile : config.profiles)
             profile.widgets.removeIf([this](const DockWidget& widget) { return widget.id == id(u"cpu"_s); });
         });
       }},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(each.name);
    reopen();
    ASSERT_TRUE(host.hasActivePanel(u"one"_s));
    each.happens();
    QCoreApplication::processEvents();
    settle();
    EXPECT_FALSE(host.hasActivePanel(u"one"_s));
    EXPECT_EQ(dock->alive, 0);
  }
  reopen();
  dock.reset();
  EXPECT_FALSE(host.hasActivePanel(u"one"_s));
}

TEST_F(PanelHostTest, WhatWasWrittenIsThereUntilItLedToSomething) {
  const auto field = [this] { return dock->last->content->findChild<TextField*>(); };
  const auto closeAndOpen = [&](const QString& kind) {
    dock->last->escape();
    settle();
    open(kind);
    settle();
  };
  const struct {
    QString kind;
    QString text;
    bool isUsedByReturn;
  } cases[] = {
      {u"quickTodo"_s, u"Water the pl"_s, true},     {u"webSearch"_s, u"how long do"_s, true},
      {u"bookmarks"_s, u"train"_s, false},           {u"emojiRecents"_s, u"hea"_s, false},
      {u"worldClockList"_s, u"Lis"_s, true},         {u"calculator"_s, u"12 +"_s, false},
      {u"colorPicker"_s, u"#2E8"_s + u"Q"_s, false},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.kind.toStdString());
    open(each.kind);
    ASSERT_NE(field(), nullptr);
    field()->selectAll();
    field()->insert(each.text);
    closeAndOpen(u"cpu"_s);
    closeAndOpen(each.kind);
    ASSERT_EQ(field()->text(), each.text);
    if (!each.isUsedByReturn) continue;
    QTest::keyClick(field(), Qt::Key_Return);
    settle();
    if (host.openWidget().isNull()) open(each.kind);
    closeAndOpen(each.kind);
    EXPECT_EQ(field()->text(), QString());
  }
  // A thing to do that is being worded anew has its new words.
  closeAndOpen(u"quickTodo"_s);
  auto* row = dock->last->content->findChild<CheckRow*>();
  QTest::keyClick(row, Qt::Key_F2);
  row->parentWidget()->findChild<TextField*>()->setText(u"Call the dentist"_s);
  host.closeAtOnce();
  EXPECT_EQ(fixture.store().config().todos.first().text, u"Call the dentist"_s);
}

}  // namespace
}  // namespace tarnwick
