#include <QHBoxLayout>
#include <algorithm>

#include "base/LocalFigures.h"
#include "config/Reordering.h"
#include "dock/rules/KnownDisplays.h"
#include "dock/rules/ProfileRules.h"
#include "store/AppStore.h"
#include "store/UndoableEdits.h"
#include "views/controls/Buttons.h"
#include "views/controls/ConfirmBar.h"
#include "views/controls/ControlTheme.h"
#include "views/controls/Labels.h"
#include "views/settings/OrderList.h"
#include "views/settings/Pages.h"
#include "views/settings/RuleForm.h"
#include "views/settings/SettingsWords.h"
#include "views/window/DropDown.h"
#include "views/window/WindowTheme.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr auto kActivate = "activate"_L1;
constexpr auto kRename = "rename"_L1;
constexpr auto kRemoveProfile = "remove"_L1;
constexpr int kMorning = 9 * 60;
constexpr int kEvening = 17 * 60;

template <class T>
qsizetype indexOf(const QList<T>& all, const QUuid& id) {
  const auto at = std::ranges::find(all, id, &T::id);
  return at == all.end() ? -1 : at - all.begin();
}

QWidget* buttonLine(const QList<QWidget*>& buttons) {
  auto* line = new QWidget;
  auto* row = new QHBoxLayout(line);
  row->setContentsMargins(theme::kCardPadding, theme::kRowOverhang, theme::kCardPadding, theme::kRowOverhang);
  row->setSpacing(theme::kRowOverhang);
  for (QWidget* each : buttons) {
    const auto* label = qobject_cast<const QLabel*>(each);
    row->addWidget(each, label && label->wordWrap() ? 1 : 0);
  }
  if (!qobject_cast<QLabel*>(buttons.constLast())) row->addStretch(1);
  return line;
}

class ProfilesPage final : public SettingsPage {
 public:
  ProfilesPage(AppStore& store, const SettingsServices& services)
      : SettingsPage(SettingsWords::tr("Profiles"), store, services), services_(services) {
    addProfiles();
    addSwitching();
    addRules();
    addDisplays();
  }

 private:
  // --- The profiles -----------------------------------------------------------------------------------------------

  void addProfiles() {
    Card& card = *addCard();
    profiles_ = new OrderList(SettingsWords::tr("Profiles"));
    profiles_->setRenamable(true);
    profiles_->setActions({{kActivate, u"checkmark.circle"_s, SettingsWords::tr("Make active"), {}},
                           {kRename, u"square.and.pencil"_s, SettingsWords::tr("Rename"), QKeySequence(Qt::Key_F2)},
                           {kRemoveProfile, u"trash"_s, SettingsWords::tr("Delete"), QKeySequence(Qt::Key_Delete)}});
    addOther(card, profiles_, SettingsWords::tr("Profiles name rename active order"));
    connect(profiles_, &OrderList::opened, this,
            [this](const QString& id) { store().selectProfile(QUuid::fromString(id)); });
    connect(profiles_, &OrderList::actionRequested, this, &ProfilesPage::actOnProfile);
    connect(profiles_, &OrderList::moved, this, [this](const QString& id, int to) {
      edit([&](DockConfiguration& config) {
        config.profiles = Reordering::reordered(config.profiles, indexOf(config.profiles, QUuid::fromString(id)), to);
      });
    });
    connect(profiles_, &OrderList::renamed, this, [this](const QString& id, const QString& name) {
      edit([&](DockConfiguration& config) {
        const qsizetype at = indexOf(config.profiles, QUuid::fromString(id));
        if (at >= 0) config.profiles[at].name = name;
      });
    });

    confirm_ = new ConfirmBar;
    confirm_->setContentsMargins(theme::kCardPadding, 0, theme::kCardPadding, theme::kRowOverhang);
    card.add(confirm_);
    auto* add = new Button(SettingsWords::tr("New Profile"));
    add->setSymbol(u"plus"_s);
    auto* copy = new Button(SettingsWords::tr("Duplicate the Active One"));
    connect(add, &QPushButton::clicked, this, [this] { newProfile(false); });
    connect(copy, &QPushButton::clicked, this, [this] { newProfile(true); });
    addOther(card, buttonLine({add, copy}), SettingsWords::tr("New Profile duplicate"));
    follow([this](const DockConfiguration& config) {
      QList<OrderItem> items;
      const qsizetype active = config.activeIndex();
      for (qsizetype i = 0; i < config.profiles.size(); ++i) {
        const DockProfile& profile = config.profiles[i];
        items.append({profile.id.toString(), profile.name,
                      SettingsWords::tr("%Ln widgets", nullptr, static_cast<int>(profile.widgets.size())),
                      u"person.crop.circle"_s, i == active ? SettingsWords::tr("Active") : QString()});
      }
      profiles_->setItems(items);
    });
  }

  void newProfile(bool duplicate) {
    const DockConfiguration& config = store().config();
    if (config.profiles.size() >= DockConfiguration::kMostProfiles) {
      store().setError(SettingsWords::tr("You already have the most profiles Tarnwick keeps (20)."));
      return;
    }
    const QString name =
        duplicate ? SettingsWords::tr("%1 Copy").arg(config.profiles[config.activeIndex()].name) : QString();
    services_.edits.newProfile(name, duplicate);
    profiles_->rename(store().config().activeProfileID.value_or(QUuid()).toString());
  }

  void actOnProfile(const QString& id, const QString& action) {
    const QUuid profile = QUuid::fromString(id);
    if (action == kActivate) store().selectProfile(profile);
    if (action == kRename) profiles_->rename(id);
    const qsizetype at = indexOf(store().config().profiles, profile);
    if (action != kRemoveProfile || at < 0) return;
    if (store().config().profiles.size() < 2) {
      store().setError(SettingsWords::tr("The last profile cannot be deleted."));
      return;
    }
    confirm_->ask(SettingsWords::tr("Delete “%1” and its widgets?").arg(store().config().profiles[at].name),
                  SettingsWords::tr("Delete"), [this, profile] {
                    services_.edits.deleteProfile(profile);
                    profiles_->setFocus();
                  });
  }

  void addSwitching() {
    Card& card = *addCard();
    addSwitch(card,
              {QT_TRANSLATE_NOOP("Settings", "Show profile switcher on hover"),
               QT_TRANSLATE_NOOP("Settings", "Hover the dock to reveal profile tabs.")},
              settingField(&DesktopOptions::profileSwitcherOnHover));
    addSwitch(card,
              {QT_TRANSLATE_NOOP("Settings", "Drag to switch profiles"),
               QT_TRANSLATE_NOOP(
                   "Settings",
                   "Drag horizontally across empty dock space. Disabled while an editor or widget panel is open.")},
              settingField(&DesktopOptions::profileSwipe));
  }

  // --- The rules --------------------------------------------------------------------------------------------------

  void addRules() {
    Card& card = *addCard(SettingsWords::tr("Automatic switching"));
    rules_ = new OrderList(SettingsWords::tr("Rules"));
    rules_->setActions({{kRemoveProfile, u"trash"_s, SettingsWords::tr("Remove"), QKeySequence(Qt::Key_Delete)}});
    addOther(card, rules_, SettingsWords::tr("Rules schedule days time automatic"));
    form_ = new RuleForm(*this);
    addOther(card, form_, SettingsWords::tr("Rules schedule days time automatic"));
    auto* add = new Button(SettingsWords::tr("Add Rule"));
    add->setSymbol(u"plus"_s);
    auto* note = makeSentence(SettingsWords::tr("The first matching rule applies; if none, nothing changes."),
                              TextStyle::Caption, Tone::Secondary);
    addOther(card, buttonLine({add, note}), SettingsWords::tr("Add Rule rules schedule days time automatic"));
    auto* focus = new FormRow(
        SettingsWords::tr("Focus"), nullptr,
        SettingsWords::tr(
            "Following a macOS Focus isn't available in this build: reading Focus needs either Full Disk Access, which "
            "is far more than a dock should ask for, or a Focus Filter, which needs build tooling this project doesn't "
            "use yet."));
    addOther(card, focus, focus->label());

    connect(add, &QPushButton::clicked, this, &ProfilesPage::addRule);
    connect(rules_, &OrderList::chosenChanged, this, [this](const QString& id) {
      form_->setRule(QUuid::fromString(id));
      refresh();
    });
    connect(rules_, &OrderList::actionRequested, this, [this](const QString& id, const QString&) {
      edit([&](DockConfiguration& config) {
        config.desktop.profileRules.removeIf([&](const ProfileRule& rule) { return rule.id == QUuid::fromString(id); });
      });
    });
    connect(rules_, &OrderList::moved, this, [this](const QString& id, int to) {
      edit([&](DockConfiguration& config) {
        auto& rules = config.desktop.profileRules;
        rules = Reordering::reordered(rules, indexOf(rules, QUuid::fromString(id)), to);
      });
    });
    follow([this](const DockConfiguration& config) { showRules(config); });
    const auto rulesOf = [](const DockConfiguration& config) { return config.desktopOptions().profileRules; };
    showWhile(rules_, [rulesOf](const DockConfiguration& config) { return !rulesOf(config).isEmpty(); });
    showWhile(form_, [this, rulesOf](const DockConfiguration& config) {
      const auto rules = rulesOf(config);
      const qsizetype at = indexOf(rules, form_->rule());
      return at >= 0 && rules[at].trigger == ProfileRule::Trigger::Schedule;
    });
    showWhile(focus, [rulesOf](const DockConfiguration& config) {
      return std::ranges::any_of(rulesOf(config),
                                 [](const ProfileRule& rule) { return rule.trigger == ProfileRule::Trigger::Focus; });
    });
  }

  void addRule() {
    const QUuid id = QUuid::createUuid();
    edit([&](DockConfiguration& config) {
      ProfileRule rule;
      rule.id = id;
      rule.profileID = config.profiles[config.activeIndex()].id;
      rule.enabled = true;
      rule.days = {2, 3, 4, 5, 6};  // Monday to Friday.
      rule.startMinutes = kMorning;
      rule.endMinutes = kEvening;
      config.desktop.profileRules.append(rule);
    });
    rules_->choose(id.toString());
    rules_->setFocus(Qt::OtherFocusReason);
  }

  void showRules(const DockConfiguration& config) {
    QList<OrderItem> items;
    for (const ProfileRule& rule : config.desktopOptions().profileRules) {
      const qsizetype profile = indexOf(config.profiles, rule.profileID);
      OrderItem item{rule.id.toString(), ProfileRules::describe(rule)};
      // The name of a focus is the user's.
      if (rule.trigger == ProfileRule::Trigger::Schedule) item.title = LocalFigures::of(item.title);
      item.symbol = rule.trigger == ProfileRule::Trigger::Focus ? u"moon"_s : u"clock"_s;
      item.caption = profile < 0 ? SettingsWords::tr("Profile was deleted") : config.profiles[profile].name;
      if (!rule.enabled) item.value = SettingsWords::tr("Off");
      item.isFaint = !rule.enabled || profile < 0;
      items << item;
    }
    rules_->setItems(items);
    form_->show(config);
  }

  // --- Displays ---------------------------------------------------------------------------------------------------

  void addDisplays() {
    displays_ = addCard(SettingsWords::tr("Displays"));
    auto* note =
        new FormRow({}, nullptr,
                    SettingsWords::tr("A display set to Follow active changes with every other dock. One pinned to a "
                                      "profile keeps it, and switching profiles on that dock only changes that dock."));
    addOther(*displays_, note, SettingsWords::tr("display pin follow active monitor screen"));
    follow([this](const DockConfiguration& config) { showDisplays(config); });
    connect(&services_.screens, &Screens::changed, this, [this] { showDisplays(store().config()); });
  }

  void showDisplays(const DockConfiguration& config) {
    QList<KnownDisplay> known = knownDisplays(config, &services_.screens);
    for (const QString& id : config.desktopOptions().displayProfiles.keys())
      if (std::ranges::none_of(known, [&](const KnownDisplay& each) { return each.id == id; }))
        known.append({id, config.desktopOptions().displayNames.value(id, id), false});
    for (const KnownDisplay& display : known)
      if (!pins_.contains(display.id))
        pins_[display.id] = addPin(display);
      else
        qobject_cast<FormRow*>(pins_[display.id]->parentWidget())->setLabel(display.words());
    for (auto pin = pins_.cbegin(); pin != pins_.cend(); ++pin) showPin(pin.key(), **pin, config);
  }

  DropDown* addPin(const KnownDisplay& display) {
    auto* choice = new DropDown(display.words());
    connect(choice, &DropDown::valueChosen, this, [this, id = display.id](const QString& profile) {
      const auto wanted = profile.isEmpty() ? std::nullopt : std::optional(QUuid::fromString(profile));
      services_.edits.pinDisplay(id, wanted);
    });
    auto* row = new FormRow(display.words(), choice);
    addOther(*displays_, row, display.words() + u' ' + SettingsWords::tr("Follow active"));
    return choice;
  }

  void showPin(const QString& display, DropDown& choice, const DockConfiguration& config) {
    const QSignalBlocker quiet(&choice);
    choice.clear();
    choice.addChoice(SettingsWords::tr("Follow active"), {});
    for (const DockProfile& profile : config.profiles) choice.addChoice(profile.name, profile.id.toString());
    choice.updateGeometry();
    const bool pinned = store().isPinned(display);
    choice.chooseValue(pinned ? config.profiles[store().profileIndex(display)].id.toString() : QString());
    if (!pinned) choice.setCurrentIndex(0);
  }

  const SettingsServices& services_;
  OrderList* profiles_ = nullptr;
  ConfirmBar* confirm_ = nullptr;
  OrderList* rules_ = nullptr;
  RuleForm* form_ = nullptr;
  Card* displays_ = nullptr;
  QMap<QString, DropDown*> pins_;
};

}  // namespace

SettingsPage* makeProfilesPage(AppStore& store, const SettingsServices& services) {
  return new ProfilesPage(store, services);
}

}  // namespace tarnwick
