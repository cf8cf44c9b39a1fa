#pragma once

#include <QObject>

#include "clipboard/ClipboardHistory.h"
#include "clipboard/ClipboardReader.h"
#include "clipboard/ports/Pasteboard.h"
#include "facilities/ActiveSets.h"
#include "facilities/BeatClient.h"

namespace tarnwick {

/// Puts what is copied into the history: while that is switched on, a clipboard widget is shown and the session is not
/// locked. What is copied meanwhile is passed over for good, as is what was there before the start. It follows the
/// clipboard's own announcements; the beat asks nothing.
///
/// When the program ends that owned the newest entry, the entry is put on the clipboard again, so that it can still be
/// pasted. What was cleared deliberately, or was never recorded, does not come back.
class ClipboardRecorder final : public QObject, public BeatClient {
  Q_OBJECT
 public:
  /// Both must outlive this object. Nothing happens before `start`.
  ClipboardRecorder(Pasteboard& pasteboard, ClipboardHistory& history, QObject* parent = nullptr);

  /// Which owners nothing is recorded of. One that is not known is not among them.
  void setNeverFrom(ClipboardReader::IsListed isListed) { isListed_ = std::move(isListed); }
  /// Whether that can be told of an owner. Until then what is copied waits, and is read if it is still there.
  void setReady(bool ready);
  /// The user's switch.
  void setEnabled(bool enabled);
  /// What displays show from now on.
  void follow(const ActiveSets& active);
  void setLocked(bool locked);

  /// Whether a copy is being read.
  bool isReading() const { return reader_.isReading(); }

  BeatStep step() const override { return BeatStep::Clipboard; }
  void start(const DockConfiguration& config, const ActiveSets& active) override;
  void end() override;

  /// After `start`, in a run that took the place of another: if the newest entry was on the clipboard by the other's
  /// hand and went with it, it is put there again.
  void takeOver();

 private:
  bool isRecording() const { return isStarted_ && isEnabled_ && isShown_ && !isLocked_; }
  void set(bool& state, bool value);
  void notice(PasteboardChange change);
  void read();
  void keep(const ClipboardCapture& capture);
  void revive();
  void takeOver(const QUuid& held);
  bool isNewest(const QUuid& entry) const;
  void offerNewest();

  Pasteboard& pasteboard_;
  ClipboardHistory& history_;
  ClipboardReader reader_;
  ClipboardReader::IsListed isListed_ = [](const PasteboardOwner&) { return false; };
  quint64 pasteboardCount_ = 0;  ///< The latest change that was seen.
  quint64 keptChange_ = 0;       ///< The change whose content was handed to the history; 0 for none.
  QUuid keptEntry_;              ///< What became of it there; null until that is known.
  quint64 endOfOwner_ = 0;       ///< The change by which the owner of that went; 0 while it lives.
  QUuid heldBefore_;             ///< What an earlier run has there still; null for nothing.
  bool isStarted_ = false;
  bool isEnabled_ = false;
  bool isShown_ = false;
  bool isLocked_ = false;
  bool isReady_ = true;
  bool waits_ = false;  ///< The latest change is to be read once it is ready.
};

}  // namespace tarnwick
