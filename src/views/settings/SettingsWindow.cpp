#include "views/settings/SettingsWindow.h"

#include <QKeyEvent>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "views/controls/Fields.h"
#include "views/controls/Labels.h"
#include "views/settings/Pages.h"
#include "views/settings/SettingsSections.h"
#include "views/window/LayoutCard.h"
#include "views/window/SideList.h"
#include "views/window/WindowTheme.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr QSize kWindow{848, 720};
constexpr QSize kLeast{480, 320};  // Half of the smallest display, beside another window, has space for it.
constexpr int kWholeSide = 720;    // From this width on there is space for words in the side bar.
constexpr int kRow = 32;

SideItem itemOf(const SettingsSection& section, int count = 0) {
  return {QString::fromLatin1(section.id), settingsText(section.title), QString::fromLatin1(section.symbol),
          count ? QLocale().toString(count) : QString(), false};
}

}  // namespace

SettingsWindow::SettingsWindow(AppStore& store, SettingsServices services)
    : AppWindow(store, tr("Tarnwick Settings")),
      store_(store),
      services_(std::move(services)),
      field_(new SearchField(tr("Search"))),
      side_(new SideList(tr("Sections"), kRow)),
      stack_(new QStackedWidget),
      nothing_(new TextLabel({}, TextStyle::Body, Tone::Secondary)) {
  nothing_->setAlignment(Qt::AlignCenter);
  stack_->addWidget(nothing_);
  QList<SideItem> items;
  for (const SettingsSection& section : settingsSections()) items << itemOf(section);
  side_->setItems(items);
  setContent(makeSide(), makeBody());
  connect(side_, &SideList::chosenChanged, this, &SettingsWindow::turnTo);
  connect(field_, &QLineEdit::textChanged, this, &SettingsWindow::search);
  connect(field_, &QLineEdit::returnPressed, this, &SettingsWindow::enterPage);
  connect(&services_.edits.stack(), &UndoStack::pushed, field_, &SearchField::forgetTyping);
  const QSize wider(kLayoutColumns * (LayoutCard::smallWidth() - LayoutCard::kSmallWidth), 0);
  setMinimumSize(kLeast);
  resize(kWindow + wider);
  turnTo(side_->chosen());
  side_->setFocus();
}

SettingsWindow::~SettingsWindow() {
  hide();  // Ends what the sections do while they are seen, while all that they use still exists.
}

QWidget* SettingsWindow::makeSide() {
  sidePane_ = new QWidget;
  sidePane_->setFixedWidth(theme::kSideWidth);
  sideColumn_ = new QVBoxLayout(sidePane_);
  sideColumn_->setContentsMargins(theme::kSidePadding, theme::kCardGap, theme::kSidePadding, theme::kSidePadding);
  sideColumn_->setSpacing(theme::kCardGap);
  sideColumn_->addWidget(field_);
  sideColumn_->addWidget(side_, 1);
  return sidePane_;
}

QWidget* SettingsWindow::makeBody() {
  auto* body = new QWidget;
  auto* column = new QVBoxLayout(body);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  above_ = new QHBoxLayout;
  column->addLayout(above_);
  column->addWidget(stack_, 1);
  return body;
}

/// In a narrow window the side bar shows its symbols alone, and the search goes above the page.
void SettingsWindow::fitSide() {
  const bool isWhole = width() >= kWholeSide;
  if (isWhole == (above_->count() == 0)) return;
  const bool hadKeys = field_->hasFocus();
  if (isWhole)
    sideColumn_->insertWidget(0, field_);
  else
    above_->addWidget(field_);
  const int side = isWhole ? 0 : theme::kBodyPadding;
  above_->setContentsMargins(side, isWhole ? 0 : theme::kCardGap, side, 0);
  sidePane_->setFixedWidth(isWhole ? theme::kSideWidth : theme::kSideSymbolRow + theme::kSidePadding * 2);
  field_->show();
  if (hadKeys) field_->setFocus(Qt::OtherFocusReason);
}

QStringList SettingsWindow::sections() {
  QStringList ids;
  for (const SettingsSection& section : settingsSections()) ids << QString::fromLatin1(section.id);
  return ids;
}

void SettingsWindow::showSection(const QString& section, const QString& label) {
  if (!settingsSection(section)) return;
  field_->clear();
  side_->choose(section);
  turnTo(section);
  if (label.isEmpty()) return;
  // Once a window that has only just been made is laid out.
  QMetaObject::invokeMethod(
      this,
      [this, page = page(section), label] {
        // A row that does not apply now a search finds, and it says what it is for.
        if (!page->showRow(label)) field_->setText(label);
      },
      Qt::QueuedConnection);
}

QString SettingsWindow::section() const { return side_->chosen(); }

void SettingsWindow::followKeys() {
  for (const auto& [section, page] : pages_) page->refresh();
}

SettingsPage* SettingsWindow::page(const QString& section) {
  const auto made = pages_.find(section);
  if (made != pages_.end()) return made->second;
  SettingsPage* page = settingsSection(section)->make(store_, services_);
  stack_->addWidget(page);
  pages_[section] = page;
  return page;
}

void SettingsWindow::turnTo(const QString& section) {
  if (settingsSection(section)) stack_->setCurrentWidget(page(section));
}

/// Gives the keyboard to the first control of the section that is shown.
void SettingsWindow::enterPage() {
  const QWidget* page = stack_->currentWidget();
  if (page == nothing_) return;
  for (QWidget* at = page->nextInFocusChain(); at != page; at = at->nextInFocusChain()) {
    const bool takesKeys = at->isVisible() && at->isEnabled() && at->focusPolicy() & Qt::TabFocus;
    if (takesKeys && page->isAncestorOf(at)) return at->setFocus(Qt::TabFocusReason);
  }
}

/// Leaves the sections in which something is found, and in each what is found.
void SettingsWindow::search() {
  const QString words = field_->text().trimmed();
  if (words.isEmpty() && beforeSearch_.isEmpty()) return;
  if (beforeSearch_.isEmpty()) beforeSearch_ = side_->chosen();
  QList<SideItem> items;
  for (const SettingsSection& section : settingsSections()) {
    if (words.isEmpty()) {
      items << itemOf(section);
      const auto made = pages_.find(QString::fromLatin1(section.id));
      if (made != pages_.end()) made->second->search({});
      continue;
    }
    const int found = page(QString::fromLatin1(section.id))->search(words);
    if (found > 0) items << itemOf(section, found);
  }
  const QString chosen = side_->chosen();
  side_->setItems(items);
  if (words.isEmpty()) {
    if (chosen.isEmpty()) side_->choose(beforeSearch_);
    beforeSearch_.clear();
  } else if (const auto named =
                 std::ranges::find_if(items, [&](const SideItem& item) { return matchesSearch(item.title, words); });
             named != items.end()) {
    // Whoever writes the name of a section means that one before others that only mention it.
    side_->choose(named->id);
  }
  nothing_->setText(items.isEmpty() ? tr("No setting matches “%1”.").arg(words) : QString());
  items.isEmpty() ? stack_->setCurrentWidget(nothing_) : turnTo(side_->chosen());
}

void SettingsWindow::showEvent(QShowEvent* event) {
  AppWindow::showEvent(event);
  turnTo(side_->chosen());
}

void SettingsWindow::resizeEvent(QResizeEvent* event) {
  AppWindow::resizeEvent(event);
  fitSide();
}

void SettingsWindow::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Find)) {
    field_->setFocus(Qt::ShortcutFocusReason);
    field_->selectAll();
  } else {
    AppWindow::keyPressEvent(event);
  }
}

}  // namespace tarnwick
