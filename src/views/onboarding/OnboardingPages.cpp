#include "views/onboarding/OnboardingPages.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <algorithm>
#include <functional>

#include "store/AppStore.h"
#include "views/controls/Buttons.h"
#include "views/controls/ControlAccessible.h"
#include "views/controls/Labels.h"
#include "views/controls/Switch.h"
#include "views/onboarding/AppMark.h"
#include "views/onboarding/DockScene.h"
#include "views/onboarding/KeyCaps.h"
#include "views/onboarding/StateLabel.h"
#include "views/window/CardGrid.h"
#include "views/window/Cards.h"
#include "views/window/LayoutCard.h"
#include "widgets/catalog/Kinds.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kPageMark = 64;
constexpr int kTop = 22;
constexpr int kCardSpace = 6;  // That cards of layouts have around them.
constexpr int kColumn = 560;   // The width of pages of text.
constexpr QSize kScene{760, 152};
constexpr QSize kLowScene{760, 138};  // Above more rows.
constexpr int kFeatureSymbol = 20;

struct OnboardingWords {
  Q_DECLARE_TR_FUNCTIONS(Onboarding)
};

QVBoxLayout* beginPage(QWidget* page, const QString& heading, const QString& sentence) {
  page->setAccessibleName(heading);
  auto* column = new QVBoxLayout(page);
  column->setContentsMargins(kTop, kTop, kTop, 0);
  column->setSpacing(0);
  column->addWidget(new AppMark(kPageMark), 0, Qt::AlignHCenter);
  column->addSpacing(12);
  auto* title = new TextLabel(heading, TextStyle::Display);
  auto* below = new TextLabel(sentence, TextStyle::Title, Tone::Secondary);
  QFont plain = below->font();
  plain.setWeight(QFont::Normal);
  below->setFont(plain);
  below->setWordWrap(true);
  for (TextLabel* label : {title, below}) label->setAlignment(Qt::AlignCenter);
  column->addWidget(title);
  column->addSpacing(2);
  column->addWidget(below);
  column->addSpacing(14);
  return column;
}

/// The column of a page, in its middle, as wide as that where there is space.
QVBoxLayout* addColumn(QVBoxLayout* page, int width = kColumn) {
  constexpr int beforeAll = 1000;
  auto* holder = new QWidget;
  holder->setMaximumWidth(width);
  auto* column = new QVBoxLayout(holder);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(12);
  // Stretches, and not an alignment, so that sentences wrap at the width that they have.
  auto* middle = new QHBoxLayout;
  middle->addStretch(1);
  middle->addWidget(holder, beforeAll);
  middle->addStretch(1);
  page->addLayout(middle);
  page->addStretch(1);
  return column;
}

/// A symbol in the colour that its subject has on the dock.
class FeatureMark final : public QWidget {
 public:
  FeatureMark(const QString& symbol, Accent accent) : symbol_(symbol), accent_(accent) {
    setFixedSize(kFeatureSymbol, kFeatureSymbol);
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    drawControlSymbol(painter, symbol_, rect(), lookOf(*this).palette.accent(accent_));
  }

 private:
  QString symbol_;
  Accent accent_;
};

QWidget* feature(const QString& symbol, Accent accent, const QString& title, const QString& sentence) {
  auto* row = new QWidget;
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(16, 12, 16, 12);
  layout->setSpacing(14);
  layout->addWidget(new FeatureMark(symbol, accent), 0, Qt::AlignVCenter);
  auto* text = new QVBoxLayout;
  text->setSpacing(2);
  text->addWidget(new TextLabel(title, TextStyle::Title));
  auto* below = new TextLabel(sentence, TextStyle::Body, Tone::Secondary);
  below->setWordWrap(true);
  text->addWidget(below);
  layout->addLayout(text, 1);
  return row;
}

}  // namespace

QWidget* makeWelcomePage() {
  auto* page = new QWidget;
  QVBoxLayout* column =
      beginPage(page, OnboardingWords::tr("A dock of live widgets"),
                OnboardingWords::tr("Live widgets and your apps in one row at the edge of the screen."));
  auto* card = new Card;
  card->add(feature(
      u"clock"_s, Accent::Orange, OnboardingWords::tr("Live widgets"),
      OnboardingWords::tr("Clocks, calendar, CPU and memory, timers and notes. Click a widget to open its panel.")));
  card->add(
      feature(u"square.grid.2x2"_s, Accent::Blue, OnboardingWords::tr("Your apps"),
              OnboardingWords::tr(
                  "Start apps, see which are running, and drop files on them. Click a folder to see its files.")));
  card->add(feature(u"magnifyingglass"_s, Accent::Teal, OnboardingWords::tr("Command bar and clipboard history"),
                    OnboardingWords::tr("One line finds apps, windows, files and what you copied, and does sums.")));
  card->add(feature(u"person.2"_s, Accent::Purple, OnboardingWords::tr("Profiles"),
                    OnboardingWords::tr("For example one set of widgets for work and one for the evening. Switch them "
                                        "yourself, by time, or per display.")));
  card->add(feature(
      u"battery.100"_s, Accent::Green, OnboardingWords::tr("Light and private"),
      OnboardingWords::tr(
          "Uses almost no processor time while nothing changes. Your settings stay in one file on this computer.")));
  QVBoxLayout* middle = addColumn(column, kScene.width());
  middle->addWidget(new DockScene(kLowScene));
  middle->addWidget(card);
  return page;
}

namespace {

/// A switch for what `field` gives of the settings, which it follows.
template <class Field>
Switch* makeSwitch(AppStore& store, const WindowServices& services, const QString& label, Field field) {
  auto* made = new Switch(label);
  const auto show = [made, &store, field] {
    const QSignalBlocker quiet(made);
    made->setChecked(std::invoke(field, store.config()));
  };
  QObject::connect(&store, &AppStore::configChanged, made, show);
  QObject::connect(made, &QAbstractButton::toggled, made, [&edits = services.edits, field](bool on) {
    edits.change([field, on](DockConfiguration& config) { std::invoke(field, config) = on; });
  });
  show();
  return made;
}

TextLabel* makeCaption(const QString& text) {
  auto* caption = new TextLabel(text, TextStyle::Caption, Tone::Secondary);
  caption->setWordWrap(true);
  return caption;
}

/// What the choice of a dock that is always there sets besides.
QWidget* makeSpaceSwitch(AppStore& store, const WindowServices& services) {
  const QString label = OnboardingWords::tr("Reserve Dock Space");
  auto* part = new QWidget;
  auto* column = new QVBoxLayout(part);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(4);
  auto* line = new QHBoxLayout;
  line->addWidget(new TextLabel(label, TextStyle::Title), 1);
  line->addWidget(makeSwitch(
      store, services, label, [](auto& config) -> auto& { return config.desktop.reserveSpace; }));
  column->addLayout(line);
  column->addWidget(makeCaption(OnboardingWords::tr("Maximized windows leave room for the dock.")));
  const auto applies = [&store] { return store.config().layout == DockLayout::Fixed; };
  QObject::connect(&store, &AppStore::configChanged, part, [part, applies] { part->setVisible(applies()); });
  if (!applies()) part->hide();  // Shown without a parent yet it would be a window.
  return part;
}

/// The last cell of the layouts.
QWidget* makeNote(int width, AppStore& store, const WindowServices& services) {
  auto* note = new QWidget;
  note->setFixedWidth(width);
  auto* column = new QVBoxLayout(note);
  column->setContentsMargins(kCardSpace + 6, 0, kCardSpace + 6, 0);
  column->setSpacing(6);
  column->addStretch();
  column->addWidget(makeSpaceSwitch(store, services));
  column->addStretch();
  column->addWidget(new TextLabel(OnboardingWords::tr("Starter widgets"), TextStyle::Title));
  column->addWidget(
      makeCaption(OnboardingWords::tr("Apps, time, weather, CPU, RAM and quick toggles. Add more from the library.")));
  column->addStretch();
  return note;
}

}  // namespace

void chooseLayout(DockConfiguration& config, DockLayout layout) {
  config.layout = layout;
  if (layout == DockLayout::Fixed) config.desktop.reserveSpace = true;
}

QWidget* makeLayoutPage(AppStore& store, const WindowServices& services) {
  auto* page = new QWidget;
  const Capability edges = services.abilities().edges;
  QVBoxLayout* column =
      beginPage(page, OnboardingWords::tr("Where should your dock live?"),
                edges ? OnboardingWords::tr("Pick one of seven layouts. You can change this at any time in Settings.")
                      : edges.reason);
  constexpr int perRow = 4;
  auto* grid = new CardGrid(perRow, 0, 0);
  setAccessibleRole(*grid, QAccessible::Grouping);
  grid->setAccessibleName(page->accessibleName());
  int cardWidth = 0;
  for (const DockLayout layout : kDockLayouts) {
    auto* card = new LayoutCard(layout, LayoutCard::Size::Large, grid);
    card->setReduceMotion(services.abilities().reducesMotion);
    grid->add(card);
    cardWidth = card->sizeHint().width();
    QObject::connect(card, &LayoutCard::chosen, page, [&edits = services.edits](DockLayout chosen) {
      edits.change([chosen](DockConfiguration& config) { chooseLayout(config, chosen); });
    });
    const auto show = [card, &store] { card->follow(store.config()); };
    QObject::connect(&store, &AppStore::configChanged, card, show);
    show();
  }
  grid->add(makeNote(cardWidth, store, services));
  addColumn(column, cardWidth * perRow)->addWidget(grid);
  return page;
}

namespace {

/// The row of something that is there or not.
void addState(Card* card, const QString& label, const QString& why, const Capability& there) {
  auto* state = new StateLabel(there.available);
  card->addRow(label, state, there ? why : there.reason);
  state->setAccessibleName(label + u": "_s + state->word());
}

QString howToBindTheBar() {
  return OnboardingWords::tr(
      "To open it by a key, add a shortcut for “tarnwick --command-bar” in the desktop’s "
      "settings.");
}

void addKeys(Card* card, const DesktopAbilities& abilities, bool hasBarKey) {
  if (!abilities.keysAnswered) return;
  const QString title = OnboardingWords::tr("Shortcuts");
  const QString why = abilities.dockKey.isEmpty()
                          ? OnboardingWords::tr("The dock’s shortcut is turned off.")
                          : OnboardingWords::tr("%1 hides and shows the dock.").arg(abilities.dockKey);
  addState(card, title, why, abilities.keys);
  if (!abilities.commandBarKey) return;
  const QString& bar = *abilities.commandBarKey;
  const QString barTitle = OnboardingWords::tr("Command bar");
  // The bar itself works.
  if (!abilities.keys || !hasBarKey) {
    card->addRow(barTitle, nullptr, howToBindTheBar());
    return;
  }
  addState(card, barTitle, OnboardingWords::tr("%1 opens it.").arg(bar),
           bar.isEmpty() ? Capability::no(OnboardingWords::tr(QT_TRANSLATE_NOOP(
                               "Onboarding",
                               "Another app uses this shortcut. Choose a different one in Settings, or add a shortcut "
                               "for “tarnwick --command-bar” in the desktop’s settings.")))
                         : Capability::yes());
}

/// The switch of the history of copies, and what it needs beside it.
void addClipboard(Card* card, AppStore& store, const WindowServices& services, const DesktopAbilities& abilities) {
  const QString title = OnboardingWords::tr("Clipboard history");
  const QString why = OnboardingWords::tr(
      "Keeps what you copy, on this computer only. What password managers copy is left out. Adds a "
      "clipboard widget to the dock.");
  if (!abilities.clipboard) return addState(card, title, why, abilities.clipboard);
  auto* history = makeSwitch(store, services, title, &DockConfiguration::clipboardEnabled);
  card->addRow(title, history, why);
  // Without one nothing would ever be recorded.
  QObject::connect(history, &QAbstractButton::clicked, history, [&store, &to = services.commands](bool on) {
    const bool has =
        std::ranges::any_of(store.widgets(), [](const DockWidget& each) { return each.kind == kind::clipboard; });
    if (on && !has) to.addWidget(QString(kind::clipboard), {});
  });
  auto* add = new Button(OnboardingWords::tr("Add Clipboard Widget"));
  QObject::connect(add, &QPushButton::clicked, add,
                   [&to = services.commands] { to.addWidget(QString(kind::clipboard), {}); });
  FormRow* missing = card->addRow(OnboardingWords::tr("Clipboard widget"), add,
                                  OnboardingWords::tr("What you copy is recorded while a clipboard widget stands on a "
                                                      "shown dock. At the moment none does."));
  const auto show = [missing, &store] {
    missing->setVisible(store.config().clipboardEnabled && !store.active().kinds.contains(kind::clipboard));
  };
  QObject::connect(&store, &AppStore::configChanged, missing, show);
  QObject::connect(&store, &AppStore::activeChanged, missing, show);
  show();
}

void fill(Card* card, AppStore& store, const WindowServices& services) {
  const DesktopAbilities abilities = services.abilities();
  const QString screens =
      abilities.isComposited
          ? OnboardingWords::tr("The dock is at the edge of the screen, above other windows.")
          : OnboardingWords::tr(QT_TRANSLATE_NOOP(
                "Onboarding", "The dock is at the edge of the screen. It is opaque because no compositor is running."));
  addState(card, OnboardingWords::tr("Screens and panels"), screens, abilities.edges);
  const QString apps = OnboardingWords::tr("Show running apps");
  const QString front = OnboardingWords::tr("Running apps show in the dock, and a click brings them to the front.");
  if (abilities.windows)
    card->addRow(apps, makeSwitch(store, services, apps, &DockConfiguration::liveApps), front);
  else
    addState(card, OnboardingWords::tr("Windows of other apps"), front, abilities.windows);
  addKeys(card, abilities, store.config().desktopOptions().commandBarEnabled);
  addClipboard(card, store, services, abilities);
  const QString notes = OnboardingWords::tr("Notifications");
  const QString tell = OnboardingWords::tr("Notifies you when a timer ends, a break is due or it is time to drink.");
  if (abilities.notifications)
    card->addRow(notes, makeSwitch(store, services, notes, &DockConfiguration::notificationsEnabled), tell);
  else
    addState(card, notes, tell, abilities.notifications);
  addState(card, OnboardingWords::tr("The system dock"),
           OnboardingWords::tr("Three layouts hide it while Tarnwick runs and restore it afterwards."),
           abilities.systemDock);
  const QString login = OnboardingWords::tr("Launch at login");
  const QString starts = OnboardingWords::tr("Starts Tarnwick when you log in.");
  if (abilities.loginEntry)
    card->addRow(login, makeSwitch(store, services, login, &DockConfiguration::launchAtLogin), starts);
  else
    addState(card, login, starts, abilities.loginEntry);
}

}  // namespace

QWidget* makeDesktopPage(AppStore& store, const WindowServices& services) {
  auto* page = new QWidget;
  QVBoxLayout* column =
      beginPage(page, OnboardingWords::tr("What works on this desktop"),
                OnboardingWords::tr("Features that this desktop does not support are marked. Everything else works."));
  auto* card = new Card;
  addColumn(column)->addWidget(card);  // Before rows of it come and go: without a parent it would be a window.
  fill(card, store, services);
  return page;
}

QWidget* makeDonePage(AppStore& store, const WindowServices& services) {
  auto* page = new QWidget;
  QVBoxLayout* column = beginPage(page, OnboardingWords::tr("Your dock is ready"),
                                  OnboardingWords::tr("You can change everything later in Settings."));
  const DesktopAbilities abilities = services.abilities();
  auto* card = new Card;
  const auto key = [](const QString& text) { return new KeyCaps(text); };
  const bool hasKeys = abilities.keysAnswered && abilities.keys;
  if (hasKeys && !abilities.dockKey.isEmpty())
    card->addRow(OnboardingWords::tr("Hide and show the dock"), key(abilities.dockKey));
  if (hasKeys && abilities.commandBarKey && !abilities.commandBarKey->isEmpty())
    card->addRow(OnboardingWords::tr("Open the command bar"), key(*abilities.commandBarKey));
  if (abilities.keysAnswered && !abilities.keys && abilities.commandBarKey)
    card->addRow(OnboardingWords::tr("Open the command bar"), nullptr, howToBindTheBar());
  card->addRow(OnboardingWords::tr("Open a widget"), nullptr,
               OnboardingWords::tr("Click it for its panel, right-click it for its menu, drag it to move it."));
  const bool hasIcon = abilities.tray && store.config().desktopOptions().showMenuBarIcon;
  card->addRow(
      OnboardingWords::tr("Everything else"), nullptr,
      hasIcon ? OnboardingWords::tr(
                    "Right-click the dock or click Tarnwick’s tray icon for widgets, layouts, profiles and Settings.")
              : OnboardingWords::tr("Right-click the dock for widgets, layouts, profiles and Settings."));
  auto* open = new Button(OnboardingWords::tr("Add Widgets…"));
  QObject::connect(open, &QPushButton::clicked, open, [&to = services.commands] { to.showLibrary({}); });
  card->addRow(OnboardingWords::tr("More widgets"), open,
               OnboardingWords::tr(
                   "The library shows a preview of each widget and marks those that come with a later version."));
  QVBoxLayout* middle = addColumn(column, kScene.width());
  middle->addWidget(new DockScene(kScene));
  middle->addWidget(card);
  return page;
}

}  // namespace tarnwick
