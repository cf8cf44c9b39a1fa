#pragma once

#include <QHash>
#include <QImage>
#include <QObject>
#include <functional>
#include <memory>

#include "base/OrderedWork.h"
#include "base/Scheduler.h"
#include "clipboard/ClipboardStore.h"
#include "facilities/StoreCalls.h"

namespace tarnwick {

/// A picture of the history, small.
struct ClipboardThumbnail {
  QImage image;  ///< Null where it cannot be read.
  QSize size;    ///< Of the picture itself.
};

/// The history of what was copied, for the main thread: what it holds can be read at any moment, and all work
/// (pictures, digests, files) is done elsewhere, in the order in which it was asked for. What was asked for is finished
/// before this ends. Main thread only.
class ClipboardHistory final : public QObject, public ClipboardMigration {
  Q_OBJECT
 public:
  /// The clock must outlive this object. Nothing is read before something is asked for.
  ClipboardHistory(const QString& dataFolder, const Scheduler& clock, QObject* parent = nullptr);
  ~ClipboardHistory() override;

  /// Newest first; a copy of it costs nothing and never changes. Empty until `load` has answered.
  const QList<ClipboardEntry>& items() const { return items_; }
  /// Why the history cannot be read, as a finished sentence; empty while it can.
  const QString& problem() const { return problem_; }
  bool isLoaded() const { return isLoaded_; }

  /// Holds these from now on and reads nothing, for pictures and tests. `thumbnails` by the names of their files.
  void setFixed(const QList<ClipboardEntry>& items, const QHash<QString, ClipboardThumbnail>& thumbnails = {});

  using Done = std::function<void()>;
  /// Reads the index; `didChange` follows where it holds something. A failure stands in `problem`, and is not announced
  /// by `failed`. `done` is called whatever comes of it.
  void load(Done done = {});

  using Recorded = std::function<void(const std::optional<ClipboardEntry>&)>;
  /// A copy. `imageData` is a picture in the format in which it was sent. Of the pictures that wait for their turn the
  /// latest alone is kept. `done` gets what was stored, if anything; it is not called once `context` is gone.
  void record(ClipboardCapture capture, QObject* context = nullptr, Recorded done = {});
  void toggleFavourite(const QUuid& id);
  using Removed = std::function<void(const RemovedClipboardEntry&)>;
  /// `done` gets what `putBack` needs to take it back; it is not called where nothing was removed, nor once `context`
  /// is gone.
  void remove(const QUuid& id, QObject* context, Removed done);
  void putBack(const RemovedClipboardEntry& removed);
  void clear();

  /// As in the store.
  void noteHeld(bool isHeld);
  using Held = std::function<void(const QUuid& id)>;
  /// Loads the history, too. Not answered once `context` is gone.
  void takeHeld(QObject* context, Held done);

  /// At a start, before there is anything to wait behind: writes the texts and returns.
  bool migrate(const QStringList& texts) override;

  using Picture = std::function<void(const std::optional<QByteArray>& png)>;
  /// The picture of an entry, absent where its file cannot be read. Not answered once `context` is gone.
  void readPicture(const ClipboardEntry& entry, QObject* context, Picture done);
  using Thumbnail = std::function<void(const ClipboardThumbnail& thumbnail)>;
  /// The same, no side longer than `side`.
  void readThumbnail(const ClipboardEntry& entry, int side, QObject* context, Thumbnail done);
  /// Whether an entry is a folder. That is looked up elsewhere once it is asked for; `didChange` follows where it is.
  bool isFolder(const ClipboardEntry& entry);
  /// The picture's file, for programs that take files; empty where there is none.
  QString picturePath(const ClipboardEntry& entry) const;

 Q_SIGNALS:
  /// Other entries, or another `problem`.
  void didChange();
  /// Something that was asked for was not done; a finished sentence.
  void failed(const QString& message);

 private:
  struct Outcome;
  struct WaitingPicture;

  template <class Work>
  static Outcome attempt(ClipboardStore& store, Work work);
  /// Does `work` with the store on the other thread, and publishes what came of it.
  template <class Work, class After>
  void start(Work work, After after);
  template <class Work>
  void start(Work work);
  void take(const Outcome& outcome);

  const Scheduler& clock_;
  ClipboardStore store_;   ///< The worker's alone.
  ClipboardStore places_;  ///< Of the same folder, never loaded: says where files are.
  QList<ClipboardEntry> items_;
  QString problem_;
  bool isLoaded_ = false;
  bool isFixed_ = false;
  QHash<QString, ClipboardThumbnail> fixedThumbnails_;
  QHash<QString, bool> folders_;  ///< By path, of what was asked for.
  std::weak_ptr<WaitingPicture> waiting_;
  OrderedWork work_;
};

}  // namespace tarnwick
