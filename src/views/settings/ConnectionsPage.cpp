#include <QCoreApplication>
#include <QFileInfo>
#include <QVBoxLayout>
#include <algorithm>

#include "config/CalendarFolders.h"
#include "store/AppStore.h"
#include "views/controls/Buttons.h"
#include "views/controls/Labels.h"
#include "views/controls/Rows.h"
#include "views/settings/OrderList.h"
#include "views/settings/Pages.h"
#include "views/settings/SettingsWords.h"
#include "views/window/WindowTheme.h"
#include "widgets/catalog/Catalog.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kBigSymbol = 32;

class BigSymbol final : public QWidget {
 public:
  explicit BigSymbol(const QString& name) : name_(name) { setFixedSize(kBigSymbol, kBigSymbol); }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    drawControlSymbol(painter, name_, rect(), lookOf(*this).palette.tertiary);
  }

 private:
  QString name_;
};

bool isConnected(const DockWidget& widget) {
  return isConnectedFamily(Catalog::find(widget.kind).family) &&
         (!widget.options.value(option::endpoint).isEmpty() || !widget.options.value(option::connectionMode).isEmpty());
}

QList<DockWidget> connectedWidgets(const DockConfiguration& config) {
  QList<DockWidget> found;
  for (const DockProfile& profile : config.profiles)
    std::ranges::copy_if(profile.widgets, std::back_inserter(found), isConnected);
  return found;
}

QWidget* makeEmptyState(const SettingsServices& services) {
  auto* empty = new QWidget;
  auto* column = new QVBoxLayout(empty);
  column->setContentsMargins(theme::kBodyPadding, theme::kBodyPadding + 8, theme::kBodyPadding,
                             theme::kBodyPadding + 8);
  column->setSpacing(theme::kCardRowPadding);
  column->addWidget(new BigSymbol(u"link"_s), 0, Qt::AlignHCenter);
  column->addSpacing(theme::kCardRowPadding);
  const auto line = [&](const QString& text, TextStyle style, Tone tone) {
    TextLabel* label = makeSentence(text, style, tone);
    if (style == TextStyle::Title) label->setStyle(style);
    label->setAlignment(Qt::AlignCenter);
    column->addWidget(label);
  };
  line(SettingsWords::tr("No service is connected"), TextStyle::Title, Tone::Primary);
  line(SettingsWords::tr(
           "Connections to services are not part of this version yet. Your entries are saved for a later version."),
       TextStyle::Caption, Tone::Secondary);
  auto* add = new Button(SettingsWords::tr("Add Widgets…"));
  QObject::connect(add, &QPushButton::clicked, empty, [&commands = services.commands] { commands.showLibrary({}); });
  column->addSpacing(theme::kCardRowPadding);
  column->addWidget(add, 0, Qt::AlignHCenter);
  return empty;
}

/// Folders of calendar files, beside the places where calendars are looked for anyway.
void addCalendars(SettingsPage& page, const SettingsServices& services) {
  Card& card = *page.addCard(SettingsWords::tr("Calendars"));
  auto* list = new OrderList(SettingsWords::tr("Calendar folders"));
  list->setDragDropMode(QAbstractItemView::NoDragDrop);
  list->setActions({{u"remove"_s, u"trash"_s, SettingsWords::tr("Remove"), QKeySequence(Qt::Key_Delete)}});
  QObject::connect(list, &OrderList::actionRequested, &page, [&page](const QString& folder) {
    page.edit([&](DockConfiguration& config) { CalendarFolders::remove(config, folder); });
  });
  page.addOther(card, list, SettingsWords::tr("calendar folder reminders events"));
  page.showWhile(list, [](const DockConfiguration& config) { return !CalendarFolders::of(config).isEmpty(); });
  page.follow([list](const DockConfiguration& config) {
    QList<OrderItem> items;
    for (const QString& folder : CalendarFolders::of(config))
      items.append({folder, QFileInfo(folder).fileName(), pathText(folder), u"folder"_s});
    list->setItems(items);
  });
  auto* add = new Button(SettingsWords::tr("Add Folder…"));
  QObject::connect(add, &QPushButton::clicked, &page, [&to = services.commands] { to.addCalendarFolder(); });
  page.addControl(card,
                  {QT_TRANSLATE_NOOP("Settings", "Calendar folders"),
                   QT_TRANSLATE_NOOP("Settings",
                                     "Evolution’s calendars on this computer and those in the folder .calendars are "
                                     "found automatically. Add other folders with calendar files here."),
                   QT_TRANSLATE_NOOP("Settings", "events reminders ics")},
                  add);
}

}  // namespace

SettingsPage* makeConnectionsPage(AppStore& store, const SettingsServices& services) {
  auto* page = new SettingsPage(SettingsWords::tr("Connections"), store, services);
  Card& card = *page->addCard();
  QWidget* empty = makeEmptyState(services);
  page->addOther(card, empty, SettingsWords::tr("No service is connected"));
  page->showWhile(empty, [](const DockConfiguration& config) { return connectedWidgets(config).isEmpty(); });
  auto* list = new OrderList(SettingsWords::tr("Connections"));
  list->setDragDropMode(QAbstractItemView::NoDragDrop);
  list->setActions({{u"edit"_s, u"slider.horizontal.3"_s, SettingsWords::tr("Edit"), QKeySequence(Qt::Key_F2)}});
  const auto open = [&to = services.commands](const QString& id) { to.openEditor(QUuid::fromString(id)); };
  QObject::connect(list, &OrderList::opened, page, open);
  QObject::connect(list, &OrderList::actionRequested, page, open);
  page->addOther(card, list, SettingsWords::tr("service account widgets"));
  page->showWhile(list, [](const DockConfiguration& config) { return !connectedWidgets(config).isEmpty(); });
  page->follow([list, &services](const DockConfiguration& config) {
    QList<OrderItem> items;
    for (const DockWidget& widget : connectedWidgets(config)) {
      const WidgetDefinition& kind = Catalog::find(widget.kind);
      items.append(
          {widget.id.toString(), services.edits.nameOf(widget), kind.name + u" · "_s + kind.category, kind.symbol});
    }
    list->setItems(items);
  });
  addCalendars(*page, services);
  return page;
}

}  // namespace tarnwick
