#include "platform/linux/ReapedChild.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/eventfd.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <array>
#include <cerrno>
#include <vector>

#include "base/FileDescriptor.h"
#include "base/ModuleLoader.h"

namespace tarnwick {

namespace {

constexpr int kLifeline = STDERR_FILENO + 1;

struct Pipe {
  FileDescriptor reading;
  FileDescriptor writing;
};

std::optional<Pipe> makePipe() {
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) return std::nullopt;
  return Pipe{FileDescriptor(ends[0]), FileDescriptor(ends[1])};
}

/// A write to a program that has gone must not end ours.
ssize_t writeQuietly(int descriptor, const char* bytes, std::size_t size) {
  sigset_t broken;
  sigset_t before;
  sigemptyset(&broken);
  sigaddset(&broken, SIGPIPE);
  pthread_sigmask(SIG_BLOCK, &broken, &before);
  const ssize_t written = ::write(descriptor, bytes, size);
  const int code = errno;
  if (written < 0 && code == EPIPE && sigismember(&before, SIGPIPE) == 0) {
    const timespec now{};
    sigtimedwait(&broken, nullptr, &now);
  }
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
  errno = code;
  return written;
}

class ReapedChild final : public ChildExchange {
 public:
  ReapedChild(pid_t reaper, FileDescriptor input, FileDescriptor output, FileDescriptor lifeline, FileDescriptor wake,
              std::stop_token stop)
      : reaper_(reaper),
        input_(std::move(input)),
        output_(std::move(output)),
        lifeline_(std::move(lifeline)),
        wake_(std::move(wake)),
        waking_(std::move(stop), Wake{wake_.number()}) {}
  Q_DISABLE_COPY_MOVE(ReapedChild)
  ~ReapedChild() override {
    lifeline_.reset();
    while (::waitpid(reaper_, nullptr, 0) < 0 && errno == EINTR) {
    }
  }

  bool write(const QByteArray& bytes) override {
    qsizetype at = 0;
    while (at < bytes.size()) {
      const ssize_t count =
          writeQuietly(input_.number(), bytes.constData() + at, static_cast<std::size_t>(bytes.size() - at));
      if (count < 0 && errno == EINTR) continue;
      if (count <= 0) return false;
      at += count;
    }
    return true;
  }

  Reading read(QByteArray& bytes, qsizetype most, int milliseconds) override {
    std::array<pollfd, 2> watched = {{{output_.number(), POLLIN, 0}, {wake_.number(), POLLIN, 0}}};
    const int ready = ::poll(watched.data(), watched.size(), milliseconds);
    if (ready < 0) return errno == EINTR ? Reading::Got : Reading::Ended;
    if (watched[1].revents != 0) return Reading::Cancelled;
    if (ready == 0) return Reading::TimedOut;
    const qsizetype before = bytes.size();
    bytes.resize(before + most);
    const ssize_t count = ::read(output_.number(), bytes.data() + before, static_cast<std::size_t>(most));
    bytes.resize(before + std::max<ssize_t>(0, count));
    if (count < 0) return errno == EINTR ? Reading::Got : Reading::Ended;
    return count == 0 ? Reading::Ended : Reading::Got;
  }

 private:
  struct Wake {
    int descriptor;
    void operator()() const { ::eventfd_write(descriptor, 1); }
  };

  pid_t reaper_;
  FileDescriptor input_;
  FileDescriptor output_;
  FileDescriptor lifeline_;  ///< While this is open the program may live.
  FileDescriptor wake_;
  std::stop_callback<Wake> waking_;
};

/// The environment of the program. What it was installed with is found beside it, as where a version manager keeps a
/// program's interpreter, of which the desktop's own path knows nothing.
std::vector<QByteArray> environmentOf(const QString& program) {
  const QByteArray folder = QFile::encodeName(QFileInfo(program).path());
  std::vector<QByteArray> all;
  bool hasPath = false;
  for (char** entry = environ; entry && *entry; ++entry) {
    QByteArray variable(*entry);
    if (variable.startsWith("PATH=")) {
      hasPath = true;
      variable.insert(5, folder + ':');
    }
    all.push_back(std::move(variable));
  }
  if (!hasPath) all.push_back("PATH=" + folder + ":/usr/local/bin:/usr/bin:/bin");
  return all;
}

std::vector<char*> pointersTo(std::vector<QByteArray>& words) {
  std::vector<char*> pointers;
  for (QByteArray& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
  return pointers;
}

}  // namespace

std::unique_ptr<ChildExchange> startReapedChild(const QString& program, const QStringList& arguments,
                                                std::stop_token stop) {
  const QByteArray reaper = QFile::encodeName(ModuleLoader::find(QStringLiteral("tarnwick-reaper")));
  auto input = makePipe();
  auto output = makePipe();
  auto lifeline = makePipe();
  FileDescriptor wake(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
  if (reaper.isEmpty() || !input || !output || !lifeline || !wake) return nullptr;

  posix_spawn_file_actions_t files;
  posix_spawn_file_actions_init(&files);
  posix_spawn_file_actions_adddup2(&files, input->reading.number(), STDIN_FILENO);
  posix_spawn_file_actions_adddup2(&files, output->writing.number(), STDOUT_FILENO);
  posix_spawn_file_actions_addopen(&files, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
  posix_spawn_file_actions_adddup2(&files, lifeline->reading.number(), kLifeline);

  std::vector<QByteArray> words{reaper, QFile::encodeName(program)};
  for (const QString& argument : arguments) words.push_back(argument.toUtf8());
  std::vector<QByteArray> environment = environmentOf(program);
  pid_t process = 0;
  const int failure = ::posix_spawn(&process, reaper.constData(), &files, nullptr, pointersTo(words).data(),
                                    pointersTo(environment).data());
  posix_spawn_file_actions_destroy(&files);
  if (failure != 0) return nullptr;
  return std::make_unique<ReapedChild>(process, std::move(input->writing), std::move(output->reading),
                                       std::move(lifeline->writing), std::move(wake), std::move(stop));
}

}  // namespace tarnwick
