#pragma once

#include <QList>
#include <QString>
#include <functional>
#include <optional>

namespace tarnwick {

enum class DockPreference { Autohide, AutohideDelay };

/// In the notation of the dock's kind; none where the user has set nothing.
using DockValue = std::optional<QString>;

/// One setting of another program's dock.
struct DockSetting {
  QString place;  ///< Which dock, as its kind names it ("panel-1").
  QString name;   ///< The setting there.
  DockValue value;

  bool operator==(const DockSetting&) const = default;
};

/// One kind of dock. No operation throws or waits for longer than a moment.
class DockBackend {
 public:
  virtual ~DockBackend() = default;

  /// What the user has behind a preference, for every dock of the kind that can be in our way; empty without one.
  virtual QList<DockSetting> own(DockPreference preference) = 0;
  /// What these settings become so that the dock hides, or comes out after so many seconds.
  virtual QList<DockSetting> hiding(DockPreference preference, double seconds, const QList<DockSetting>& own) = 0;
  /// Whether a dock of the kind can be kept from coming out at the edge.
  virtual bool staysAway() const { return true; }
  /// Whether a setting has the form of those that `own` gives for a preference; whether it is there does not matter.
  virtual bool knows(DockPreference preference, const DockSetting& setting) const = 0;
  /// Sets or unsets; where `over` names values, only over one of these, since any other is the user's. False where
  /// there is no such setting any more.
  virtual bool put(const DockSetting& setting, const QList<DockValue>& over) = 0;
  /// Whether everything that was put since the last call holds.
  virtual bool flush() = 0;

  /// Asks, without waiting, whether the program of these docks answers calls at all, or runs so that it could hold one
  /// up. The answer comes at once, or from the event loop; never once this object is gone.
  virtual void askWhetherItAnswers(const std::function<void(bool answers)>& answer) { answer(true); }
  /// Whether docks of the kind may come some time after their program has its name on the bus.
  virtual bool comesAfterItsName() const { return false; }
  /// Asks, without waiting, whether there is a dock by now. The answer comes from the event loop, if it comes; never
  /// once this object is gone.
  virtual void askWhetherThere(std::function<void(bool isThere)> answer) { Q_UNUSED(answer) }
};

}  // namespace tarnwick
