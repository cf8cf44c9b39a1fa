#include "views/settings/SettingsPage.h"

#include <QDir>
#include <QLocale>
#include <QSignalBlocker>
#include <algorithm>
#include <cmath>
#include <utility>

#include "base/Text.h"
#include "store/AppStore.h"
#include "views/controls/Segments.h"
#include "views/controls/Slider.h"
#include "views/controls/Switch.h"
#include "views/settings/SettingsServices.h"
#include "views/settings/SettingsWords.h"
#include "views/window/DropDown.h"

namespace tarnwick {

namespace {

constexpr int kSliderWidth = 176;
constexpr int kValueWidth = 60;
constexpr int kPages = 10;  // How many steps of the Page keys a slider has.

}  // namespace

QString settingsText(const char* source) { return *source ? SettingsWords::tr(source) : QString(); }

QString pathText(const QString& path) {
  constexpr QChar isolate(0x2066);
  constexpr QChar end(0x2069);
  return isolate + QDir::toNativeSeparators(path) + end;
}

SettingsPage::SettingsPage(const QString& heading, AppStore& store, const SettingsServices& services)
    : CardPage(heading), store_(store), edits_(services.edits) {
  connect(&store, &AppStore::configChanged, this, &SettingsPage::refresh);
  // What follows from a change elsewhere, such as a key that was taken, is there only after it.
  connect(&store, &AppStore::layoutChanged, this, &SettingsPage::refresh, Qt::QueuedConnection);
}

void SettingsPage::edit(const std::function<void(DockConfiguration&)>& change) { edits_.change(change); }

// --- Rows -----------------------------------------------------------------------------------------------------------

FormRow* SettingsPage::addControl(Card& card, const SettingText& text, QWidget* control) {
  FormRow* row = card.addRow(settingsText(text.label), control, settingsText(text.help));
  row->setSearchWords({settingsText(text.words), card.accessibleName()});
  rows_.append({.widget = row});
  return row;
}

void SettingsPage::addOther(Card& card, QWidget* row, const QString& words) {
  card.add(row);
  rows_.append({.widget = row, .words = words + u' ' + card.accessibleName()});
}

FormRow* SettingsPage::addSwitch(Card& card, const SettingText& text, const SettingField<bool>& field) {
  auto* control = new Switch(settingsText(text.label));
  connect(control, &QAbstractButton::clicked, this,
          [this, field](bool on) { edit([&](DockConfiguration& config) { field.write(config, on); }); });
  follow([control, field](const DockConfiguration& config) { control->setChecked(field.read(config)); });
  return addControl(card, text, control);
}

FormRow* SettingsPage::addSlider(Card& card, const SettingText& text, const SettingField<double>& field,
                                 const SettingRange& range) {
  auto* control = new Slider(settingsText(text.label));
  const auto steps = [range](double value) { return static_cast<int>(std::lround(value / range.step)); };
  control->setRange(steps(range.least), steps(range.most));
  control->setPageStep(std::max(1, (control->maximum() - control->minimum()) / kPages));
  control->setValueWidth(kValueWidth);
  control->setFixedWidth(kSliderWidth + kValueWidth);
  control->setFormat([range](int at) {
    return settingsText(range.format).arg(QLocale().toString(at * range.step * range.shownTimes, 'f', range.decimals));
  });
  connect(control, &QAbstractSlider::valueChanged, this, [this, field, range](int at) {
    edit([&](DockConfiguration& config) { field.write(config, at * range.step); });
  });
  connect(control, &QAbstractSlider::sliderPressed, this, [this] { edits_.setHeld(true); });
  connect(control, &QAbstractSlider::sliderReleased, this, [this] { edits_.setHeld(false); });
  follow([control, field, steps](const DockConfiguration& config) {
    const QSignalBlocker quiet(control);
    control->setValue(steps(field.read(config)));
    control->update();
  });
  return addControl(card, text, control);
}

FormRow* SettingsPage::addSegments(Card& card, const SettingText& text, const SettingField<QString>& field,
                                   std::span<const SettingChoice> choices) {
  QStringList words;
  QStringList values;
  for (const SettingChoice& choice : choices) {
    words << settingsText(choice.word);
    values << QString::fromLatin1(choice.value);
  }
  auto* control = new Segments(settingsText(text.label), words);
  connect(control, &Segments::chosenChanged, this, [this, field, values](int index) {
    edit([&](DockConfiguration& config) { field.write(config, values.value(index)); });
  });
  follow([control, field, values](const DockConfiguration& config) {
    control->setChosen(static_cast<int>(values.indexOf(field.read(config))));
  });
  FormRow* row = addControl(card, text, control);
  row->setSearchWords(QStringList{settingsText(text.words), card.accessibleName()} + words);
  return row;
}

FormRow* SettingsPage::addDropDown(Card& card, const SettingText& text, const SettingField<QString>& field,
                                   std::span<const SettingChoice> choices) {
  auto* control = new DropDown(settingsText(text.label));
  QStringList words{settingsText(text.words), card.accessibleName()};
  for (const SettingChoice& choice : choices) {
    words << settingsText(choice.word);
    control->addChoice(words.last(), QString::fromLatin1(choice.value));
  }
  connect(control, &DropDown::valueChosen, this, [this, field](const QString& value) {
    edit([&](DockConfiguration& config) { field.write(config, value); });
  });
  follow([control, field](const DockConfiguration& config) { control->chooseValue(field.read(config)); });
  FormRow* row = addControl(card, text, control);
  row->setSearchWords(words);
  return row;
}

// --- What is shown --------------------------------------------------------------------------------------------------

void SettingsPage::follow(std::function<void(const DockConfiguration&)> show) {
  show(store_.config());
  followers_.append(std::move(show));
}

void SettingsPage::showWhile(QWidget* row, std::function<bool(const DockConfiguration&)> applies,
                             const QString& otherwise) {
  const auto at = std::ranges::find(rows_, row, &Row::widget);
  if (at == rows_.end()) return;
  at->otherwise = otherwise;
  at->applies = std::move(applies);
  // To show what is not hidden would lay it out, before there is anything to see.
  if (const bool shown = at->applies(store_.config()) && isFound(*at); shown == row->isHidden()) row->setVisible(shown);
}

void SettingsPage::needs(FormRow* row, const Capability& ability) {
  const auto at = std::ranges::find(rows_, row, &Row::widget);
  if (at == rows_.end()) return;
  at->lacking = at->unavailable = ability.reason;
  row->setUnavailable(ability.reason);
}

void SettingsPage::refresh() {
  isLate_ = !isVisible();
  if (!isLate_) takeSettings();
}

void SettingsPage::takeSettings() {
  for (qsizetype i = 0; i < followers_.size(); ++i) followers_[i](store_.config());
  arrange();
}

QList<const FormRow*> SettingsPage::formRows() const {
  QList<const FormRow*> forms;
  for (const Row& row : rows_)
    if (const auto* form = qobject_cast<const FormRow*>(row.widget); form && !form->label().isEmpty()) forms << form;
  return forms;
}

const SettingsPage::Row* SettingsPage::rowCalled(const QString& label) const {
  const auto at = std::ranges::find_if(rows_, [&](const Row& row) {
    const auto* form = qobject_cast<const FormRow*>(row.widget);
    return form && form->label() == label;
  });
  return at == rows_.end() ? nullptr : &*at;
}

bool SettingsPage::showRow(const QString& label) {
  const Row* row = rowCalled(label);
  if (!row || row->widget->isHidden()) return false;
  reveal(row->widget);
  for (QWidget* part : row->widget->findChildren<QWidget*>()) {
    if (!part->isVisible() || !part->isEnabled() || (part->focusPolicy() & Qt::TabFocus) == 0) continue;
    part->setFocus(Qt::TabFocusReason);
    break;
  }
  return true;
}

std::optional<bool> SettingsPage::turnSwitch(const QString& label) {
  if (std::exchange(isLate_, false)) takeSettings();
  const Row* row = rowCalled(label);
  if (!row || (row->applies && !row->applies(store_.config()))) return std::nullopt;
  auto* control = row->widget->findChild<Switch*>();
  if (!control || !control->isEnabled()) return std::nullopt;
  control->click();
  return control->isChecked();
}

bool SettingsPage::isFound(const Row& row) const {
  return search_.isEmpty() || beyondHeading_.isEmpty() || matchesSearch(heading(), search_) || matches(row);
}

bool SettingsPage::matches(const Row& row) const { return says(row, search_) || says(row, beyondHeading_); }

bool SettingsPage::says(const Row& row, const QString& search) const {
  const auto* form = qobject_cast<const FormRow*>(row.widget);
  return form && row.words.isEmpty() ? form->matches(search) : matchesSearch(row.words, search);
}

QString SettingsPage::whatItIsFor(const Row& row) const {
  if (!row.otherwise.isEmpty()) return row.otherwise;
  QStringList names;
  DockConfiguration config = store_.config();
  for (const DockLayout layout : kDockLayouts) {
    config.layout = layout;
    if (row.applies(config)) names << label(layout);
  }
  return names.isEmpty() ? QString() : SettingsWords::tr("Only for %1.").arg(locale().createSeparatedList(names));
}

void SettingsPage::arrange() {
  for (Row& row : rows_) {
    const bool applies = !row.applies || row.applies(store_.config());
    auto* form = qobject_cast<FormRow*>(row.widget);
    const QString why = form && !applies && !search_.isEmpty() && matches(row) ? whatItIsFor(row) : QString();
    if (const QString& said = why.isEmpty() ? row.lacking : why; said != row.unavailable) {
      row.unavailable = said;
      form->setUnavailable(said);
    }
    const bool shown = applies ? isFound(row) : !why.isEmpty();
    if (shown == row.widget->isHidden()) row.widget->setVisible(shown);
  }
}

int SettingsPage::search(const QString& words) {
  search_ = words;
  const QStringList names = Text::folded(heading()).split(u' ');
  QStringList beyond = words.split(u' ', Qt::SkipEmptyParts);
  // "Layout and displays" names that section, too.
  if (beyond.size() > 1) beyond.removeAll(SettingsWords::tr("and"));
  beyond.removeIf([&](const QString& word) {
    return std::ranges::any_of(names, [&](const QString& name) { return name.startsWith(Text::folded(word)); });
  });
  beyondHeading_ = beyond.join(u' ');
  arrange();
  return static_cast<int>(std::ranges::count_if(rows_, [](const Row& row) { return !row.widget->isHidden(); }));
}

void SettingsPage::showEvent(QShowEvent* event) {
  CardPage::showEvent(event);
  isLate_ ? refresh() : arrange();
}

void SettingsPage::hideEvent(QHideEvent* event) {
  edits_.setHeld(false);  // A control that goes in the middle of a drag is never let go.
  CardPage::hideEvent(event);
}

}  // namespace tarnwick
