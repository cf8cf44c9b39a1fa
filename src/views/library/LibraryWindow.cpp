#include "views/library/LibraryWindow.h"

#include <QDir>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QShortcut>
#include <QVBoxLayout>
#include <algorithm>

#include "store/AddedWords.h"
#include "store/AppStore.h"
#include "views/controls/Fields.h"
#include "views/library/AddedNote.h"
#include "views/library/AppPicker.h"
#include "views/library/EditorFields.h"
#include "views/library/LibraryView.h"
#include "views/window/DropDown.h"
#include "views/window/SideList.h"
#include "views/window/WindowTheme.h"
#include "widgets/LibraryWords.h"
#include "widgets/PinnedTiles.h"
#include "widgets/catalog/Catalog.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr QSize kSize(1184, 744);
constexpr QSize kLeastSize(480, 320);  // Half of the smallest display, beside another window.
constexpr int kWholeSide = 640;        // From this width on there is space for words in the side bar.
constexpr int kSideRow = 29;
constexpr int kTop = 16;
constexpr int kFieldHeight = 36;
constexpr int kGap = 12;

QStringList idsOf(const QList<LibraryShelf>& shelves) {
  QStringList ids;
  for (const LibraryShelf& shelf : shelves)
    for (const LibraryItem& item : shelf.items) ids << item.entry.id << item.title();
  return ids;
}

}  // namespace

LibraryWindow::LibraryWindow(AppStore& store, WindowServices services)
    : AppWindow(store, LibraryWords::tr("Add Widgets")),
      store_(store),
      services_(std::move(services)),
      side_(new SideList(LibraryWords::tr("Sections"), kSideRow)),
      field_(new SearchField(LibraryWords::tr("Search %1 widgets").arg(locale().toString(Catalog::items().size())))),
      choice_(new DropDown(LibraryWords::tr("Add to"))),
      view_(nullptr),
      note_(nullptr) {
  setContent(makeSide(), makeBody());
  setTabOrder(side_, field_);
  setTabOrder(field_, choice_);
  setTabOrder(choice_, view_);
  setMinimumSize(kLeastSize);
  resize(kSize);
  fill();
  setTarget({});
  connectParts();
}

LibraryWindow::~LibraryWindow() = default;

QWidget* LibraryWindow::makeSide() {
  auto* side = new QWidget;
  side->setFixedWidth(theme::kSideWidth);
  auto* column = new QVBoxLayout(side);
  column->setContentsMargins(theme::kSidePadding, kTop, theme::kSidePadding, theme::kSidePadding);
  column->addWidget(side_);
  return side;
}

QWidget* LibraryWindow::makeBody() {
  auto* body = new QWidget;
  auto* bar = new QHBoxLayout;
  bar->setContentsMargins(CardLayout::kMargin, 0, CardLayout::kMargin, 0);
  bar->setSpacing(kGap);
  field_->setFixedHeight(kFieldHeight);
  choice_->setFixedHeight(kFieldHeight);
  choice_->setAccessibleDescription(choice_->accessibleName());  // Here no label beside it says what it chooses.
  bar->addWidget(field_, 1);
  bar->addWidget(choice_);
  view_ = new LibraryView(store_, services_.previews, body);
  view_->followField(*field_);
  auto* column = new QVBoxLayout(body);
  column->setContentsMargins(0, kTop, 0, 0);
  column->setSpacing(0);
  column->addLayout(bar);
  column->addSpacing(CardLayout::kAbove);
  column->addWidget(view_, 1);
  note_ = new AddedNote(body);
  return body;
}

void LibraryWindow::connectParts() {
  connect(side_, &SideList::chosenChanged, this, [this] {
    if (field_->text().isEmpty())
      search();
    else
      field_->clear();
  });
  connect(field_, &QLineEdit::textChanged, this, [this](const QString& text) {
    // A search goes over everything.
    if (!text.trimmed().isEmpty()) side_->choose(Catalog::categories().first());
    search();
  });
  connect(choice_, &DropDown::valueChosen, this,
          [this](const QString& profile) { chooseTarget(QUuid::fromString(profile)); });
  connect(view_, &LibraryView::itemActivated, this, &LibraryWindow::activate);
  connect(note_, &AddedNote::undoRequested, this, [this] { services_.edits.takeBack(entry_); });
  connect(note_, &AddedNote::editRequested, this, [this] { services_.commands.openEditor(added_); });
  connect(&store_, &AppStore::configChanged, this, &LibraryWindow::showTargets);
  connect(&services_.edits.stack(), &UndoStack::pushed, field_, &SearchField::forgetTyping);
  connect(&services_.edits.stack(), &UndoStack::offered, this, &LibraryWindow::takeDropped);
  connect(&services_.edits.stack(), &UndoStack::gone, note_, [this](quint64 entry) {
    if (entry == entry_) note_->hide();
  });
  connect(&services_.apps, &InstalledApps::changed, this, &LibraryWindow::fill);
  addSearchKeys();
  setEscapeCloses(true);
}

/// Wherever the keyboard is, what is typed next is a new search.
void LibraryWindow::addSearchKeys() {
  for (const auto key : {QKeySequence::Find, QKeySequence::SelectAll}) {
    auto* shortcut = new QShortcut(QKeySequence(key), this);
    connect(shortcut, &QShortcut::activated, this, [this] {
      field_->setFocus(Qt::ShortcutFocusReason);
      field_->selectAll();
    });
  }
}

void LibraryWindow::showEvent(QShowEvent* event) {
  AppWindow::showEvent(event);
  if (!focusWidget()) field_->setFocus(Qt::OtherFocusReason);
}

/// In a narrow window the side bar shows its symbols alone.
void LibraryWindow::resizeEvent(QResizeEvent* event) {
  AppWindow::resizeEvent(event);
  const bool isWhole = width() >= kWholeSide;
  side_->parentWidget()->setFixedWidth(isWhole ? theme::kSideWidth : theme::kSideSymbolRow + theme::kSidePadding * 2);
}

/// Wherever the keyboard is, the first Escape ends a search and the next one closes the window.
void LibraryWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape && !field_->text().isEmpty())
    field_->clear();
  else
    AppWindow::keyPressEvent(event);
}

// --- What is offered ------------------------------------------------------------------------------------------------

void LibraryWindow::fill() {
  const QList<StandardApplication> applications = StandardApplications::list(*services_.apps.index());
  const QList<LibraryShelf> shelves = LibraryShelves::all(applications, StandardFolders::ofUser());
  // The folders of applications are read anew now and then; what is shown stays where it is unless it is another.
  if (idsOf(shelves) == idsOf(shelves_)) return;
  shelves_ = shelves;
  QStringList paths;
  for (const StandardApplication& application : applications) paths.append(application.desktopEntryPath);
  view_->setApplications(paths);

  QList<SideItem> rows;
  rows.append({Catalog::categories().first(), Catalog::categories().first(), u"square.grid.2x2"_s,
               locale().toString(Catalog::items().size()), false});
  for (qsizetype i = 0; i < shelves_.size(); ++i) {
    const LibraryShelf& shelf = shelves_[i];
    const bool isGroup =
        std::ranges::find(Catalog::groups(), shelf.name, &WidgetGroup::name) != Catalog::groups().end();
    const bool isExtra = i == shelves_.size() - 1;
    SideItem row{shelf.name, shelf.name, shelf.symbol, {}, false};
    if (isGroup || isExtra) row.count = locale().toString(shelf.items.size());
    // Ready-made entries, groups and the rest stand apart.
    row.startsGroup = i == 2 || isExtra;
    rows.append(row);
  }
  side_->setItems(rows);
  search();
}

void LibraryWindow::search() {
  const bool isSearch = !field_->text().trimmed().isEmpty();
  QList<LibraryShelf> shown = LibraryShelves::fitting(shelves_, side_->chosen(), field_->text());
  if (!isSearch && side_->chosen() == Catalog::categories().first()) shown.prepend(toTry_);
  view_->setShelves(shown);
  view_->choose(isSearch ? 0 : -1);
}

void LibraryWindow::showCategory(const QString& category) {
  field_->clear();
  side_->choose(Catalog::categories().contains(category) ? category : Catalog::categories().first());
  search();
}

// --- Where it goes --------------------------------------------------------------------------------------------------

void LibraryWindow::setTarget(const QString& display) {
  const QList<DockProfile>& profiles = store_.config().profiles;
  const qsizetype index = store_.profileIndex(display);
  chooseTarget(index >= 0 && index < profiles.size() ? profiles[index].id : store_.profile().id);
}

void LibraryWindow::chooseTarget(const QUuid& profile) {
  target_ = profile;
  view_->setTarget(profile);
  showTargets();
}

void LibraryWindow::showTargets() {
  const DockConfiguration& config = store_.config();
  const DesktopOptions& options = config.desktopOptions();
  if (std::ranges::find(config.profiles, target_, &DockProfile::id) == config.profiles.end())
    return chooseTarget(store_.profile().id);
  QStringList words;
  for (const DockProfile& profile : config.profiles) {
    QStringList displays;
    for (auto pin = options.displayProfiles.cbegin(); pin != options.displayProfiles.cend(); ++pin)
      if (QUuid::fromString(pin.value()) == profile.id)
        displays.append(options.displayNames.value(pin.key(), pin.key()));
    words.append(displays.isEmpty() ? profile.name
                                    : LibraryWords::tr("%1 (%2)").arg(profile.name, displays.join(u", "_s)));
  }
  QStringList targets = words;
  for (const DockProfile& profile : config.profiles) targets.append(profile.id.toString());
  if (targets != targets_) {
    targets_ = targets;
    choice_->clear();
    for (qsizetype i = 0; i < words.size(); ++i) choice_->addChoice(words[i], config.profiles[i].id.toString());
  }
  choice_->chooseValue(target_.toString());
}

// --- Adding ---------------------------------------------------------------------------------------------------------

void LibraryWindow::activate(const LibraryItem& item) {
  if (const auto widget = LibraryShelves::freshWidget(item)) return add(*widget);
  item.entry.picker == LibraryEntry::applicationPicker ? chooseApplication() : chooseFolder();
}

void LibraryWindow::chooseApplication() {
  auto* picker = new AppPicker(services_.apps, services_.previews.icons, this);
  connect(picker, &AppPicker::chosen, this, [this](const QString& path) { add(PinnedTiles::launcher(path)); });
  picker->open();
}

void LibraryWindow::chooseFolder() {
  auto* dialog = new QFileDialog(this, LibraryWords::tr("Choose Folder"), QDir::homePath());
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setFileMode(QFileDialog::Directory);
  dialog->setOption(QFileDialog::ShowDirsOnly);
  connect(dialog, &QFileDialog::fileSelected, this,
          [this](const QString& path) { add(PinnedTiles::folder(QDir::cleanPath(path))); });
  dialog->open();
}

void LibraryWindow::add(const DockWidget& widget) {
  const QString name = services_.edits.nameOf(widget);
  const bool isBare = widget.title.isEmpty() && widget.options.isEmpty();
  const QUuid added = isBare ? services_.edits.add(widget.kind, target_) : services_.edits.addWidget(widget, target_);
  if (added.isNull()) return;
  added_ = added;
  entry_ = services_.edits.stack().latest()->id;
  note_->say(addedSentence(name, store_.config(), target_), !EditorFields::of(widget.kind).isEmpty());
  field_->selectAll();  // What is typed next is another search.
}

/// A card was dropped on a dock: the window tells of it where it is in front, as of its own additions.
void LibraryWindow::takeDropped(quint64 entry, const QString& sentence) {
  const QUuid& dropped = view_->carried();
  if (dropped.isNull() || dropped == added_ || !isActiveWindow()) return;
  for (const DockProfile& profile : store_.config().profiles) {
    const auto widget = std::ranges::find(profile.widgets, dropped, &DockWidget::id);
    if (widget == profile.widgets.end()) continue;
    services_.edits.takeNotice();
    added_ = dropped;
    entry_ = entry;
    note_->say(sentence, !EditorFields::of(widget->kind).isEmpty());
    field_->selectAll();
    return;
  }
}

}  // namespace tarnwick
