#include <QCoreApplication>
#include <QTimer>
#include <algorithm>
#include <optional>

#include "commandbar/WebSearch.h"
#include "store/AppStore.h"
#include "views/controls/Buttons.h"
#include "views/controls/Fields.h"
#include "views/settings/Pages.h"
#include "views/settings/SettingsWords.h"
#include "views/settings/ShortcutRow.h"
#include "views/window/DropDown.h"
#include "widgets/catalog/Kinds.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// Stands in the list of engines for an address of the user's own.
constexpr auto kOwnAddress = "own"_L1;

bool isEngine(const QString& choice) {
  return std::ranges::any_of(WebSearch::engines(),
                             [&](const WebSearch::Engine& engine) { return choice == QLatin1StringView(engine.id); });
}

QString defaultEngine() { return QString::fromLatin1(WebSearch::engines().front().id); }

class CommandBarPage final : public SettingsPage {
 public:
  CommandBarPage(AppStore& store, const SettingsServices& services)
      : SettingsPage(SettingsWords::tr("Command Bar"), store, services), services_(services) {
    addKey();
    addSources();
    addWebSearch();
    follow([this](const DockConfiguration& config) { showChoice(config.desk().webSearch); });
    // Which widgets are shown may change without the settings.
    connect(&store, &AppStore::activeChanged, this, &CommandBarPage::refresh);
  }

 protected:
  void hideEvent(QHideEvent* event) override {
    if (isOwn_) takeAddress();
    isOwn_ = false;
    address_->row->setFault({});
    address_->field->setFaulty(false);
    SettingsPage::hideEvent(event);
  }

  void showEvent(QShowEvent* event) override {
    // An address that was not entered in full is not what is used.
    showChoice(store().config().desk().webSearch);
    SettingsPage::showEvent(event);
  }

 private:
  struct Address {
    TextField* field;
    FormRow* row;
  };

  void addKey() {
    Card& card = *addCard();
    addShortcutRow(*this, card, services_, Shortcut::CommandBar);
    const auto say = [&](const QString& label, const QString& sentence, const QString& words = {}) {
      auto* row = new FormRow(label, nullptr, sentence);
      addOther(card, row, label + u' ' + sentence + u' ' + words);
      return row;
    };
    FormRow* command =
        say(SettingsWords::tr("Without a shortcut"),
            SettingsWords::tr(
                "The command “tarnwick --command-bar” opens the bar too, from a terminal or from a key of the "
                "desktop’s own."),
            SettingsWords::tr("terminal compositor"));
    // Where there are no shortcuts, the row of the key says that.
    showWhile(command, [this](const DockConfiguration&) {
      const DesktopAbilities abilities = services_.abilities();
      return !abilities.keysAnswered || abilities.keys;
    });
    say(SettingsWords::tr("What it does"),
        SettingsWords::tr("Finds what is switched on below and does sums. What you type stays on this "
                          "computer unless you open a web search."),
        SettingsWords::tr("calculator privacy launcher"));
  }

  void addSources() {
    Card& card = *addCard(SettingsWords::tr("What it finds"));
    const auto add = [&](const SettingText& text, bool DeskOptions::*option) {
      return addSwitch(card, text, settingField(option));
    };
    add({QT_TRANSLATE_NOOP("Settings", "Apps"), QT_TRANSLATE_NOOP("Settings", "By name, and by what they are for."),
         QT_TRANSLATE_NOOP("Settings", "applications programs launch start")},
        &DeskOptions::barApps);
    needs(add({QT_TRANSLATE_NOOP("Settings", "Open windows"),
               QT_TRANSLATE_NOOP("Settings", "Switches to a window by its title."),
               QT_TRANSLATE_NOOP("Settings", "switch titles")},
              &DeskOptions::barWindows),
          services_.abilities().windows);
    add({QT_TRANSLATE_NOOP("Settings", "Widgets"), QT_TRANSLATE_NOOP("Settings", "Adds one to the dock."),
         QT_TRANSLATE_NOOP("Settings", "library tiles")},
        &DeskOptions::barWidgets);
    add({QT_TRANSLATE_NOOP("Settings", "Symbols"),
         QT_TRANSLATE_NOOP("Settings", "Signs, arrows and keyboard symbols by name. Return copies the character."),
         QT_TRANSLATE_NOOP("Settings", "characters")},
        &DeskOptions::barSymbols);
    add({QT_TRANSLATE_NOOP("Settings", "Emoji"), QT_TRANSLATE_NOOP("Settings", "By name. Return copies the character."),
         QT_TRANSLATE_NOOP("Settings", "smileys characters")},
        &DeskOptions::barEmoji);
    addClipboard(card);
    add({QT_TRANSLATE_NOOP("Settings", "Files"),
         QT_TRANSLATE_NOOP("Settings",
                           "Files and folders in your home folder by name. The list of names stays on this computer "
                           "and is deleted when you turn this off."),
         QT_TRANSLATE_NOOP("Settings", "documents folders index")},
        &DeskOptions::barFiles);
    add({QT_TRANSLATE_NOOP("Settings", "Settings"),
         QT_TRANSLATE_NOOP("Settings", "Opens a section of Settings, or turns a switch on or off.")},
        &DeskOptions::barSettings);
  }

  void addClipboard(Card& card) {
    FormRow* row = addSwitch(card,
                             {QT_TRANSLATE_NOOP("Settings", "Copied texts"),
                              QT_TRANSLATE_NOOP("Settings", "From the clipboard history. Return copies one again."),
                              QT_TRANSLATE_NOOP("Settings", "clipboard history paste")},
                             settingField(&DeskOptions::barClipboard));
    follow([row](const DockConfiguration& config) {
      row->setHelp(config.clipboardEnabled
                       ? SettingsWords::tr("From the clipboard history. Return copies one again.")
                       : SettingsWords::tr("The clipboard history is off. Turn it on in the section “Clipboard”."));
    });
    auto* add = new Button(SettingsWords::tr("Add Clipboard Widget"));
    connect(add, &QPushButton::clicked, this, [this] { services_.commands.addWidget(kind::clipboard, {}); });
    FormRow* missing =
        addControl(card,
                   {QT_TRANSLATE_NOOP("Settings", "Clipboard widget"),
                    QT_TRANSLATE_NOOP("Settings", "What you copy is recorded only while one is on a dock."),
                    QT_TRANSLATE_NOOP("Settings", "copy paste history")},
                   add);
    showWhile(missing, [this](const DockConfiguration& config) {
      return config.clipboardEnabled && config.desk().barClipboard && !store().active().kinds.contains(kind::clipboard);
    });
  }

  void addWebSearch() {
    Card& card = *addCard(SettingsWords::tr("Web"));
    addSwitch(card,
              {QT_TRANSLATE_NOOP("Settings", "Web addresses and web search"),
               QT_TRANSLATE_NOOP("Settings", "Nothing is sent before you open the row."),
               QT_TRANSLATE_NOOP("Settings", "internet browser")},
              settingField(&DeskOptions::barWeb));
    engine_ = new DropDown(SettingsWords::tr("Search engine"));
    QStringList words{SettingsWords::tr("internet browser search web")};
    for (const WebSearch::Engine& engine : WebSearch::engines()) {
      words << QString::fromLatin1(engine.name);
      engine_->addChoice(words.last(), QString::fromLatin1(engine.id));
    }
    words << SettingsWords::tr("Another address");
    engine_->addChoice(words.last(), kOwnAddress);
    FormRow* choice = addControl(card, {QT_TRANSLATE_NOOP("Settings", "Search engine")}, engine_);
    choice->setSearchWords(words);
    const QString whileOff = SettingsWords::tr("Only while the web is searched.");
    showWhile(
        choice, [](const DockConfiguration& config) { return config.desk().barWeb; }, whileOff);
    connect(engine_, &DropDown::valueChosen, this, &CommandBarPage::chooseEngine);

    auto* field = new TextField(SettingsWords::tr("Address of the search"));
    field->setPlaceholderText(u"https://example.org/search?q=%s"_s);
    const QString help = SettingsWords::tr("An https address with %s in the place of what you search for.");
    address_ = Address{field, FormRow::wide(SettingsWords::tr("Address of the search"), field, help)};
    addOther(card, address_->row, address_->row->label() + u' ' + help + u' ' + words.join(u' '));
    showWhile(
        address_->row, [this](const DockConfiguration& config) { return config.desk().barWeb && isOwn_; },
        SettingsWords::tr("Only for another address as the search engine."));
    connect(field, &QLineEdit::editingFinished, this, &CommandBarPage::takeAddress);
    // A screen reader sets the text without entering the field.
    connect(field, &QLineEdit::textChanged, this, [this, field] { field->hasFocus() ? sayFault({}) : takeAddress(); });
  }

  void chooseEngine(const QString& value) {
    isOwn_ = value == kOwnAddress;
    sayFault({});
    if (!isOwn_)
      storeChoice(value == defaultEngine() ? QString() : value);
    else if (WebSearch::problemWith(address_->field->text().trimmed()).isEmpty())
      takeAddress();
    refresh();
    if (!isOwn_) return;
    address_->field->setFocus();
    showAddress();
  }

  /// Stores the address if it can be used; else says why it is not.
  void takeAddress() {
    const QString address = address_->field->text().trimmed();
    if (!isOwn_ || address.isEmpty()) return sayFault({});
    const QString problem = WebSearch::problemWith(address);
    sayFault(problem);
    if (problem.isEmpty()) storeChoice(address);
  }

  void sayFault(const QString& sentence) {
    address_->row->setFault(sentence);
    address_->field->setFaulty(!sentence.isEmpty());
    if (!sentence.isEmpty()) showAddress();
  }

  /// Scrolls to it once it has its place.
  void showAddress() {
    QTimer::singleShot(0, this, [this] {
      if (address_->row->isVisible()) reveal(address_->row);
    });
  }

  void storeChoice(const QString& choice) {
    if (store().config().desk().webSearch == choice) return;
    edit([&](DockConfiguration& config) {
      DeskOptions desk = config.desk();
      desk.webSearch = choice;
      config.setDesk(desk);
    });
  }

  void showChoice(const QString& stored) {
    const bool isStored = stored != shown_;
    shown_ = stored;
    const bool isAddress = !isEngine(stored) && WebSearch::problemWith(stored).isEmpty();
    const bool isBeingEntered = isOwn_ && isVisible() && address_->field->hasFocus();
    // Whoever is about to enter an address goes on with that, unless the choice is made elsewhere meanwhile.
    if (isAddress || isStored || !isVisible()) isOwn_ = isAddress;
    if (isAddress && !isBeingEntered) {
      const QSignalBlocker quiet(address_->field);
      address_->field->setText(stored);
    }
    engine_->chooseValue(isOwn_ ? QString(kOwnAddress) : isEngine(stored) ? stored : defaultEngine());
  }

  const SettingsServices& services_;
  DropDown* engine_ = nullptr;
  std::optional<Address> address_;
  QString shown_;       ///< The choice that was stored when the page was last brought up to date.
  bool isOwn_ = false;  ///< Whether an address is entered or used.
};

}  // namespace

SettingsPage* makeCommandBarPage(AppStore& store, const SettingsServices& services) {
  return new CommandBarPage(store, services);
}

}  // namespace tarnwick
