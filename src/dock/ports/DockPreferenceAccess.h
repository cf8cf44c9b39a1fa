#pragma once

#include <QString>
#include <QVariant>
#include <QVariantMap>
#include <functional>
#include <utility>

#include "desktop/Capability.h"

namespace tarnwick {

/// Two preferences of the system's own dock: "autohide" (it hides) and "autohide-delay" (seconds until it comes out).
/// Main thread only; no operation takes longer than a moment, whatever the dock does, and none throws.
///
/// A value is plain: a boolean, a number, a text, bytes, or a list or a map of such; an invalid one means "not set".
class DockPreferenceAccess {
 public:
  virtual ~DockPreferenceAccess() = default;

  // The delays that are written, in seconds.
  static constexpr double kNoDelay = 0;
  static constexpr double kEndlessDelay = 1000;  ///< Over a quarter of an hour: never in the way.

  /// What the user has set, in a form that only `write` of the same kind understands; invalid where nothing is set.
  virtual QVariant read(const QString& key) = 0;
  /// Whether a value from a file can be what `read` gave for this key, and is whole.
  virtual bool isOwnRecord(const QString& key, const QVariant& value) const {
    Q_UNUSED(key)
    return value.isValid();
  }
  /// Sets a boolean or a number as requested, puts back what `read` gave, or with an invalid value unsets the key. What
  /// is put back goes only over what was written before: what the user has set meanwhile stays.
  virtual void write(const QString& key, const QVariant& value) = 0;
  /// Whether everything written since the last call has reached the dock's settings on the disk.
  virtual bool synchronize() = 0;
  /// Asks, without waiting, whether the docks that these values were read from answer at all: a program can hang and
  /// hold every call up. `answer` is called at once where no dock can do that, else later, from the event loop; never
  /// once this object is gone.
  virtual void askWhetherTheyAnswer(const QVariantMap& values, const std::function<void(bool theyAnswer)>& answer) {
    Q_UNUSED(values)
    answer(true);
  }
  /// Makes the dock read its settings again, without waiting for it.
  virtual void restart() = 0;

  /// Whether this desktop has a dock that can be hidden. Without one the other operations work all the same.
  virtual Capability capability() = 0;
  /// Whether the dock that was hidden last can be kept from coming out at the screen's edge for good.
  virtual Capability staysAway() { return Capability::yes(); }

  /// Called later, from the event loop, when a dock has come up that the last `read` did not know.
  void setDockAppeared(std::function<void()> appeared) { appeared_ = std::move(appeared); }

 protected:
  void dockAppeared() const {
    if (appeared_) appeared_();
  }

 private:
  std::function<void()> appeared_;
};

}  // namespace tarnwick
