#include "views/settings/RuleForm.h"

#include <QHBoxLayout>
#include <QLocale>
#include <QVBoxLayout>
#include <algorithm>

#include "store/AppStore.h"
#include "views/controls/Buttons.h"
#include "views/controls/ControlTheme.h"
#include "views/controls/Labels.h"
#include "views/controls/Switch.h"
#include "views/settings/TimeField.h"
#include "views/window/DropDown.h"

namespace tarnwick {

namespace {

constexpr int kDaysInWeek = 7;
constexpr int kDayGap = 4;

/// Of a day in the settings' numbering, which begins with Sunday as 1.
QString dayName(int day, QLocale::FormatType format) {
  return QLocale().dayName(day == 1 ? Qt::Sunday : day - 1, format);
}

/// The days as the user's calendar begins them.
QList<int> weekOrder() {
  QList<int> days;
  const int first = QLocale().firstDayOfWeek() % kDaysInWeek + 1;
  for (int i = 0; i < kDaysInWeek; ++i) days << (first - 1 + i) % kDaysInWeek + 1;
  return days;
}

ProfileRule* findRule(DockConfiguration& config, const QUuid& id) {
  auto& rules = config.desktop.profileRules;
  const auto at = std::ranges::find(rules, id, &ProfileRule::id);
  return at == rules.end() ? nullptr : &*at;
}

}  // namespace

RuleForm::RuleForm(SettingsPage& page) : page_(page) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  enabled_ = new Switch(tr("Rule is on"));
  column->addWidget(new FormRow(tr("Rule is on"), enabled_));
  connect(enabled_, &QAbstractButton::clicked, this,
          [this](bool on) { change([&](ProfileRule& rule) { rule.enabled = on; }); });
  addProfile();
  addDays();
  addTimes();
}

void RuleForm::addProfile() {
  profile_ = new DropDown(tr("Switch to"));
  layout()->addWidget(new FormRow(tr("Switch to"), profile_));
  connect(profile_, &DropDown::valueChosen, this,
          [this](const QString& id) { change([&](ProfileRule& rule) { rule.profileID = QUuid::fromString(id); }); });
}

void RuleForm::addDays() {
  auto* all = new QWidget;
  auto* row = new QHBoxLayout(all);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(kDayGap);
  days_.fill(nullptr, kDaysInWeek);
  for (const int day : weekOrder()) {
    auto* button = new Button(dayName(day, QLocale::ShortFormat));
    button->setAccessibleName(dayName(day, QLocale::LongFormat));
    button->setCheckable(true);
    row->addWidget(button);
    days_[day - 1] = button;
    connect(button, &QAbstractButton::clicked, this, [this, day](bool on) {
      change([&](ProfileRule& rule) {
        rule.days.removeAll(day);
        if (on) rule.days << day;
        std::ranges::sort(rule.days);
      });
    });
  }
  dayRow_ = new FormRow(tr("Days"), all);
  layout()->addWidget(dayRow_);
}

void RuleForm::addTimes() {
  auto* all = new QWidget;
  auto* row = new QHBoxLayout(all);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(theme::kRowGap);
  from_ = new TimeField(tr("From"));
  to_ = new TimeField(tr("To"));
  row->addWidget(from_);
  row->addWidget(new TextLabel(tr("to"), TextStyle::Body, Tone::Secondary));
  row->addWidget(to_);
  timeRow_ = new FormRow(tr("Time"), all);
  layout()->addWidget(timeRow_);
  connect(from_, &TimeField::minutesChanged, this,
          [this](int minutes) { change([&](ProfileRule& rule) { rule.startMinutes = minutes; }); });
  connect(to_, &TimeField::minutesChanged, this,
          [this](int minutes) { change([&](ProfileRule& rule) { rule.endMinutes = minutes; }); });
  for (const TimeField* field : {from_, to_})
    connect(field, &TimeField::validityChanged, this, [this] { show(page_.store().config()); });
}

void RuleForm::setRule(const QUuid& rule) {
  if (rule == rule_) return;
  rule_ = rule;
  for (TimeField* field : {from_, to_}) {
    field->clearFocus();
    field->settle();  // It belonged to another rule.
  }
  show(page_.store().config());
}

void RuleForm::change(const std::function<void(ProfileRule&)>& change) {
  page_.edit([&](DockConfiguration& config) {
    if (ProfileRule* rule = findRule(config, rule_)) change(*rule);
  });
}

void RuleForm::show(const DockConfiguration& config) {
  DockConfiguration copy = config;
  const ProfileRule* rule = findRule(copy, rule_);
  if (!rule) return;
  QStringList ids;
  for (const DockProfile& profile : config.profiles) ids << profile.id.toString() + profile.name;
  if (ids != profiles_) {
    profiles_ = ids;
    const QSignalBlocker quiet(profile_);
    profile_->clear();
    for (const DockProfile& profile : config.profiles) profile_->addChoice(profile.name, profile.id.toString());
    profile_->updateGeometry();
  }
  enabled_->setChecked(rule->enabled);
  profile_->chooseValue(rule->profileID.toString());
  for (int day = 1; day <= kDaysInWeek; ++day) days_[day - 1]->setChecked(rule->days.contains(day));
  from_->setMinutes(rule->startMinutes);
  to_->setMinutes(rule->endMinutes);
  tellFaults(*rule);
}

void RuleForm::tellFaults(const ProfileRule& rule) {
  dayRow_->setFault(rule.days.isEmpty() ? tr("Choose at least one day.") : QString());
  if (!from_->isValid() || !to_->isValid())
    timeRow_->setFault(tr("Enter hours and minutes, such as 09:30."));
  else
    timeRow_->setFault(rule.startMinutes == rule.endMinutes ? tr("The start and end times must differ.") : QString());
  timeRow_->setHelp(rule.startMinutes > rule.endMinutes ? tr("On each chosen day, the rule applies from midnight to "
                                                             "the end time and from the start time to midnight.")
                                                        : QString());
}

}  // namespace tarnwick
