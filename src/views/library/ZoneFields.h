#pragma once

#include "views/library/FieldControl.h"
#include "widgets/ZoneSearch.h"

class QVBoxLayout;

namespace tarnwick {

class ListRow;
class SearchField;
class TextLabel;

/// One time zone or several, looked for by city, country or name.
class ZoneField final : public FieldControl {
  Q_OBJECT
 public:
  static constexpr qsizetype kMostZones = 8;

  explicit ZoneField(bool several, const QString& placeholder = {});

  QString value() const override { return zones_.join(u','); }
  void setValue(const QString& value) override;
  /// What the zone that was chosen last is called.
  const QString& city() const { return city_; }
  /// What value() was before the last choice.
  const QString& valueBefore() const { return before_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void search();
  void showZones();
  void take(const ZoneMatch& match);
  void leave(const QString& zone);

  bool several_;
  QStringList zones_;
  QString city_;
  QString before_;
  QList<ZoneMatch> found_;
  QVBoxLayout* chosen_;
  SearchField* field_;
  QVBoxLayout* matches_;
  TextLabel* message_;
};

}  // namespace tarnwick
