#pragma once

#include <QByteArray>
#include <QPointer>
#include <QSocketNotifier>
#include <functional>

#include "base/FileDescriptor.h"
#include "base/Scheduler.h"
#include "clipboard/ports/ReceivedBytes.h"
#include "clipboard/ports/TransferWatch.h"

namespace tarnwick {

/// Reads what another program writes into a pipe, from the event loop. The scheduler must outlive it.
class PipeReading final : public QObject {
 public:
  using Done = std::function<void(const PasteboardContent&)>;

  /// `done` is called once, from the event loop, and not once `context` is gone.
  PipeReading(FileDescriptor from, Scheduler& scheduler, qint64 most, QObject* context, Done done);

  bool hasEnded() const { return !from_; }
  /// Ends it without a result.
  void end(PasteboardContent::End why) { finish({why, {}}); }

 private:
  void readMore();
  void finish(const PasteboardContent& content);

  FileDescriptor from_;
  QPointer<QObject> context_;
  Done done_;
  TransferWatch watch_;
  QSocketNotifier ready_;
  ReceivedBytes bytes_;
};

/// Writes into a pipe that another program reads, as fast as it reads. The scheduler must outlive it.
class PipeWriting final : public QObject {
 public:
  PipeWriting(FileDescriptor into, const QByteArray& bytes, Scheduler& scheduler);

  bool hasEnded() const { return !into_; }

 private:
  void writeMore();
  void finish();

  FileDescriptor into_;
  QByteArray bytes_;
  qsizetype written_ = 0;
  Scheduler& scheduler_;
  JobHandle patience_;
  QSocketNotifier ready_;
};

}  // namespace tarnwick
