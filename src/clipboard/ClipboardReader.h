#pragma once

#include <QObject>
#include <functional>
#include <memory>
#include <optional>

#include "clipboard/ClipboardCapture.h"
#include "clipboard/ports/Pasteboard.h"

namespace tarnwick {

/// Reads one change of the clipboard at a time: first its types, then, unless it is marked as not for keeping, its
/// files, or else its picture, or else its text. It counts only if the owner was the same from the first type to the
/// last byte. What may take its time to look at (the head of a picture, a list of files) is looked at on another
/// thread. The pasteboard must outlive it.
class ClipboardReader {
 public:
  static constexpr qint64 kMostTextBytes = 100'001;      ///< One more than is kept.
  static constexpr qint64 kMostListBytes = 64 << 20;     ///< Of a list of files, of which the first counts.
  static constexpr qint64 kMostPictureBytes = 64 << 20;  ///< As sent.

  /// Whether nothing is to be read of what this owner copies.
  using IsListed = std::function<bool(const PasteboardOwner&)>;
  /// `imageData` of a picture is as it was sent. Absent where there is nothing to keep.
  using Done = std::function<void(const std::optional<ClipboardCapture>&)>;

  explicit ClipboardReader(Pasteboard& pasteboard) : pasteboard_(pasteboard) {}

  /// Types by which programs say that a copy is not for keeping. They count by their presence.
  static bool isMarked(const QStringList& types);

  /// Drops what is under way, which is not answered then.
  void read(quint64 change, const IsListed& isListed, Done done);
  void cancel();
  /// Whether something is under way.
  bool isReading() const { return static_cast<bool>(done_); }

 private:
  /// A type that is asked for, and what its bytes are.
  struct Step {
    enum class Kind { Files, Picture, Text, Latin1 };
    Kind kind;
    QString type;
  };

  /// What the bytes of a type turned out to be.
  struct Finding {
    bool endsReading = false;  ///< No other type is to be asked for.
    std::optional<ClipboardCapture> capture;
  };

  static QList<Step> stepsFor(const QStringList& types);
  static Finding look(Step::Kind kind, const QByteArray& bytes);
  void next();
  void take(const Step& step, const PasteboardContent& content);
  void goOn(const Finding& finding);
  void confirm(const ClipboardCapture& capture);
  void finish(const std::optional<ClipboardCapture>& capture);

  Pasteboard& pasteboard_;
  quint64 change_ = 0;
  QList<Step> steps_;  ///< What is still to be asked for, while nothing was found.
  Done done_;
  std::unique_ptr<QObject> context_;  ///< The answers to a reading end with it.
};

}  // namespace tarnwick
