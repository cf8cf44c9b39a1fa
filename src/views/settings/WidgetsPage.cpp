#include <algorithm>

#include "store/AppStore.h"
#include "views/controls/Buttons.h"
#include "views/controls/Labels.h"
#include "views/settings/OrderList.h"
#include "views/settings/Pages.h"
#include "views/settings/SettingsWords.h"
#include "views/window/DropDown.h"
#include "views/window/WindowTheme.h"
#include "widgets/catalog/Catalog.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr auto kEditWidget = "edit"_L1;
constexpr auto kRemoveWidget = "remove"_L1;

class WidgetsPage final : public SettingsPage {
 public:
  WidgetsPage(AppStore& store, const SettingsServices& services)
      : SettingsPage(SettingsWords::tr("Widgets"), store, services), services_(services) {
    addProfile();
    addList();
    follow([this](const DockConfiguration& config) { show(config); });
  }

 private:
  void addProfile() {
    choice_ = new DropDown(SettingsWords::tr("Profile"));
    FormRow* row = addControl(*addCard(),
                              {QT_TRANSLATE_NOOP("Settings", "Profile"),
                               QT_TRANSLATE_NOOP("Settings", "The profile whose widgets are listed below.")},
                              choice_);
    showWhile(row, [](const DockConfiguration& config) { return config.profiles.size() > 1; });
    connect(choice_, &DropDown::valueChosen, this, [this](const QString& id) {
      profile_ = QUuid::fromString(id);
      refresh();
    });
  }

  void addList() {
    Card& card = *addCard();
    list_ = new OrderList(SettingsWords::tr("Widgets"));
    list_->setActions({{kEditWidget, u"slider.horizontal.3"_s, SettingsWords::tr("Edit"), QKeySequence(Qt::Key_F2)},
                       {kRemoveWidget, u"trash"_s, SettingsWords::tr("Remove"), QKeySequence(Qt::Key_Delete)}});
    connect(list_, &OrderList::opened, this, &WidgetsPage::openEditor);
    connect(list_, &OrderList::actionRequested, this, [this](const QString& id, const QString& action) {
      if (action == kEditWidget) openEditor(id);
      if (action == kRemoveWidget) services_.edits.remove(QUuid::fromString(id));
    });
    connect(list_, &OrderList::moved, this, [this](const QString& id, int to) {
      const auto at = std::ranges::find(list_->items(), id, &OrderItem::id);
      const qsizetype from = at - list_->items().begin();
      services_.edits.move(QUuid::fromString(id), static_cast<int>(to - from));
    });
    addOther(card, list_, SettingsWords::tr("Widgets order remove edit dock tiles"));
    empty_ = new TextLabel(SettingsWords::tr("This dock is empty."), TextStyle::Body, Tone::Secondary);
    empty_->setContentsMargins(theme::kCardPadding, 0, theme::kCardPadding, 0);
    empty_->setFixedHeight(theme::kCardRow);
    addOther(card, empty_, {});
    showWhile(list_, [this](const DockConfiguration&) { return !list_->items().isEmpty(); });
    showWhile(empty_, [this](const DockConfiguration&) { return list_->items().isEmpty(); });

    auto* add = new Button(SettingsWords::tr("Add Widgets…"));
    add->setSymbol(u"plus"_s);
    connect(add, &QPushButton::clicked, this,
            [this] { services_.commands.showLibrary({}, QUuid::fromString(choice_->chosenValue())); });
    count_ = addControl(
        card, {QT_TRANSLATE_NOOP("Settings", "On this dock"), "", QT_TRANSLATE_NOOP("Settings", "add library")}, add);
  }

  void openEditor(const QString& id) { services_.commands.openEditor(QUuid::fromString(id)); }

  void show(const DockConfiguration& config) {
    const auto wanted = std::ranges::find(config.profiles, profile_, &DockProfile::id);
    const DockProfile& profile = wanted == config.profiles.end() ? config.profiles[config.activeIndex()] : *wanted;
    QList<OrderItem> items;
    for (const DockWidget& widget : profile.widgets) items << itemOf(widget);
    list_->setItems(items);
    if (config.profiles != profiles_) {
      profiles_ = config.profiles;
      const QSignalBlocker quiet(choice_);
      choice_->clear();
      for (const DockProfile& each : config.profiles) choice_->addChoice(each.name, each.id.toString());
      choice_->updateGeometry();
    }
    choice_->chooseValue(profile.id.toString());
    count_->setHelp(SettingsWords::tr("%1 of at most %2 widgets")
                        .arg(locale().toString(profile.widgets.size()))
                        .arg(locale().toString(DockConfiguration::kMostWidgets)));
  }

  OrderItem itemOf(const DockWidget& widget) const {
    const WidgetDefinition& kind = Catalog::find(widget.kind);
    OrderItem item{widget.id.toString(), services_.edits.nameOf(widget), kind.name, kind.symbol};
    const QString section = Catalog::sectionOf(kind);
    item.caption = item.title == kind.name ? section : kind.name + u" · "_s + section;
    return item;
  }

  const SettingsServices& services_;
  QUuid profile_;  // Null for the active one.
  QList<DockProfile> profiles_;
  DropDown* choice_ = nullptr;
  OrderList* list_ = nullptr;
  TextLabel* empty_ = nullptr;
  FormRow* count_ = nullptr;
};

}  // namespace

SettingsPage* makeWidgetsPage(AppStore& store, const SettingsServices& services) {
  return new WidgetsPage(store, services);
}

}  // namespace tarnwick
