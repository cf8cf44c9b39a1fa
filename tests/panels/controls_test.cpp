#include <gtest/gtest.h>

#include <QAccessible>
#include <QClipboard>
#include <QHelpEvent>
#include <QMimeData>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>
#include <QVBoxLayout>
#include <cmath>

#include "support/TestFrameClock.h"
#include "support/Wait.h"
#include "views/controls/Buttons.h"
#include "views/controls/Charts.h"
#include "views/controls/Fields.h"
#include "views/controls/PanelTip.h"
#include "views/controls/PlainTip.h"
#include "views/controls/Rows.h"
#include "views/controls/ScrollArea.h"
#include "views/controls/Segments.h"
#include "views/controls/Slider.h"
#include "views/controls/Stepper.h"
#include "views/controls/Switch.h"
#include "views/controls/TipBubble.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

struct Window : QWidget {
  QVBoxLayout column{this};

  template <class Control>
  Control* add(Control* control) {
    column.addWidget(control);
    return control;
  }
  void bring() {
    show();
    activateWindow();
    QApplication::setActiveWindow(this);
  }
  /// What Tab reaches, one after the other, by their names.
  QStringList tour() {
    QStringList names;
    QWidget* first = nullptr;
    for (int i = 0; i < 40; ++i) {
      QTest::keyClick(QApplication::focusWidget() ? QApplication::focusWidget() : this, Qt::Key_Tab);
      QWidget* at = QApplication::focusWidget();
      if (!at || at == first) break;
      if (!first) first = at;
      names << QAccessible::queryAccessibleInterface(at)->text(QAccessible::Name);
    }
    names.sort();
    return names;
  }
};

TEST(ControlsTest, AreReachedByTabAndHaveNames) {
  Window window;
  window.add(new Button(u"Save & Close"_s));
  window.add(new IconButton(u"plus"_s, u"Add"_s));
  window.add(new Switch(u"Wi-Fi"_s));
  window.add(new Slider(u"Volume"_s));
  window.add(new Segments(u"Unit"_s, {u"Day"_s}));
  window.add(new TextField(u"Address"_s));
  window.add(new SearchField(u"Search"_s));
  window.add(new TextArea(u"Note"_s));
  window.add(new CheckRow(u"Fix & ship"_s));
  window.add(new ListRow(u"Still"_s));
  window.add(new ListRow(u"Open"_s))->setClickable(true);
  auto* stepper = window.add(new Stepper(u"Minutes"_s));
  stepper->setValue(5);
  window.bring();
  EXPECT_EQ(window.tour(), (QStringList{u"Add"_s, u"Address"_s, u"Day"_s, u"Decrease Minutes"_s, u"Fix & ship"_s,
                                        u"Increase Minutes"_s, u"Note"_s, u"Open"_s, u"Save & Close"_s, u"Search"_s,
                                        u"Volume"_s, u"Wi-Fi"_s}));
}

/// Its clocks outlive it, as the borrowed ones of a window do.
struct Clocks final : FrameClocks {
  std::unique_ptr<FrameClock> make(const QString&) override {
    auto clock = std::make_unique<test::TestFrameClock>();
    made = clock.get();
    return clock;
  }
  test::TestFrameClock* made = nullptr;
};

TEST(ControlsTest, ASwitchMovesByTheClockOfWhatItIsIn) {
  struct Ground final : Window, LookSource {
    const ControlLook& look() const override { return own; }
    ControlLook own;
  };
  Clocks clocks;
  Ground outer;
  outer.setClocks(clocks);
  auto* inner = outer.add(new Ground);  // It has a look of its own but no clocks.
  auto* toggle = inner->add(new Switch(u"On"_s));
  toggle->setChecked(true);
  EXPECT_FALSE(clocks.made) << "nobody sees it";
  outer.bring();
  const QImage on = toggle->grab().toImage();
  toggle->setChecked(false);
  ASSERT_TRUE(clocks.made);
  EXPECT_TRUE(clocks.made->isRunning());
  EXPECT_EQ(toggle->grab().toImage(), on);
  clocks.made->beat(1);
  EXPECT_FALSE(clocks.made->isRunning());
  EXPECT_NE(toggle->grab().toImage(), on);
}

TEST(ControlsTest, AnswerTheKeyboard) {
  Window window;
  auto* button = window.add(new Button(u"Go"_s));
  auto* toggle = window.add(new Switch(u"On"_s));
  auto* slider = window.add(new Slider(u"Volume"_s));
  auto* segments = window.add(new Segments(u"Unit"_s, {u"Day"_s, u"Week"_s}));
  auto* stepper = window.add(new Stepper(u"Minutes"_s));
  auto* search = window.add(new SearchField(u"Search"_s));
  auto* note = window.add(new TextArea(u"Note"_s));
  window.bring();
  QSignalSpy clicked(button, &QPushButton::clicked);
  for (const int key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) QTest::keyClick(button, Qt::Key(key));
  EXPECT_EQ(clicked.count(), 3);
  QTest::keyClick(toggle, Qt::Key_Return);
  EXPECT_TRUE(toggle->isChecked());
  slider->setValue(50);
  QTest::keyClick(slider, Qt::Key_Right);
  EXPECT_EQ(slider->value(), 51);
  QSignalSpy chosen(segments, &Segments::chosenChanged);
  segments->setChosen(1);
  EXPECT_EQ(chosen.count(), 0) << "only the user's choice is told";
  QTest::mouseClick(segments->findChildren<QPushButton*>().first(), Qt::LeftButton);
  EXPECT_EQ(chosen.count(), 1);
  stepper->setRange(0, 2);
  for (int i = 0; i < 4; ++i) QTest::keyClick(stepper, Qt::Key_Up);
  EXPECT_EQ(stepper->value(), 2);
  search->setText(u"abc"_s);
  QTest::keyClick(search, Qt::Key_Escape);
  EXPECT_TRUE(search->text().isEmpty());
  QGuiApplication::clipboard()->setMimeData(new QMimeData);
  QTest::keyClick(note, Qt::Key_V, Qt::ControlModifier);
  EXPECT_TRUE(note->toPlainText().isEmpty()) << "an empty clipboard is survived";
}

TEST(ControlsTest, ShowFocusOnlyToTheKeyboard) {
  Window window;
  auto* button = window.add(new Button(u"Go"_s));
  window.bring();
  button->clearFocus();
  const QImage rest = button->grab().toImage();
  button->setFocus(Qt::ActiveWindowFocusReason);
  EXPECT_EQ(button->grab().toImage(), rest);
  button->clearFocus();
  button->setFocus(Qt::TabFocusReason);
  EXPECT_NE(button->grab().toImage(), rest);
}

TEST(ControlsTest, DrawValuesThatMakeNoSense) {
  ChartView chart(u"Load"_s);
  chart.resize(200, 64);
  chart.setSeries({{{qQNaN(), qInf(), -5, 1e300}, {}}});
  chart.grab();
  ProgressBar bar(u"Disk"_s);
  for (const double share : {qQNaN(), -1.0}) {
    bar.setShare(share);
    EXPECT_EQ(bar.value(), 0);
  }
  bar.setShare(7);
  EXPECT_EQ(bar.value(), bar.maximum());
}

TEST(Charts, TellTheValueUnderThePointerAndWhatTheirEdgesMean) {
  for (const ChartView::Kind kind : {ChartView::Kind::Line, ChartView::Kind::Bars}) {
    QList<double> told;
    ChartView chart(u"Visitors"_s, kind);
    chart.resize(200, 64);
    chart.setSeries({{{-4, 10, 30, 20}, {}}});
    chart.setMinimum(-4);
    chart.setWords([&told](double value) {
      told << value;
      return QString::number(value);
    });
    const auto toldAt = [&](int x) {
      const QPointF at(x, 30);
      QMouseEvent move(QEvent::MouseMove, at, chart.mapToGlobal(at), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
      QCoreApplication::sendEvent(&chart, &move);
      told.clear();
      chart.grab();
      return told;
    };
    EXPECT_EQ(toldAt(2), (QList<double>{-4, 30, -4}));
    EXPECT_EQ(toldAt(125).value(0), 30);
    EXPECT_EQ(toldAt(500).value(0), 20) << "the last one is nearest";
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(&chart, &leave);
    told.clear();
    chart.grab();
    EXPECT_TRUE(told.isEmpty());
  }
}

TEST(Charts, SayWhenAValueWasAndGoFromValueToValueByTheArrows) {
  Window window;
  auto* chart = window.add(new ChartView(u"Visitors"_s));
  EXPECT_EQ(chart->focusPolicy(), Qt::NoFocus) << "there is nothing to be told";
  chart->setSeries({{{10, 20, 30, 40}, {}}});
  chart->setWords([](double value) { return QString::number(value); });
  chart->setPlaces([](qsizetype before) { return before == 2 ? QString() : u"%1 days ago"_s.arg(before); });
  chart->setAccessibleDescription(u"Highest 40"_s);
  window.bring();
  chart->clearFocus();
  chart->setFocus(Qt::TabFocusReason);
  const auto spoken = [chart](QAccessible::Text kind) {
    return QAccessible::queryAccessibleInterface(chart)->text(kind);
  };
  EXPECT_EQ(spoken(QAccessible::Description), u"40 · 0 days ago. Highest 40"_s);
  const struct {
    Qt::Key key;
    QString told;
  } cases[] = {
      {Qt::Key_Right, u"40 · 0 days ago"_s}, {Qt::Key_Left, u"30 · 1 days ago"_s}, {Qt::Key_Left, u"20"_s},
      {Qt::Key_Home, u"10 · 3 days ago"_s},  {Qt::Key_Left, u"10 · 3 days ago"_s}, {Qt::Key_End, u"40 · 0 days ago"_s},
  };
  for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
    chart->setLayoutDirection(direction);  // Time goes on to the right in both.
    for (const auto& each : cases) {
      QTest::keyClick(chart, each.key);
      EXPECT_EQ(chart->pointedWords(), each.told);
      EXPECT_EQ(spoken(QAccessible::Value), each.told);
    }
  }
  // What follows moves on below what is pointed at.
  QTest::keyClick(chart, Qt::Key_Left);
  chart->setSeries({{{20, 30, 40, 50}, {}, u"In"_s}, {{1, 2, 3}, {}, u"Out"_s}});
  EXPECT_EQ(chart->pointedWords(), u"In 40 · Out 2 · 1 days ago"_s);
  chart->setSeries({{{20}, {}}});
  EXPECT_EQ(chart->pointedWords(), QString());
  chart->clearFocus();
  EXPECT_EQ(spoken(QAccessible::Description), u"Highest 40"_s);
}

/// A pane in the colours of the dock, with a control on it.
struct Pane final : QWidget, LookSource {
  ControlLook is;

  explicit Pane(QWidget* control, const Palette& palette) {
    is.palette = palette;
    auto* column = new QVBoxLayout(this);
    column->addWidget(control);
    QPalette ground;
    ground.setColor(QPalette::Window, palette.panel.bodyTop);
    setPalette(ground);
    setAutoFillBackground(true);
  }
  const ControlLook& look() const override { return is; }
};

TEST(HighContrast, LeavesTheWordsOfWhatIsOutOfUseReadable) {
  const auto luminance = [](const QColor& color) {
    const auto part = [](float c) { return c <= 0.03928F ? c / 12.92F : std::pow((c + 0.055F) / 1.055F, 2.4F); };
    return 0.2126F * part(color.redF()) + 0.7152F * part(color.greenF()) + 0.0722F * part(color.blueF());
  };
  const std::function<QWidget*()> makers[] = {
      [] { return new Button(u"■■■"_s); }, [] { return new Button(u"■■■"_s, Button::Role::Primary); },
      [] { return new Button(u"■■■"_s, Button::Role::Quiet); }, [] { return new CheckRow(u"■■■"_s); }};
  for (const DockStyle style : {DockStyle::DarkGlass, DockStyle::LightGlass}) {
    for (const auto& make : makers) {
      QWidget* control = make();
      Pane pane(control, Palette::make(style, Backdrop::Opaque, false, true));
      control->setEnabled(false);
      pane.resize(160, 60);
      pane.ensurePolished();
      const QImage picture = control->grab().toImage();
      // Along the middle of the words there is nothing but ink and ground.
      float least = 1, most = 0;
      for (int x = 30; x < picture.width() - 4; ++x) {
        const float here = luminance(picture.pixelColor(x, picture.height() / 2));
        least = std::min(least, here);
        most = std::max(most, here);
      }
      EXPECT_GE((most + 0.05F) / (least + 0.05F), 7) << control->metaObject()->className();
    }
  }
}

TEST(PanelTips, LookLikeTheDocksAndGoWithThePointer) {
  PanelTip::install();
  auto* control = new Button(u"Stop"_s);
  Pane pane(control, Palette::make(DockStyle::DarkGlass, Backdrop::Plain, false));
  pane.show();
  const auto ask = [](QWidget& what) {
    QHelpEvent event(QEvent::ToolTip, {5, 5}, what.mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(&what, &event);
  };
  const auto bubble = [&pane]() -> const TipBubble* {
    for (const auto* each : pane.findChildren<TipBubble*>())
      if (each->isVisible()) return each;
    return nullptr;
  };
  const auto tip = [&] { return bubble() ? bubble()->text() : QString(); };
  ask(*control);
  EXPECT_EQ(tip(), QString()) << "it has none";
  for (const QString& words : {u"Stops it"_s, u"<b>R&amp;D</b> & \"co\""_s}) {
    setPlainTip(*control, words);
    ask(*control);
    EXPECT_EQ(tip(), words);
    EXPECT_TRUE(pane.findChild<TipBubble*>()->windowFlags().testFlag(Qt::WindowTransparentForInput));
  }
  const std::function<void()> ends[] = {[&] {
                                          QEvent leave(QEvent::Leave);
                                          QCoreApplication::sendEvent(control, &leave);
                                        },
                                        [&] { QTest::mousePress(control, Qt::LeftButton); },
                                        [&] { QTest::keyClick(&pane, Qt::Key_Tab); }, [&] { control->hide(); }};
  for (const auto& end : ends) {
    control->show();
    ask(*control);
    ASSERT_NE(tip(), QString());
    end();
    EXPECT_TRUE(waitFor([&] { return tip().isEmpty(); }));
  }
  // At the screen's side a tip stays on it, unless the desktop alone knows where that is.
  control->show();
  pane.move(pane.screen()->geometry().right() - pane.width() / 2, 200);
  for (const bool knowsPlaces : {true, false}) {
    PanelTip::install(knowsPlaces);
    ask(*control);
    ASSERT_TRUE(bubble());
    const int beside = control->mapToGlobal(control->rect().center()).x();
    EXPECT_EQ(std::abs(bubble()->geometry().center().x() - beside) <= 1, !knowsPlaces);
    QTest::keyClick(&pane, Qt::Key_Tab);
    EXPECT_TRUE(waitFor([&] { return !bubble(); }));
  }
  // What is no part of a panel or a window of ours keeps the toolkit's.
  QWidget plain;
  plain.setToolTip(u"Plain"_s);
  plain.show();
  ask(plain);
  EXPECT_EQ(plain.findChild<TipBubble*>(), nullptr);
  QToolTip::hideText();
}

}  // namespace
}  // namespace tarnwick
