#include <QCoreApplication>
#include <QHBoxLayout>
#include <array>

#include "store/AppStore.h"
#include "views/controls/Buttons.h"
#include "views/controls/ChoiceGroup.h"
#include "views/settings/Pages.h"
#include "views/settings/SettingsWords.h"
#include "views/settings/StyleCard.h"
#include "views/window/CardGrid.h"
#include "views/window/WindowTheme.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kStyleColumns = 3;
constexpr int kBetweenStyles = 6;

constexpr auto kStyles = std::to_array<SettingChoice>({
    {QT_TRANSLATE_NOOP("Settings", "Dark Glass"), "darkGlass"},
    {QT_TRANSLATE_NOOP("Settings", "Light Glass"), "lightGlass"},
    {QT_TRANSLATE_NOOP("Settings", "Liquid Glass"), "liquidGlass"},
    {QT_TRANSLATE_NOOP("Settings", "Black"), "black"},
    {QT_TRANSLATE_NOOP("Settings", "White"), "white"},
    {QT_TRANSLATE_NOOP("Settings", "Transparent"), "transparent"},
});
constexpr auto kWidgetColors = std::to_array<SettingChoice>({
    {QT_TRANSLATE_NOOP("Settings", "Colorful"), "false"},
    {QT_TRANSLATE_NOOP("Settings", "Monochrome"), "true"},
});
constexpr auto kIconStyles = std::to_array<SettingChoice>({
    {QT_TRANSLATE_NOOP("Settings", "Default"), "default"},
    {QT_TRANSLATE_NOOP("Settings", "Auto"), "auto"},
    {QT_TRANSLATE_NOOP("Settings", "Dark"), "dark"},
    {QT_TRANSLATE_NOOP("Settings", "Monochrome"), "monochrome"},
});
constexpr auto kMagnifications = std::to_array<SettingChoice>({
    {QT_TRANSLATE_NOOP("Settings", "Off"), "off"},
    {QT_TRANSLATE_NOOP("Settings", "A little"), "little"},
    {QT_TRANSLATE_NOOP("Settings", "A lot"), "much"},
});
constexpr auto kContrasts = std::to_array<SettingChoice>({
    {QT_TRANSLATE_NOOP("Settings", "Auto"), "desktop"},
    {QT_TRANSLATE_NOOP("Settings", "On"), "on"},
    {QT_TRANSLATE_NOOP("Settings", "Off"), "off"},
});
constexpr auto kAppearances = std::to_array<SettingChoice>({
    {QT_TRANSLATE_NOOP("Settings", "Auto"), "auto"},
    {QT_TRANSLATE_NOOP("Settings", "Light"), "light"},
    {QT_TRANSLATE_NOOP("Settings", "Dark"), "dark"},
});

class AppearancePage final : public SettingsPage {
 public:
  AppearancePage(AppStore& store, const SettingsServices& services)
      : SettingsPage(SettingsWords::tr("Appearance"), store, services), services_(services) {
    addStyles();
    addSizes();
    addTiles();
    addPicture();
    addWindows();
  }

 private:
  void addStyles() {
    auto* cards = new CardGrid(kStyleColumns, theme::kCardRowPadding, kBetweenStyles);
    cards->setAccessibleName(SettingsWords::tr("Dock style"));
    QStringList words{cards->accessibleName()};
    QList<StyleCard*> group;
    for (const SettingChoice& style : kStyles) {
      auto* card = new StyleCard(QString::fromLatin1(style.value), settingsText(style.word), cards);
      cards->add(card, Qt::AlignHCenter);
      connect(card, &QAbstractButton::clicked, this,
              [this, card] { edit([&](DockConfiguration& config) { config.style = card->style(); }); });
      group << card;
      words << card->text();
    }
    Card& whole = *addCard();
    addOther(whole, cards, words.join(u' '));
    addFollowing(whole);
    const auto follows = [](const DockConfiguration& config) { return config.desk().styleFollows; };
    showWhile(
        cards, [follows](const DockConfiguration& config) { return !follows(config); },
        SettingsWords::tr("Only while “Follow light and dark” is off."));
    follow([group](const DockConfiguration& config) {
      for (StyleCard* card : group) {
        card->setChecked(card->style() == config.style);
        card->setDock(config.tiles, config.monochrome);
      }
      enterAtChosen(group);
    });
  }

  /// Two styles in place of one.
  void addFollowing(Card& card) {
    addSwitch(
        card,
        {QT_TRANSLATE_NOOP("Settings", "Follow light and dark"),
         QT_TRANSLATE_NOOP("Settings", "Uses one dock style while the desktop is light and another while it is dark."),
         QT_TRANSLATE_NOOP("Settings", "style theme night day automatic")},
        settingField(&DeskOptions::styleFollows));
    const auto follows = [](const DockConfiguration& config) { return config.desk().styleFollows; };
    const QString otherwise = SettingsWords::tr("Only while “Follow light and dark” is on.");
    showWhile(addDropDown(card, {QT_TRANSLATE_NOOP("Settings", "Light style")}, settingField(&DeskOptions::lightStyle),
                          kStyles),
              follows, otherwise);
    showWhile(addDropDown(card, {QT_TRANSLATE_NOOP("Settings", "Dark style")}, settingField(&DeskOptions::darkStyle),
                          kStyles),
              follows, otherwise);
  }

  void addSizes() {
    Card& card = *addCard();
    addSlider(card, {QT_TRANSLATE_NOOP("Settings", "Dock scale"), "", QT_TRANSLATE_NOOP("Settings", "size zoom")},
              settingField(&DockConfiguration::scale), {0.5, 1.6, 0.01, QT_TRANSLATE_NOOP("Settings", "%1%"), 0, 100});
    addSlider(card, {QT_TRANSLATE_NOOP("Settings", "Widget spacing"), "", QT_TRANSLATE_NOOP("Settings", "gap")},
              settingField(&DockConfiguration::spacing), {0, 24, 1, QT_TRANSLATE_NOOP("Settings", "%1 px"), 0});
    addSegments(card,
                {QT_TRANSLATE_NOOP("Settings", "Magnification"),
                 QT_TRANSLATE_NOOP("Settings", "How much widgets grow under the pointer."),
                 QT_TRANSLATE_NOOP("Settings", "zoom hover swell")},
                settingField(&DeskOptions::magnification), kMagnifications);
  }

  void addTiles() {
    Card& card = *addCard();
    addSwitch(card,
              {QT_TRANSLATE_NOOP("Settings", "Widget tile fills"),
               QT_TRANSLATE_NOOP("Settings", "Draws a background behind each widget.")},
              settingField(&DockConfiguration::tiles));
    FormRow* borders = addSwitch(card,
                                 {QT_TRANSLATE_NOOP("Settings", "Tile borders"),
                                  QT_TRANSLATE_NOOP("Settings", "Draws a thin border around that background.")},
                                 {[](const DockConfiguration& config) { return config.tileBorders.value_or(true); },
                                  [](DockConfiguration& config, const bool& on) { config.tileBorders = on; }});
    showWhile(
        borders, [](const DockConfiguration& config) { return config.tiles; },
        SettingsWords::tr("Only while “Widget tile fills” is on."));
    addSegments(
        card, {QT_TRANSLATE_NOOP("Settings", "Widget colors"), "", QT_TRANSLATE_NOOP("Settings", "colours monochrome")},
        {[](const DockConfiguration& config) { return config.monochrome ? u"true"_s : u"false"_s; },
         [](DockConfiguration& config, const QString& value) { config.monochrome = value == "true"_L1; }},
        kWidgetColors);
    addDropDown(
        card,
        {QT_TRANSLATE_NOOP("Settings", "App icons"), QT_TRANSLATE_NOOP("Settings", "Auto: dark icons in a dark dock."),
         QT_TRANSLATE_NOOP("Settings", "icon style applications")},
        settingField(&DesktopOptions::appIconStyle), kIconStyles);
    addSwitch(
        card,
        {QT_TRANSLATE_NOOP("Settings", "Reduce transparency"), QT_TRANSLATE_NOOP("Settings", "Makes the dock opaque."),
         QT_TRANSLATE_NOOP("Settings", "glass blur opaque")},
        settingField(&DesktopOptions::reduceTransparency));
    addSegments(
        card,
        {QT_TRANSLATE_NOOP("Settings", "High contrast"),
         QT_TRANSLATE_NOOP(
             "Settings",
             "Makes the dock opaque, adds borders and increases the contrast of text. Auto: as set in the desktop."),
         QT_TRANSLATE_NOOP("Settings", "accessibility legible borders")},
        settingField(&DeskOptions::contrast), kContrasts);
  }

  void addPicture() {
    Card& card = *addCard();
    auto* buttons = new QWidget;
    auto* line = new QHBoxLayout(buttons);
    line->setContentsMargins(0, 0, 0, 0);
    auto* remove = new Button(SettingsWords::tr("Remove"));
    auto* choose = new Button(SettingsWords::tr("Choose…"));
    line->addWidget(remove);
    line->addWidget(choose);
    addControl(card,
               {QT_TRANSLATE_NOOP("Settings", "Dock picture"),
                QT_TRANSLATE_NOOP("Settings", "Shows a picture as the dock’s background."),
                QT_TRANSLATE_NOOP("Settings", "background image photo wallpaper")},
               buttons);
    const auto hasPicture = [](const DockConfiguration& config) {
      return !config.desktopOptions().backgroundImage.isEmpty();
    };
    follow([remove, hasPicture](const DockConfiguration& config) { remove->setVisible(hasPicture(config)); });
    connect(remove, &QPushButton::clicked, this, [this, choose] {
      choose->setFocus(Qt::OtherFocusReason);
      edit([](DockConfiguration& config) { config.desktop.backgroundImage.clear(); });
    });
    connect(choose, &QPushButton::clicked, this, [this] { services_.commands.chooseDockPicture(); });
    const QString otherwise = SettingsWords::tr("Only while the dock has a picture.");
    showWhile(
        addSlider(card, {QT_TRANSLATE_NOOP("Settings", "Picture blur")}, settingField(&DesktopOptions::backgroundBlur),
                  {0, 40, 1, QT_TRANSLATE_NOOP("Settings", "%1 px"), 0}),
        hasPicture, otherwise);
    showWhile(addSlider(card,
                        {QT_TRANSLATE_NOOP("Settings", "Picture dimming"),
                         QT_TRANSLATE_NOOP("Settings", "Makes the widgets easier to read.")},
                        settingField(&DesktopOptions::backgroundDim),
                        {0, 0.9, 0.01, QT_TRANSLATE_NOOP("Settings", "%1%"), 0, 100}),
              hasPicture, otherwise);
  }

  void addWindows() {
    Card& card = *addCard();
    addSegments(card,
                {QT_TRANSLATE_NOOP("Settings", "Window appearance"),
                 QT_TRANSLATE_NOOP("Settings",
                                   "Makes Tarnwick’s windows and menus light or dark. Auto: as set in the desktop."),
                 QT_TRANSLATE_NOOP("Settings", "theme mode")},
                settingField(&DockConfiguration::appAppearance), kAppearances);
  }

  const SettingsServices& services_;
};

}  // namespace

SettingsPage* makeAppearancePage(AppStore& store, const SettingsServices& services) {
  return new AppearancePage(store, services);
}

}  // namespace tarnwick
