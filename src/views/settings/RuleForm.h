#pragma once

#include <QUuid>

#include "views/settings/SettingsPage.h"

namespace tarnwick {

class Button;
class DropDown;
class Switch;
class TimeField;

/// The form of one rule that switches profiles. What is changed is stored at once.
class RuleForm final : public QWidget {
  Q_OBJECT
 public:
  explicit RuleForm(SettingsPage& page);

  /// Shows that rule; none where it is not in the settings.
  void setRule(const QUuid& rule);
  const QUuid& rule() const { return rule_; }
  /// Shows what the settings hold.
  void show(const DockConfiguration& config);

 private:
  void addProfile();
  void addDays();
  void addTimes();
  void change(const std::function<void(ProfileRule& rule)>& change);
  void tellFaults(const ProfileRule& rule);

  SettingsPage& page_;
  QUuid rule_;
  Switch* enabled_;
  DropDown* profile_;
  QStringList profiles_;
  QList<Button*> days_;  // Sunday first, as the settings count.
  TimeField* from_;
  TimeField* to_;
  FormRow* dayRow_;
  FormRow* timeRow_;
};

}  // namespace tarnwick
