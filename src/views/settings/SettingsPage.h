#pragma once

#include <QString>
#include <functional>
#include <optional>
#include <span>

#include "desktop/Capability.h"
#include "store/UndoableEdits.h"
#include "views/settings/SettingField.h"
#include "views/window/Cards.h"

namespace tarnwick {

class AppStore;
struct SettingsServices;

/// A text of Settings in the user's language; the source is marked by QT_TRANSLATE_NOOP("Settings", …).
QString settingsText(const char* source);

/// A path to be read; it runs from the left whatever is around it.
QString pathText(const QString& path);

/// What a row says.
struct SettingText {
  const char* label;
  const char* help = "";
  const char* words = "";  ///< Other words that find it.
};

/// One of the words that a setting can take.
struct SettingChoice {
  const char* word;
  const char* value;  ///< As the settings document has it.
};

/// What a slider goes over.
struct SettingRange {
  double least = 0;
  double most = 1;
  double step = 0.01;
  const char* format = "%1";  ///< With "%1" for the number.
  int decimals = 0;
  double shownTimes = 1;  ///< What the number is multiplied by before it is written.
};

/// A section of Settings: rows that show what the store holds and change it at once, whatever else changes it. Those
/// that do not apply are not shown; a search leaves those that match.
class SettingsPage : public CardPage {
  Q_OBJECT
 public:
  /// Both outlive the page.
  SettingsPage(const QString& heading, AppStore& store, const SettingsServices& services);

  AppStore& store() { return store_; }
  /// Changes the settings; the user may take it back.
  void edit(const std::function<void(DockConfiguration&)>& change);

  FormRow* addSwitch(Card& card, const SettingText& text, const SettingField<bool>& field);
  FormRow* addSlider(Card& card, const SettingText& text, const SettingField<double>& field, const SettingRange& range);
  FormRow* addSegments(Card& card, const SettingText& text, const SettingField<QString>& field,
                       std::span<const SettingChoice> choices);
  FormRow* addDropDown(Card& card, const SettingText& text, const SettingField<QString>& field,
                       std::span<const SettingChoice> choices);
  FormRow* addControl(Card& card, const SettingText& text, QWidget* control);
  /// A row of another shape; `words` is what finds it.
  void addOther(Card& card, QWidget* row, const QString& words);

  /// Runs now, and whenever the settings changed while the page is seen or has changed unseen and is shown again.
  void follow(std::function<void(const DockConfiguration& config)> show);
  /// Shows the row only while that is so. A search finds it all the same, out of use and with a sentence that says what
  /// it is for: `otherwise`, else the layouts under which it applies.
  void showWhile(QWidget* row, std::function<bool(const DockConfiguration& config)> applies,
                 const QString& otherwise = {});
  /// Without what the row needs of the desktop it is out of use and says why, also beside a search.
  void needs(FormRow* row, const Capability& ability);

  /// Leaves the rows that match; an empty search shows all again. Gives how many are left.
  int search(const QString& words);
  /// The rows with a label, whether they apply at the moment or not.
  QList<const FormRow*> formRows() const;
  /// Turns the switch in the first row of that label as a click does, and gives how it stands then. Nothing where there
  /// is none or it is of no use at the moment.
  std::optional<bool> turnSwitch(const QString& label);
  /// Scrolls to the first row of that label and gives the keyboard to what can be set or pressed in it. Gives whether
  /// it is there to be seen.
  bool showRow(const QString& label);
  void refresh();

 protected:
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  struct Row {
    QWidget* widget;
    QString words{};  ///< Of a row of another shape.
    std::function<bool(const DockConfiguration&)> applies{};
    QString otherwise{};
    QString lacking{};      ///< What the desktop has not got for it.
    QString unavailable{};  ///< What it says now of why it is out of use.
  };

  const Row* rowCalled(const QString& label) const;
  bool isFound(const Row& row) const;
  bool matches(const Row& row) const;
  bool says(const Row& row, const QString& search) const;
  QString whatItIsFor(const Row& row) const;
  void arrange();
  void takeSettings();

  AppStore& store_;
  UndoableEdits& edits_;
  QList<std::function<void(const DockConfiguration&)>> followers_;
  QList<Row> rows_;
  QString search_;
  QString beyondHeading_;  ///< Of the search: the words that do not name the section.
  bool isLate_ = false;
};

}  // namespace tarnwick
