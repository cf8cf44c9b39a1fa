#include <QCoreApplication>
#include <QHBoxLayout>
#include <algorithm>

#include "store/AppStore.h"
#include "views/controls/Buttons.h"
#include "views/panels/AppItems.h"
#include "views/settings/OrderList.h"
#include "views/settings/Pages.h"
#include "views/settings/SettingsWords.h"
#include "views/window/DropDown.h"
#include "widgets/catalog/Kinds.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr auto kRemoveApp = "remove"_L1;
constexpr int kAppsWidth = 200;

class ClipboardPage final : public SettingsPage {
 public:
  ClipboardPage(AppStore& store, const SettingsServices& services)
      : SettingsPage(SettingsWords::tr("Clipboard"), store, services),
        services_(services),
        abilities_(services.abilities()) {
    addHistory();
    if (abilities_.clipboard) {
      addNeverRecord();
      addPasting();
    }
    connect(&store, &AppStore::activeChanged, this, &SettingsPage::refresh);
  }

 private:
  void addHistory() {
    Card& card = *addCard();
    FormRow* history =
        addSwitch(card,
                  {QT_TRANSLATE_NOOP("Settings", "Clipboard history"),
                   QT_TRANSLATE_NOOP("Settings",
                                     "Keeps text, images, files, links and colours you copy, on this computer only. "
                                     "Nothing is ever exported."),
                   QT_TRANSLATE_NOOP("Settings", "copy paste")},
                  settingField(&DockConfiguration::clipboardEnabled));
    needs(history, abilities_.clipboard);
    auto* add = new Button(SettingsWords::tr("Add Clipboard Widget"));
    connect(add, &QPushButton::clicked, this, [this] { services_.commands.addWidget(kind::clipboard, {}); });
    FormRow* shown =
        addControl(card,
                   {QT_TRANSLATE_NOOP("Settings", "Clipboard widget"),
                    QT_TRANSLATE_NOOP("Settings",
                                      "What you copy is recorded while a clipboard widget stands on a shown dock. "
                                      "At the moment none does.")},
                   add);
    showWhile(shown, [this](const DockConfiguration&) {
      return abilities_.clipboard && !this->store().active().kinds.contains(kind::clipboard);
    });
    auto* concealed =
        new FormRow(SettingsWords::tr("Passwords"), nullptr,
                    SettingsWords::tr("Copies that applications mark as concealed — what password managers use — are "
                                      "never recorded."));
    addOther(card, concealed, concealed->label());
  }

  void addNeverRecord() {
    Card& card = *addCard();
    apps_ = new DropDown(SettingsWords::tr("App"));
    apps_->setMaximumWidth(kAppsWidth);
    add_ = new Button(SettingsWords::tr("Add"));
    connect(add_, &QPushButton::clicked, this, [this] {
      if (const QString id = apps_->chosenValue(); !id.isEmpty()) change([&id](QStringList& ids) { ids << id; });
    });
    auto* choice = new QWidget;
    auto* line = new QHBoxLayout(choice);
    line->setContentsMargins(0, 0, 0, 0);
    line->addWidget(apps_);
    line->addWidget(add_);
    FormRow* row = addControl(card,
                              {QT_TRANSLATE_NOOP("Settings", "Never record from"), "",
                               QT_TRANSLATE_NOOP("Settings", "apps exclude private password")},
                              choice);
    const Capability owners = abilities_.clipboardOwners;
    row->setHelp(
        u"%1 %2"_s.arg(owners ? SettingsWords::tr("The app that copied is known by its window.") : owners.reason,
                       SettingsWords::tr("If it cannot be told which app copied, the copy is recorded.")));
    list_ = new OrderList(SettingsWords::tr("Listed apps"));
    list_->setPicture([this](QPainter& painter, const QRectF& box, const OrderItem& item) {
      const auto app = services_.apps.byId(item.id);
      paintAppIcon(painter, box, app ? app->iconName : QString(), item.title, services_.previews.icons, lookOf(*list_));
    });
    list_->setActions({{kRemoveApp, u"trash"_s, SettingsWords::tr("Remove"), QKeySequence(Qt::Key_Delete)}});
    connect(list_, &OrderList::actionRequested, this,
            [this](const QString& id, const QString&) { change([&id](QStringList& ids) { ids.removeAll(id); }); });
    connect(list_, &OrderList::moved, this,
            [this](const QString& id, int to) { change([&](QStringList& ids) { ids.move(ids.indexOf(id), to); }); });
    addOther(card, list_, row->label());
    showWhile(list_, [](const DockConfiguration& config) { return !config.desk().neverRecord.isEmpty(); });
    connect(&services_.apps, &InstalledApps::changed, this, &SettingsPage::refresh);
    follow([this](const DockConfiguration& config) { show(config.desk().neverRecord); });
  }

  void addPasting() {
    const Capability ends = abilities_.clipboardEnds;
    auto* row = new FormRow(
        SettingsWords::tr("When an app ends"), nullptr,
        ends
            ? SettingsWords::tr("What it copied last can still be pasted, if it was recorded.")
            : u"%1 %2"_s.arg(ends.reason, SettingsWords::tr("What it copied goes with it, and stays in the history.")));
    addOther(*addCard(), row, row->label());
  }

  void change(const std::function<void(QStringList& ids)>& change) {
    edit([&change](DockConfiguration& config) {
      DeskOptions desk = config.desk();
      change(desk.neverRecord);
      config.setDesk(desk);
    });
  }

  void show(const QStringList& listed) {
    const auto index = services_.apps.index();
    if (listed == listed_ && index == index_) return;
    listed_ = listed;
    index_ = index;
    QList<OrderItem> items;
    for (const QString& id : listed) {
      // One that no list shows, or that was removed since, is still listed.
      const auto app = services_.apps.byId(id);
      items.append({id, app ? app->name : id});
    }
    list_->setItems(items);
    const QString chosen = apps_->chosenValue();
    const QSignalBlocker quiet(apps_);
    apps_->clear();
    for (const DesktopEntry& app : services_.apps.all())
      if (!listed.contains(app.id)) apps_->addChoice(app.name, app.id);
    apps_->setCurrentIndex(std::max(0, apps_->findData(chosen)));
    apps_->updateGeometry();
    const bool canAdd = apps_->count() > 0 && listed.size() < kMostListed;
    apps_->setEnabled(canAdd);
    add_->setEnabled(canAdd);
  }

  static constexpr qsizetype kMostListed = 100;

  const SettingsServices& services_;
  const DesktopAbilities abilities_;
  DropDown* apps_ = nullptr;
  Button* add_ = nullptr;
  OrderList* list_ = nullptr;
  // What both show now.
  QStringList listed_;
  std::shared_ptr<const AppIndex> index_;
};

}  // namespace

SettingsPage* makeClipboardPage(AppStore& store, const SettingsServices& services) {
  return new ClipboardPage(store, services);
}

}  // namespace tarnwick
