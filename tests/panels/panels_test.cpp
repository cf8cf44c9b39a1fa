#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <algorithm>

#include "OpenPanel.h"
#include "support/AccessibleWalk.h"
#include "views/controls/Labels.h"
#include "views/controls/Switch.h"
#include "widgets/catalog/Catalog.h"
#include "widgets/catalog/Family.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

using test::shown;

/// Whether anything but the bare pane is seen.
bool isBlank(TilePanel& panel) {
  const QRect inside = panel.rect().marginsRemoved(panel.margins()).adjusted(4, 4, -4, -4);
  const QImage image = panel.grab(inside).toImage();
  for (int y = 0; y < image.height(); ++y)
    for (int x = 1; x < image.width(); ++x)
      if (image.pixel(x, y) != image.pixel(0, y)) return false;
  return true;
}

TEST(PanelsTest, EveryKindHasOneWithNamedControlsThatFits) {
  SnapshotStore fixture;
  ASSERT_GE(Catalog::items().size(), 163);
  for (const WidgetDefinition& definition : Catalog::items()) {
    SCOPED_TRACE(definition.id.toStdString());
    const auto panel = shown(fixture.contextOf(definition.id));
    EXPECT_FALSE(isBlank(*panel));
    EXPECT_EQ(panel->accessibleName(), definition.name);
    EXPECT_EQ(test::outOfReach(*panel), "");
    for (QWidget* control : panel->findChildren<QWidget*>()) {
      if (!control->isVisible() || !(control->focusPolicy() & Qt::TabFocus)) continue;
      const QAccessibleInterface* access = QAccessible::queryAccessibleInterface(control);
      ASSERT_TRUE(access);
      EXPECT_FALSE(access->text(QAccessible::Name).isEmpty()) << control->metaObject()->className();
      // What scrolls within the panel is seen in part.
      const QWidget* seen = control;
      for (const QWidget* at = control->parentWidget(); at && at != panel.get(); at = at->parentWidget())
        if (qobject_cast<const QScrollArea*>(at) && at != panel->findChild<QScrollArea*>()) seen = at;
      const QRect place(seen->mapTo(panel.get(), QPoint()), seen->size());
      EXPECT_TRUE(panel->rect().contains(place)) << control->metaObject()->className();
    }
    EXPECT_EQ(panel->findChild<QScrollArea*>()->verticalScrollBar()->maximum(), 0) << "all of it is seen";
    for (const QScrollArea* area : panel->findChildren<QScrollArea*>())
      EXPECT_FALSE(area->widget()->autoFillBackground()) << "nothing but the glass is behind it";
  }
}

/// The load of a processor, which counts how often it is asked.
class CountedLoad final : public TileSource {
 public:
  void fill(TileSources& sources, const QList<DockWidget>&) override {
    ++asked;
    sources = SnapshotFixture::sources();
    sources.metrics->cpu = load;
  }
  double load = 10;
  int asked = 0;
};

TEST(PanelsTest, FollowWhatIsAnnouncedWhileOpen) {
  SnapshotStore fixture;
  PanelContext context = fixture.contextOf(u"cpu"_s);
  CountedLoad source;
  context.sources = [&source] {
    return std::make_unique<KeptSources>(KeptSources::Setup{.own = {}, .borrowed = {&source}});
  };
  const auto panel = shown(context);
  const auto load = [&panel] { return panel->findChild<FigureView*>()->accessibleName(); };
  EXPECT_TRUE(load().contains(u"10"_s)) << qPrintable(load());
  for (int i = 0; i < 5; ++i) fixture.store().heartbeat();
  fixture.store().edit([](DockConfiguration& config) { config.spacing += 2; });
  Q_EMIT source.changed({Family::Toggles});
  Q_EMIT source.widgetChanged(QUuid::createUuid());
  EXPECT_EQ(source.asked, 1) << "nothing of it was another";
  source.load = 20;
  Q_EMIT source.changed({Family::Files, Family::Metric});
  EXPECT_TRUE(load().contains(u"20"_s)) << qPrintable(load());
  source.load = 30;
  Q_EMIT source.widgetChanged(context.widget);
  EXPECT_TRUE(load().contains(u"30"_s)) << qPrintable(load());

  panel->hide();
  source.load = 40;
  const int hidden = source.asked;
  Q_EMIT source.changed({Family::Metric});
  EXPECT_EQ(source.asked, hidden);
  panel->show();
  EXPECT_TRUE(load().contains(u"40"_s)) << qPrintable(load());

  QSignalSpy close(panel.get(), &TilePanel::closeRequested);
  fixture.store().edit([](DockConfiguration& config) { config.profiles.first().widgets.removeLast(); });
  EXPECT_EQ(close.count(), 0) << "another widget went";
  fixture.store().edit([&](DockConfiguration& config) {
    for (DockProfile& profile : config.profiles)
      profile.widgets.removeIf([&](const DockWidget& widget) { return widget.id == context.widget; });
  });
  EXPECT_EQ(close.count(), 1);
}

TEST(PanelsTest, SayWhatIsMissing) {
  SnapshotStore fixture;
  test::RecordingCommands commands;
  const PanelContext context = fixture.contextOf(u"appLauncher"_s, commands);
  fixture.store().edit([&](DockConfiguration& config) {
    for (DockProfile& profile : config.profiles)
      for (DockWidget& widget : profile.widgets)
        if (widget.id == context.widget) widget.options.clear();
  });
  const auto launcher = shown(context);
  launcher->findChild<Button*>()->click();
  EXPECT_EQ(commands.asked, QStringList{u"edit "_s + context.widget.toString()});

  const auto toggles = shown(fixture.contextOf(u"systemQuickToggles"_s));
  const QList<Switch*> switches = toggles->findChildren<Switch*>();
  ASSERT_EQ(switches.size(), 6);
  EXPECT_TRUE(switches[0]->isChecked());
  EXPECT_FALSE(switches[1]->isEnabled());
  EXPECT_EQ(switches[1]->accessibleDescription(), u"This computer has no Bluetooth adapter."_s);
  switches[0]->click();
  EXPECT_TRUE(switches[0]->isChecked()) << "the service did not follow, and the switch does not pretend";
}

TEST(PanelsTest, OfWhatComesLaterSaySoAndOfferNothingButAnAddressOfOnesOwn) {
  SnapshotStore fixture;
  for (const WidgetDefinition& definition : Catalog::items()) {
    if (!Rooms::comesLater(definition.id)) continue;
    PanelContext context = fixture.contextOf(definition.id);
    context.sources = [] {
      return KeptSources::given([] {
        TileSources sources = SnapshotFixture::sources();
        sources.remoteExamples.clear();
        return sources;
      });
    };
    const auto panel = shown(context);
    const QList<TextLabel*> labels = panel->findChildren<TextLabel*>();
    EXPECT_TRUE(std::ranges::any_of(labels, [](const TextLabel* label) {
      return label->isVisible() && label->text().contains(u"comes with a later version"_s);
    })) << definition.id.toStdString();
    QStringList offered;
    for (const Button* button : panel->findChildren<Button*>())
      if (button->isVisible()) offered << button->label();
    EXPECT_EQ(offered, isConnectedFamily(definition.family) ? QStringList{u"Connect…"_s} : QStringList())
        << definition.id.toStdString();
  }
}

TEST(PanelsTest, AreAsLargeAsTheirContentAndScrollWhereThereIsNoRoom) {
  SnapshotStore fixture;
  const auto panel = shown(fixture.contextOf(u"systemQuickToggles"_s));
  EXPECT_EQ(panel->panelSize(), QSize(320, 16 + 28 + 12 + 6 * 44 + 16));
  panel->resize(panel->width(), panel->height() / 2);
  QCoreApplication::processEvents();
  EXPECT_GT(panel->findChild<QScrollArea*>()->verticalScrollBar()->maximum(), 0);

  EXPECT_FALSE(panel->margins().isNull());
  panel->setDockLook(DockStyle::White, Backdrop::Opaque, false);
  EXPECT_TRUE(panel->margins().isNull());
  EXPECT_EQ(panel->sizeHint(), panel->panelSize());
  EXPECT_TRUE(panel->look().palette.light);
}

}  // namespace
}  // namespace tarnwick
