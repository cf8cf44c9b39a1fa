#include <QCoreApplication>
#include <QVBoxLayout>
#include <algorithm>
#include <array>

#include "dock/rules/DockPlacement.h"
#include "dock/rules/DockVisibility.h"
#include "dock/rules/KnownDisplays.h"
#include "store/AppStore.h"
#include "views/controls/Buttons.h"
#include "views/controls/Labels.h"
#include "views/controls/Segments.h"
#include "views/settings/Pages.h"
#include "views/settings/SettingsWords.h"
#include "views/window/CardGrid.h"
#include "views/window/DropDown.h"
#include "views/window/LayoutCard.h"
#include "views/window/WindowTheme.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kBetweenLayouts = 3;

constexpr auto kEdges = std::to_array<SettingChoice>({
    {QT_TRANSLATE_NOOP("Settings", "Bottom"), "bottom"},
    {QT_TRANSLATE_NOOP("Settings", "Top"), "top"},
});
constexpr auto kDodged = std::to_array<SettingChoice>({
    {QT_TRANSLATE_NOOP("Settings", "Off"), "off"},
    {QT_TRANSLATE_NOOP("Settings", "Any window"), "any"},
    {QT_TRANSLATE_NOOP("Settings", "The active window"), "active"},
    {QT_TRANSLATE_NOOP("Settings", "A maximized window"), "maximised"},
});
constexpr auto kAlignments = std::to_array<SettingChoice>({
    {QT_TRANSLATE_NOOP("Settings", "Left"), "left"},
    {QT_TRANSLATE_NOOP("Settings", "Center"), "center"},
    {QT_TRANSLATE_NOOP("Settings", "Right"), "right"},
});
constexpr auto kOverflows = std::to_array<SettingChoice>({
    {QT_TRANSLATE_NOOP("Settings", "Scroll"), "scroll"},
    {QT_TRANSLATE_NOOP("Settings", "Adapt Size"), "fit"},
});

bool reveals(const DockConfiguration& config) { return DockVisibility::reveals(config.layout); }
bool hasTrigger(const DockConfiguration& config) { return DockVisibility::hides(config.layout); }
bool hasEdge(const DockConfiguration& config) { return config.layout != DockLayout::Floating; }

/// The layouts that take the screen's edge from the dock that the desktop brings.
bool takesOver(const DockConfiguration& config) {
  return config.layout == DockLayout::Swap || config.layout == DockLayout::Replace ||
         config.layout == DockLayout::ReplaceAutoHide;
}

class LayoutPage final : public SettingsPage {
 public:
  LayoutPage(AppStore& store, const SettingsServices& services)
      : SettingsPage(SettingsWords::tr("Layout & Displays"), store, services), services_(services) {
    addLayouts();
    addReveal();
    addPlace();
    addDisplays();
    addSystemDock();
  }

 private:
  void addLayouts() {
    auto* all = new QWidget;
    auto* column = new QVBoxLayout(all);
    column->setContentsMargins(theme::kCardEnds + 2, theme::kCardEnds + 2, theme::kCardEnds + 2,
                               theme::kCardRowPadding);
    column->setSpacing(theme::kCardRowPadding);
    auto* cards = new CardGrid(kLayoutColumns, 0, kBetweenLayouts);
    cards->setAccessibleName(SettingsWords::tr("Layout"));
    QStringList words{cards->accessibleName()};
    QList<LayoutCard*> group;
    for (const DockLayout layout : kDockLayouts) {
      auto* card = new LayoutCard(layout, LayoutCard::Size::Small, cards);
      card->setReduceMotion(services_.abilities().reducesMotion);
      cards->add(card);
      connect(card, &LayoutCard::chosen, this,
              [this](DockLayout chosen) { edit([&](DockConfiguration& config) { config.layout = chosen; }); });
      group << card;
      words << label(layout) << description(layout);
    }
    auto* sentence = makeSentence({}, TextStyle::Body, Tone::Secondary);
    sentence->setContentsMargins(theme::kCardRowPadding + kBetweenLayouts, 0, theme::kCardRowPadding, theme::kCardEnds);
    column->addWidget(cards);
    column->addWidget(sentence);
    addOther(*addCard(), all, words.join(u' '));
    follow([this, group, sentence](const DockConfiguration& config) {
      for (LayoutCard* card : group) card->follow(config);
      const QString missing = whatIsMissing(config);
      sentence->setText(missing.isEmpty() ? description(config.layout) : description(config.layout) + u' ' + missing);
    });
  }

  QString whatIsMissing(const DockConfiguration& config) const {
    const DesktopAbilities can = services_.abilities();
    if (hasTrigger(config) && !can.edges) return can.edges.reason;
    return takesOver(config) && !can.systemDock ? can.systemDock.reason : QString();
  }

  void addReveal() {
    Card& card = *addCard();
    const SettingRange show{0, 3, 0.01, QT_TRANSLATE_NOOP("Settings", "%1 s"), 2};
    const SettingRange hide{0, 5, 0.01, QT_TRANSLATE_NOOP("Settings", "%1 s"), 2};
    showWhile(addSlider(card,
                        {QT_TRANSLATE_NOOP("Settings", "Show delay"),
                         QT_TRANSLATE_NOOP("Settings",
                                           "How long the pointer must stay at the edge before the dock appears.")},
                        settingField(&DesktopOptions::revealShowDelay), show),
              reveals);
    showWhile(addSlider(card,
                        {QT_TRANSLATE_NOOP("Settings", "Hide delay"),
                         QT_TRANSLATE_NOOP("Settings", "How long the dock stays visible after the pointer leaves it.")},
                        settingField(&DesktopOptions::revealHideDelay), hide),
              reveals);
    FormRow* dodge =
        addDropDown(card,
                    {QT_TRANSLATE_NOOP("Settings", "Hide only when a window would be covered"),
                     QT_TRANSLATE_NOOP("Settings", "The dock stays visible until a window covers its place."),
                     QT_TRANSLATE_NOOP("Settings", "dodge overlap intelligent")},
                    settingField(&DeskOptions::dodge), kDodged);
    showWhile(dodge, reveals);
    needs(dodge, services_.abilities().frames);
    FormRow* peep = addSwitch(
        card,
        {QT_TRANSLATE_NOOP("Settings", "Show the dock when something needs you"),
         QT_TRANSLATE_NOOP("Settings", "For three seconds, when an app in it asks for attention or a timer ends."),
         QT_TRANSLATE_NOOP("Settings", "peek urgent notification reminder")},
        settingField(&DeskOptions::peep));
    // Without that it is still of use: timers end, and some apps tell docks what they want by themselves.
    if (const Capability told = services_.abilities().attention; !told)
      peep->setHelp(SettingsWords::tr("%1 Timers, reminders and apps that say so themselves still show the dock.")
                        .arg(told.reason));
    showWhile(peep, reveals);
    const char* felt =
        services_.abilities().feelsOnePixelOnly
            ? QT_TRANSLATE_NOOP("Settings", "On this desktop the pointer must reach the last pixel of the screen.")
            : QT_TRANSLATE_NOOP("Settings", "How close to the edge the pointer must come.");
    showWhile(
        addSlider(card, {QT_TRANSLATE_NOOP("Settings", "Trigger area"), felt},
                  settingField(&DesktopOptions::triggerSize), {1, 30, 1, QT_TRANSLATE_NOOP("Settings", "%1 px"), 0}),
        hasTrigger);
  }

  void addPlace() {
    Card& card = *addCard();
    showWhile(addSegments(card, {QT_TRANSLATE_NOOP("Settings", "Screen edge")},
                          settingField(&DockConfiguration::position), kEdges),
              [](const DockConfiguration& config) { return config.layout == DockLayout::Fixed; });
    FormRow* alignment = addSegments(card, {QT_TRANSLATE_NOOP("Settings", "Alignment")},
                                     settingField(&DockConfiguration::alignment), kAlignments);
    // Sides of the screen are on their own sides, whichever way one reads.
    alignment->findChild<Segments*>()->setLayoutDirection(Qt::LeftToRight);
    showWhile(alignment, hasEdge);
    showWhile(
        addSlider(card,
                  {QT_TRANSLATE_NOOP("Settings", "Distance from the edge"), "",
                   QT_TRANSLATE_NOOP("Settings", "gap margin spacing")},
                  settingField(&DockConfiguration::edgeGap), {0, 180, 1, QT_TRANSLATE_NOOP("Settings", "%1 px"), 0}),
        hasEdge);
    addSegments(card, {QT_TRANSLATE_NOOP("Settings", "When widgets don't fit")},
                settingField(&DockConfiguration::overflow), kOverflows);
  }

  void addDisplays() {
    Card& card = *addCard();
    displays_ = new DropDown(SettingsWords::tr("Displays"));
    connect(displays_, &DropDown::valueChosen, this,
            [this](const QString& value) { edit([&](DockConfiguration& config) { config.display = value; }); });
    addControl(card,
               {QT_TRANSLATE_NOOP("Settings", "Displays"),
                QT_TRANSLATE_NOOP("Settings",
                                  "Main display: the desktop’s primary display. Attached display: the connected "
                                  "display that Tarnwick has known longest."),
                QT_TRANSLATE_NOOP("Settings", "monitor screen main attached every all")},
               displays_);
    follow([this](const DockConfiguration&) { listDisplays(); });
    connect(&services_.screens, &Screens::changed, this, &LayoutPage::listDisplays);
    addSwitch(card,
              {QT_TRANSLATE_NOOP("Settings", "Hide During Fullscreen"),
               QT_TRANSLATE_NOOP("Settings", "Hides on displays covered by fullscreen apps or video.")},
              settingField(&DesktopOptions::hideDuringFullscreen));
    showWhile(addSwitch(card,
                        {QT_TRANSLATE_NOOP("Settings", "Reserve Dock Space"),
                         services_.abilities().movesWindows
                             ? QT_TRANSLATE_NOOP("Settings",
                                                 "Maximized windows leave room for the dock, and windows under it are "
                                                 "moved aside until you quit or turn this off.")
                             : QT_TRANSLATE_NOOP("Settings",
                                                 "Maximized windows leave room for the dock. On this desktop loose "
                                                 "windows stay where they are."),
                         QT_TRANSLATE_NOOP("Settings", "struts")},
                        settingField(&DesktopOptions::reserveSpace)),
              [](const DockConfiguration& config) {
                return config.layout == DockLayout::Fixed || config.layout == DockLayout::Replace;
              });
  }

  void listDisplays() {
    const DockConfiguration& config = store().config();
    QList<KnownDisplay> known = knownDisplays(config, &services_.screens);
    const bool isNamed = config.display != "main"_L1 && config.display != "attached"_L1 && config.display != "all"_L1;
    if (isNamed && std::ranges::none_of(known, [&](const KnownDisplay& each) { return each.id == config.display; }))
      known.append({config.display, config.display, false});
    if (known != shown_ || displays_->count() == 0) {
      shown_ = known;
      const QSignalBlocker quiet(displays_);
      displays_->clear();
      displays_->addChoice(SettingsWords::tr("Main display"), u"main"_s);
      displays_->addChoice(SettingsWords::tr("Attached display"), u"attached"_s);
      displays_->addChoice(SettingsWords::tr("Every display"), u"all"_s);
      for (const KnownDisplay& display : known) displays_->addChoice(display.words(), display.id);
      displays_->updateGeometry();
    }
    displays_->chooseValue(config.display);
  }

  void addSystemDock() {
    Card& card = *addCard();
    auto* restore = new Button(SettingsWords::tr("Restore"));
    connect(restore, &QPushButton::clicked, this, [this] { services_.commands.restoreSystemDock(); });
    showWhile(addControl(card,
                         {QT_TRANSLATE_NOOP("Settings", "Restore the macOS Dock"),
                          QT_TRANSLATE_NOOP("Settings", "Gives the system dock its settings back.")},
                         restore),
              takesOver);
  }

  const SettingsServices& services_;
  DropDown* displays_ = nullptr;
  QList<KnownDisplay> shown_;
};

}  // namespace

SettingsPage* makeLayoutPage(AppStore& store, const SettingsServices& services) {
  return new LayoutPage(store, services);
}

}  // namespace tarnwick
