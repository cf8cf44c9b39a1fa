#include "platform/wayland/PipeTransfers.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <utility>

namespace tarnwick {
namespace {

constexpr std::size_t kChunk = 64 * 1024;
// Pieces that are read in one turn of the event loop.
constexpr int kChunksAtOnce = 8;
// Seconds that somebody may take for one piece.
constexpr double kPatience = 20;

int withoutWaiting(int descriptor) {
  ::fcntl(descriptor, F_SETFL, ::fcntl(descriptor, F_GETFL) | O_NONBLOCK);
  return descriptor;
}

/// Writes into a pipe whose reader may be gone, which would end the program otherwise.
ssize_t writeQuietly(int into, const char* data, std::size_t size) {
  sigset_t broken;
  sigemptyset(&broken);
  sigaddset(&broken, SIGPIPE);
  sigset_t before;
  pthread_sigmask(SIG_BLOCK, &broken, &before);
  const ssize_t written = ::write(into, data, size);
  const int code = errno;
  if (written < 0 && code == EPIPE && sigismember(&before, SIGPIPE) == 0) {
    constexpr timespec kNow{};
    sigtimedwait(&broken, nullptr, &kNow);
  }
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
  errno = code;
  return written;
}

}  // namespace

PipeReading::PipeReading(FileDescriptor from, Scheduler& scheduler, qint64 most, QObject* context, Done done)
    : from_(std::move(from)),
      context_(context),
      done_(std::move(done)),
      watch_(scheduler, [this] { end(PasteboardContent::End::TooSlow); }),
      ready_(withoutWaiting(from_.number()), QSocketNotifier::Read),
      bytes_(most) {
  connect(&ready_, &QSocketNotifier::activated, this, &PipeReading::readMore);
}

void PipeReading::readMore() {
  if (hasEnded()) return;
  if (!context_) return end(PasteboardContent::End::Changed);
  static std::array<char, kChunk> chunk;
  for (int round = 0; round < kChunksAtOnce; ++round) {
    const ssize_t size = ::read(from_.number(), chunk.data(), chunk.size());
    if (size < 0 && errno == EINTR) continue;
    if (size < 0 && errno == EAGAIN) return;
    if (size < 0) return end(PasteboardContent::End::Refused);
    if (size == 0) return finish({PasteboardContent::End::Whole, bytes_.take()});
    if (!bytes_.hasSpaceFor(size)) return end(PasteboardContent::End::TooLarge);
    bytes_.add(chunk.data(), size);
    watch_.gotBytes();
  }
}

void PipeReading::finish(const PasteboardContent& content) {
  if (hasEnded()) return;
  ready_.setEnabled(false);
  from_.reset();
  if (context_) {
    QMetaObject::invokeMethod(
        context_, [done = std::exchange(done_, {}), content] { done(content); }, Qt::QueuedConnection);
  }
  bytes_.take();
}

PipeWriting::PipeWriting(FileDescriptor into, const QByteArray& bytes, Scheduler& scheduler)
    : into_(std::move(into)),
      bytes_(bytes),
      scheduler_(scheduler),
      patience_(scheduler.after(kPatience, [this] { finish(); })),
      ready_(withoutWaiting(into_.number()), QSocketNotifier::Write) {
  connect(&ready_, &QSocketNotifier::activated, this, &PipeWriting::writeMore);
}

void PipeWriting::writeMore() {
  if (hasEnded()) return;
  const std::size_t left = static_cast<std::size_t>(bytes_.size() - written_);
  const ssize_t size =
      left == 0 ? 0 : writeQuietly(into_.number(), bytes_.constData() + written_, std::min(left, kChunk));
  if (size < 0 && (errno == EAGAIN || errno == EINTR)) return;
  if (size < 0) return finish();
  written_ += size;
  if (written_ == bytes_.size()) return finish();
  patience_ = scheduler_.after(kPatience, [this] { finish(); });
}

// The notifier may be what calls.
void PipeWriting::finish() {
  ready_.setEnabled(false);
  into_.reset();
  bytes_.clear();
}

}  // namespace tarnwick
