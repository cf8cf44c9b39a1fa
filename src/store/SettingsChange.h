#pragma once

#include <QStringList>

#include "config/DockConfiguration.h"

namespace tarnwick {

/// What one change did to the settings, field by field, so that it can be taken back without what others changed since.
/// The tiles of profiles that were there before and after are left out: they have ways back of their own.
class SettingsChange {
 public:
  SettingsChange(const DockConfiguration& before, const DockConfiguration& after);

  /// The places in the document that differ, such as "layout" or "desktop.triggerSize".
  const QStringList& fields() const { return fields_; }
  bool isEmpty() const { return fields_.isEmpty(); }
  /// Takes in a later change of the same fields; what others did between the two stays out.
  void goOn(const SettingsChange& later);

  /// Gives every field its old value back that still has the new one. A profile that the change made goes if nothing
  /// was put on it or taken from it; one that it removed comes back.
  void takeBack(DockConfiguration& config) const;
  /// What makes it again once it was taken back.
  SettingsChange reversed() const { return {after_, before_}; }

 private:
  DockConfiguration before_;
  DockConfiguration after_;
  QStringList fields_;
};

}  // namespace tarnwick
