#include <QAccessible>
#include <QFileInfo>
#include <QVBoxLayout>

#include "base/ForeignText.h"
#include "config/CalendarFolders.h"
#include "services/Connections.h"
#include "services/ServiceAnswer.h"
#include "store/AppStore.h"
#include "store/DocumentEdits.h"
#include "views/controls/Buttons.h"
#include "views/controls/ConfirmBar.h"
#include "views/controls/ControlTheme.h"
#include "views/controls/Labels.h"
#include "views/settings/ConnectionRows.h"
#include "views/settings/OrderList.h"
#include "views/settings/Pages.h"
#include "views/settings/SettingsWords.h"
#include "views/window/WindowTheme.h"
#include "widgets/ClockWords.h"
#include "widgets/catalog/Catalog.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr auto kRefresh = "refresh"_L1;
constexpr auto kEdit = "edit"_L1;
constexpr auto kRemove = "remove"_L1;
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
           "Widgets that show something of a service stand here, with when it answered last. Edit such a widget to "
           "connect it."),
       TextStyle::Caption, Tone::Secondary);
  auto* add = new Button(SettingsWords::tr("Add Widgets…"));
  QObject::connect(add, &QPushButton::clicked, empty, [&commands = services.commands] { commands.showLibrary({}); });
  column->addSpacing(theme::kCardRowPadding);
  column->addWidget(add, 0, Qt::AlignHCenter);
  return empty;
}

/// `connections` is there until `stop` is requested.
QCoro::Task<bool> removed(Connections& connections, DockWidget widget, std::stop_token stop) {
  co_await connections.removeCredential(widget, stop);
  co_return true;
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

class ConnectionsPage final : public SettingsPage {
 public:
  ConnectionsPage(AppStore& store, const SettingsServices& services)
      : SettingsPage(SettingsWords::tr("Connections"), store, services), services_(services) {
    addConnections(*addCard());
    addCalendars(*this, services);
    connect(&services.connections, &Connections::changed, this, [this](const QUuid& widget) {
      tellWhatCame(widget);
      refreshSoon();
    });
    // What is said of times goes by the minute.
    connect(&store, &AppStore::ticked, this, [this] {
      if (!isVisible()) return;
      const qint64 minute = this->store().scheduler().now().toSecsSinceEpoch() / 60;
      if (std::exchange(minute_, minute) != minute) refresh();
    });
  }
  ~ConnectionsPage() override { stop_.request_stop(); }

 private:
  void addConnections(Card& card) {
    QWidget* empty = makeEmptyState(services_);
    addOther(card, empty, SettingsWords::tr("No service is connected"));
    showWhile(empty, [](const DockConfiguration& config) { return ConnectionRows::widgets(config).isEmpty(); });
    list_ = new OrderList(SettingsWords::tr("Connections"));
    list_->setDragDropMode(QAbstractItemView::NoDragDrop);
    list_->setNotes(true);
    list_->setActions({{kRefresh, u"arrow.clockwise"_s, SettingsWords::tr("Refresh"), QKeySequence(Qt::Key_F5)},
                       {kEdit, u"slider.horizontal.3"_s, SettingsWords::tr("Edit"), QKeySequence(Qt::Key_F2)},
                       {kRemove, u"trash"_s, SettingsWords::tr("Remove Credential"), QKeySequence(Qt::Key_Delete)}});
    connect(list_, &OrderList::opened, this,
            [this](const QString& id) { services_.commands.openEditor(QUuid::fromString(id)); });
    connect(list_, &OrderList::actionRequested, this, &ConnectionsPage::act);
    addOther(card, list_,
             SettingsWords::tr("service account widgets host refresh pause credential token keyring password API"));
    showWhile(list_, [](const DockConfiguration& config) { return !ConnectionRows::widgets(config).isEmpty(); });
    confirm_ = new ConfirmBar;
    confirm_->setContentsMargins(theme::kCardPadding, 0, theme::kCardPadding, theme::kRowOverhang);
    card.add(confirm_);
    message_ = makeSentence({}, TextStyle::Caption, Tone::Fault);
    message_->setContentsMargins(theme::kCardPadding, 0, theme::kCardPadding, theme::kRowOverhang);
    message_->hide();
    card.add(message_);
    follow([this](const DockConfiguration& config) { showConnections(config); });
  }

  void showConnections(const DockConfiguration& config) {
    const QDateTime now = store().scheduler().now();
    const bool use24Hour = services_.abilities().uses24Hour.value_or(ClockWords::writes24Hours(QLocale()));
    QList<OrderItem> items;
    for (const DockWidget& widget : ConnectionRows::widgets(config)) {
      const auto reading = services_.connections.reading(widget.id);
      items.append(
          {.id = widget.id.toString(),
           .title = services_.edits.nameOf(widget),
           .caption = ConnectionRows::service(widget),
           .symbol = Catalog::find(widget.kind).symbol,
           .value = ConnectionRows::state(reading, now, use24Hour),
           .isFaint = false,
           .note = ConnectionRows::details(reading, services_.connections.nextRefresh(widget.id), now, use24Hour)});
    }
    list_->setItems(items);
  }

  /// Several values that come together are shown together.
  void refreshSoon() {
    if (std::exchange(isDue_, true)) return;
    QMetaObject::invokeMethod(
        this,
        [this] {
          isDue_ = false;
          refresh();
        },
        Qt::QueuedConnection);
  }

  void act(const QString& id, const QString& action) {
    const DockWidget* widget = DocumentEdits::find(store().config(), QUuid::fromString(id));
    if (!widget) return;
    say({}, Tone::Secondary);
    if (action == kRefresh)
      ask(*widget);
    else if (action == kEdit)
      services_.commands.openEditor(widget->id);
    else if (action == kRemove)
      askToRemove(*widget);
  }

  void ask(const DockWidget& widget) {
    asked_.insert(widget.id);
    say(SettingsWords::tr("Asking for “%1”…").arg(services_.edits.nameOf(widget)), Tone::Secondary);
    store().refresh(widget);
  }

  /// What came of a refresh that was asked for here.
  void tellWhatCame(const QUuid& id) {
    if (!asked_.contains(id)) return;
    const auto reading = services_.connections.reading(id);
    if (reading && reading->isAsking) return;
    asked_.remove(id);
    const DockWidget* widget = DocumentEdits::find(store().config(), id);
    if (!reading || !widget) return say({}, Tone::Secondary);
    const QString name = services_.edits.nameOf(*widget);
    if (reading->value.failed)
      say(SettingsWords::tr("“%1”: %2").arg(name, ForeignText::line(reading->value.subtitle)), Tone::Fault);
    else if (reading->value.value)
      say(SettingsWords::tr("“%1” shows %2.").arg(name, ForeignText::line(*reading->value.value)), Tone::Secondary);
    else
      say(SettingsWords::tr("“%1” was refreshed.").arg(name), Tone::Secondary);
  }

  void askToRemove(const DockWidget& widget) {
    confirm_->ask(
        SettingsWords::tr("Remove the credential of “%1” from the keyring?").arg(services_.edits.nameOf(widget)),
        SettingsWords::tr("Remove"), [this, widget] {
          tellAnswer<bool>(
              removed(services_.connections, widget, stop_.get_token()),
              [this, name = services_.edits.nameOf(widget)](const ServiceAnswer<bool>& answer) {
                if (answer.value)
                  say(SettingsWords::tr("The credential of “%1” was removed.").arg(name), Tone::Secondary);
                else
                  say(answer.sentence, Tone::Fault);
              },
              stop_.get_token());
        });
  }

  void say(const QString& sentence, Tone tone) {
    message_->setTone(tone);
    message_->setText(sentence);
    message_->setVisible(!sentence.isEmpty());
    if (sentence.isEmpty()) return;
    QAccessibleEvent alert(message_, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
  }

  const SettingsServices& services_;
  OrderList* list_ = nullptr;
  ConfirmBar* confirm_ = nullptr;
  TextLabel* message_ = nullptr;
  bool isDue_ = false;
  qint64 minute_ = -1;
  QSet<QUuid> asked_;  ///< Whose answer is told when it comes.
  std::stop_source stop_;
};

}  // namespace

SettingsPage* makeConnectionsPage(AppStore& store, const SettingsServices& services) {
  return new ConnectionsPage(store, services);
}

}  // namespace tarnwick
