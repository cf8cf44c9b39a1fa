#pragma once

#include "config/DockConfiguration.h"
#include "facilities/ActiveSets.h"

namespace tarnwick {

/// The step of a client in a beat. The order is the one in which a beat runs; a client that has no like here takes the
/// step that it must not come before.
enum class BeatStep {
  Temperature,
  Processes,
  Meetings,
  ClaudeActivity,  ///< Refreshes the shown widgets of that connection mode.
  Media,
  VideoPreview,  ///< Clears the preview of a browser's video that no tile shows.
  AudioDevices,
  Metrics,
  Clipboard,
  // Here the store applies the profile rules, moves timers on and lets held-back applications come.
  Productivity,  ///< The desktop's own notes, contacts and mail.
  Wallpaper,
  Calendar,
  Reminders,
  RemoteValues,
  // What only ends, but for the pictures of windows, which beat last.
  Sounds,
  KeyboardCleaner,
  WindowPreviews,
  VoiceRecorder,
};

/// A facility that the store's beat of one second drives. It is handed to the store in `StoreSetup::clients`, which
/// must not outlive it. All calls come on the main thread and must not block.
class BeatClient {
 public:
  virtual ~BeatClient() = default;

  virtual BeatStep step() const = 0;
  /// It beats on every tick that is a multiple of this; never for 0.
  virtual int everyTicks() const { return 0; }
  /// Whether it beats while displays show this.
  virtual bool isNeededBy(const ActiveSets& active) const {
    Q_UNUSED(active)
    return true;
  }

  /// The store is being made: media, the desktop's own data and the clipboard come before its timer runs, all others
  /// after it, in the order of the steps. Not called in a run without a user's data.
  virtual void start(const DockConfiguration& config, const ActiveSets& active) {
    Q_UNUSED(config)
    Q_UNUSED(active)
  }
  virtual void beat(const ActiveSets& active) { Q_UNUSED(active) }
  /// The computer woke up; a beat follows at once.
  virtual void wake() {}
  /// The program ends; the settings are saved afterwards.
  virtual void end() {}

 protected:
  BeatClient() = default;
  BeatClient(const BeatClient&) = default;
  BeatClient& operator=(const BeatClient&) = default;
};

}  // namespace tarnwick
