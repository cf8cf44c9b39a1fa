#include "views/onboarding/MenuBarPanel.h"

#include <QCoreApplication>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "store/AppStore.h"
#include "store/Commands.h"
#include "views/controls/Buttons.h"
#include "views/controls/ControlAccessible.h"
#include "views/controls/ControlTheme.h"
#include "views/controls/FullWidth.h"
#include "views/controls/Labels.h"
#include "views/controls/PartingLine.h"
#include "views/controls/Rows.h"
#include "views/controls/ScrollArea.h"
#include "views/controls/Switch.h"
#include "views/onboarding/AppMark.h"
#include "views/theme/Glass.h"
#include "views/window/LayoutCard.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kPanelMark = 24;
constexpr int kLayoutsInARow = 4;

struct MenuBarWords {
  Q_DECLARE_TR_FUNCTIONS(MenuBarPanel)
};

/// A word and a control on one line.
QWidget* line(const QString& word, QWidget* control) {
  auto* row = new QWidget;
  row->setFixedHeight(theme::kRowHeight);
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(new TextLabel(word, TextStyle::Body), 1);
  layout->addWidget(control);
  return row;
}

}  // namespace

MenuBarPanel::MenuBarPanel(AppStore& store, Commands& commands, bool reduceMotion)
    : store_(store),
      commands_(commands),
      reduceMotion_(reduceMotion),
      content_(new QWidget),
      scroll_(new ScrollArea(this)),
      column_(new QVBoxLayout(content_)),
      message_(new QWidget),
      messageText_(new TextLabel({}, TextStyle::Body)),
      dock_(new Switch(MenuBarWords::tr("Show Dock"))),
      layoutName_(new SectionLabel(MenuBarWords::tr("Layout"))),
      profiles_(new QWidget) {
  setAccessibleName(u"Tarnwick"_s);
  // A layout puts nothing outside of its widget, so what reaches over its edge has the space here.
  column_->setContentsMargins(theme::kRowOverhang, 0, theme::kRowOverhang, 0);
  column_->setSpacing(0);
  addHeader();
  column_->addWidget(line(MenuBarWords::tr("Show Dock"), dock_));
  addLayouts();
  addFullWidth(*column_, profiles_);
  fillProfiles();  // Tab goes through what there is in the order in which it was made.
  addEntries();
  scroll_->setWidget(content_);
  follow(content_);
  addFullWidth(frame(), scroll_);
  setScheme(true, Backdrop::Plain);

  connect(dock_, &QAbstractButton::clicked, this, [this] {
    commands_.toggleDock();
    // It stays on for a dock that only its layout had hidden.
    fill();
  });
  connect(&store_, &AppStore::configChanged, this, &MenuBarPanel::fill);
  connect(&store_, &AppStore::errorChanged, this, &MenuBarPanel::fill);
  fill();
}

MenuBarPanel::~MenuBarPanel() = default;

void MenuBarPanel::addHeader() {
  auto* header = new QWidget;
  header->setFixedHeight(theme::kPanelHeader);
  auto* row = new QHBoxLayout(header);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(theme::kRowGap);
  row->addWidget(new AppMark(kPanelMark));
  row->addWidget(new TextLabel(u"Tarnwick"_s, TextStyle::Title), 1);
  column_->addWidget(header);
  column_->addSpacing(theme::kSectionBelow);

  auto* says = new QHBoxLayout(message_);
  says->setContentsMargins(0, theme::kSectionBelow, 0, theme::kSectionBelow);
  says->setSpacing(theme::kRowGap);
  says->addWidget(new WarningMark, 0, Qt::AlignVCenter);
  messageText_->setWordWrap(true);
  says->addWidget(messageText_, 1);
  auto* dismiss = new IconButton(u"xmark"_s, MenuBarWords::tr("Dismiss"));
  dismiss->setGround(false);
  connect(dismiss, &QPushButton::clicked, this, [this] { store_.clearError(); });
  says->addWidget(dismiss);
  column_->addWidget(message_);
}

void MenuBarPanel::addLayouts() {
  column_->addWidget(layoutName_);
  auto* holder = new QWidget;
  setAccessibleRole(*holder, QAccessible::Grouping);
  holder->setAccessibleName(MenuBarWords::tr("Layout"));
  auto* grid = new QGridLayout(holder);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setSpacing(0);
  int place = 0;
  for (const DockLayout layout : kDockLayouts) {
    auto* card = new LayoutCard(layout, LayoutCard::Size::Tiny);
    card->setReduceMotion(reduceMotion_);
    grid->addWidget(card, place / kLayoutsInARow, place % kLayoutsInARow);
    ++place;
    connect(card, &LayoutCard::chosen, this, [this](DockLayout chosen) { commands_.chooseLayout(chosen); });
    const auto show = [this, card] { card->follow(store_.config()); };
    connect(&store_, &AppStore::configChanged, card, show);
    show();
  }
  column_->addWidget(holder);
}

void MenuBarPanel::addEntries() {
  column_->addWidget(new PartingLine(theme::kSectionBelow));
  continueSetup_ = addEntry(MenuBarWords::tr("Continue Setup…"), [this] { commands_.continueSetup(); });
  addEntry(MenuBarWords::tr("Add Widgets…"), [this] { commands_.showLibrary({}); });
  addEntry(MenuBarWords::tr("Settings…"), [this] { commands_.showSettings(); });
  addEntry(MenuBarWords::tr("Help"), [this] { commands_.showHelp(); });
  addEntry(MenuBarWords::tr("About Tarnwick"), [this] { commands_.showAbout(); });
  column_->addWidget(new PartingLine(theme::kSectionBelow));
  addEntry(MenuBarWords::tr("Quit Tarnwick"), [this] { commands_.quit(); });
}

ListRow* MenuBarPanel::addEntry(const QString& title, const std::function<void()>& act) {
  auto* row = new ListRow(title);
  row->setClickable(true);
  connect(row, &QPushButton::clicked, this, [this, act] {
    Q_EMIT closeRequested();
    act();
  });
  addFullWidth(*column_, row);
  return row;
}

void MenuBarPanel::fill() {
  const DockConfiguration& config = store_.config();
  message_->setVisible(!store_.error().isEmpty());
  messageText_->setText(store_.error());
  if (continueSetup_) continueSetup_->setVisible(!config.onboardingComplete);
  layoutName_->setTrailing(label(config.layout));
  const QSignalBlocker quiet(dock_);
  dock_->setChecked(!commands_.isDockHidden());
}

void MenuBarPanel::fillProfiles() {
  const DockConfiguration& config = store_.config();
  auto* column = new QVBoxLayout(profiles_);
  column->setContentsMargins(theme::kRowOverhang, 0, theme::kRowOverhang, 0);
  column->setSpacing(0);
  profiles_->setVisible(config.profiles.size() > 1);
  column->addWidget(new SectionLabel(MenuBarWords::tr("Profiles")));
  for (const DockProfile& profile : config.profiles) {
    auto* row = new ListRow(profile.name);
    row->setClickable(true);
    row->setCheckable(true);
    addFullWidth(*column, row);
    const QUuid id = profile.id;
    const auto show = [this, row, id] {
      const bool active = store_.profile().id == id;
      row->setChecked(active);
      row->setValue(active ? MenuBarWords::tr("Active") : QString(), Tone::AccentWord);
    };
    connect(row, &QPushButton::clicked, this, [this, id, show] {
      store_.selectProfile(id);
      show();  // A click on the active one changes nothing, and it stays so.
    });
    connect(&store_, &AppStore::configChanged, row, show);
    show();
  }
}

void MenuBarPanel::setScheme(bool dark, Backdrop backdrop) {
  setLook({Palette::make(dark ? DockStyle::DarkGlass : DockStyle::LightGlass, backdrop, false), look().accent});
}

void MenuBarPanel::resizeEvent(QResizeEvent* event) {
  GlassPane::resizeEvent(event);
  if (!look().palette.panel.shadow.isValid()) setMask(Glass::outline(rect(), corner()));
}

QSize MenuBarPanel::sizeHint() const {
  const int width = theme::kPanelWidth;
  const int height =
      scroll_->contentHeight(width - theme::kPanelPadding * 2 + theme::kRowOverhang * 2) + theme::kPanelPadding * 2;
  return QSize(width, height).grownBy(margins());
}

void MenuBarPanel::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Down)
    focusNextChild();
  else if (event->key() == Qt::Key_Up)
    focusPreviousChild();
  else
    QWidget::keyPressEvent(event);
}

}  // namespace tarnwick
