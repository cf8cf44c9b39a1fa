#pragma once

#include <QObject>

#include "clipboard/ClipboardHistory.h"
#include "clipboard/ClipboardOwners.h"
#include "clipboard/ClipboardRecorder.h"
#include "store/Services.h"

namespace tarnwick {

class AppStore;

/// The history of what is copied, and what records it, as the settings have it. Made before the store, which drives it
/// and hands it the texts of older settings, and outlives it. Nothing is read or watched before the store follows.
/// Main thread only.
class ClipboardKeeper final : public QObject {
  Q_OBJECT
 public:
  /// The services must outlive it. `dataDirectory` is where the history lies; `executableOf` names the programs of
  /// owners that are known by nothing better.
  ClipboardKeeper(const Services& services, const QString& dataDirectory, ClipboardOwners::ExecutableOf executableOf);
  ~ClipboardKeeper() override;

  ClipboardHistory& history() { return history_; }
  /// What the store is to drive.
  BeatClient& beatClient() { return recorder_; }
  /// In a run that took the place of another, once it follows: what that one had on the clipboard can still be pasted.
  void takeOver() { recorder_.takeOver(); }
  /// Records as the store's settings have it from now on; what fails lands in its message line.
  void follow(AppStore& store);
  /// From now on the installed apps may be read, so that those that the settings list are known.
  void knowApps();

 private:
  bool isListed(const PasteboardOwner& owner) const;

  void judge();

  InstalledApps& apps_;
  ClipboardOwners::ExecutableOf executableOf_;
  QStringList neverRecord_;  ///< As the settings have it.
  bool mayKnowApps_ = false;
  ClipboardHistory history_;
  ClipboardRecorder recorder_;
};

}  // namespace tarnwick
