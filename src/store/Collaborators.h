#pragma once

#include <QDateTime>
#include <QList>
#include <QString>
#include <QUuid>
#include <functional>
#include <memory>
#include <optional>

#include "config/DockWidget.h"

/// What the store drives on its beat and at the turns of its life, in the few words that it needs of each.
/// Every class here is a quiet default that does nothing; the part of the program that builds the facility derives from
/// it and hands its own in. All calls come on the main thread and must not block.
namespace tarnwick {

struct TemperatureReadings {
  virtual ~TemperatureReadings() = default;
  virtual void refresh() {}
};

struct ProcessReadings {
  virtual ~ProcessReadings() = default;
  virtual void refresh() {}
};

struct MeetingControl {
  virtual ~MeetingControl() = default;
  virtual void refresh() {}
  virtual void disconnect() {}
};

struct MediaControl {
  virtual ~MediaControl() = default;
  virtual void refresh() {}
  virtual void restore(const QString& source) { Q_UNUSED(source) }
  /// Leaves the source alone; `forgetting` also drops it from what is restored at the next start.
  virtual void disconnect(bool forgetting) { Q_UNUSED(forgetting) }
  virtual void clearVideoPreview() {}
};

struct AudioDevices {
  virtual ~AudioDevices() = default;
  virtual void refresh() {}
};

struct BackgroundSounds {
  virtual ~BackgroundSounds() = default;
  virtual void stop() {}
};

struct KeyboardCleaner {
  virtual ~KeyboardCleaner() = default;
  virtual void stop() {}
};

struct WallpaperRotation {
  virtual ~WallpaperRotation() = default;
  virtual void tick() {}
};

struct VoiceRecorder {
  virtual ~VoiceRecorder() = default;
  virtual void stop() {}
};

/// Other programs' windows that were moved out of the dock's way.
struct WindowKeeping {
  virtual ~WindowKeeping() = default;
  /// Puts back what was moved, by this run or by one that crashed. `journal` is the recovery file's path.
  virtual void restoreReservations(const QString& journal) { Q_UNUSED(journal) }
  virtual void stopPreviews() {}
};

struct CalendarReadings {
  virtual ~CalendarReadings() = default;
  virtual void loadCalendar() {}
  virtual void loadReminders() {}
  /// Installed by the store: runs when the calendars changed underneath.
  std::function<void()> onChanged;
};

/// What the desktop's own notes, contacts and mail give.
struct NativeProductivity {
  virtual ~NativeProductivity() = default;
  virtual void refresh() {}
};

struct ClipboardKeeping {
  virtual ~ClipboardKeeping() = default;
  /// Grows with every change of the clipboard.
  virtual int changeCount() const { return 0; }
  /// Records what the clipboard holds now.
  virtual void record() {}
  /// Takes over texts of an older settings document. False means that nothing was taken and the texts must stay.
  /// Throws DomainError.
  virtual bool migrate(const QStringList& texts) {
    Q_UNUSED(texts)
    return false;
  }
};

struct CredentialKeeping {
  virtual ~CredentialKeeping() = default;
  /// Removes a widget's credentials. Throws DomainError.
  virtual void remove(const QUuid& widget) { Q_UNUSED(widget) }
  /// Removes credentials of widgets that no longer exist; failures are the implementation's to ignore.
  virtual void removeOrphans(const QList<QUuid>& keeping) { Q_UNUSED(keeping) }
};

/// The fetched values of connected widgets.
struct RemoteRefresh {
  virtual ~RemoteRefresh() = default;
  virtual void refresh(const DockWidget& widget) { Q_UNUSED(widget) }
  virtual void refreshAll() {}
  /// Cancels every fetch that runs.
  virtual void cancelAll() {}
};

/// One of each. A member left as it is made does nothing.
struct Collaborators {
  std::unique_ptr<TemperatureReadings> temperature = std::make_unique<TemperatureReadings>();
  std::unique_ptr<ProcessReadings> processes = std::make_unique<ProcessReadings>();
  std::unique_ptr<MeetingControl> zoom = std::make_unique<MeetingControl>();
  std::unique_ptr<MediaControl> media = std::make_unique<MediaControl>();
  std::unique_ptr<AudioDevices> audioDevices = std::make_unique<AudioDevices>();
  std::unique_ptr<BackgroundSounds> sounds = std::make_unique<BackgroundSounds>();
  std::unique_ptr<KeyboardCleaner> cleaner = std::make_unique<KeyboardCleaner>();
  std::unique_ptr<WallpaperRotation> wallpaper = std::make_unique<WallpaperRotation>();
  std::unique_ptr<VoiceRecorder> recorder = std::make_unique<VoiceRecorder>();
  std::unique_ptr<WindowKeeping> windows = std::make_unique<WindowKeeping>();
  std::unique_ptr<CalendarReadings> calendar = std::make_unique<CalendarReadings>();
  std::unique_ptr<NativeProductivity> productivity = std::make_unique<NativeProductivity>();
  std::unique_ptr<ClipboardKeeping> clipboard = std::make_unique<ClipboardKeeping>();
  std::unique_ptr<CredentialKeeping> credentials = std::make_unique<CredentialKeeping>();
  std::unique_ptr<RemoteRefresh> remote = std::make_unique<RemoteRefresh>();
};

}  // namespace tarnwick
