// How long the main thread is held up while another program copies something large, and what memory is left behind.
//
//   xvfb-run measure_clipboard         all cases; needs an X server, whose clipboard it takes
//   measure_clipboard own CASE         the other program
//
// A turn of the event loop that takes long is a frame that comes late.
#include <QAbstractEventDispatcher>
#include <QBuffer>
#include <QCoreApplication>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <thread>

#include "base/Scheduler.h"
#include "clipboard/ClipboardPanelModel.h"
#include "clipboard/ClipboardRecorder.h"
#include "config/DockConfiguration.h"
#include "platform/x11/X11Pasteboard.h"
#include "widgets/catalog/Kinds.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

constexpr qsizetype kMegabyte = 1'000'000;

/// A picture of about 13 megapixels: what is drawn on it decides how well it can be compressed.
QByteArray picture(const char* format, bool noise) {
  QImage image(4000, 3333, QImage::Format_RGB888);
  quint32 state = 1;
  for (int y = 0; y < image.height(); ++y) {
    uchar* line = image.scanLine(y);
    for (int x = 0; x < image.width() * 3; ++x) {
      state = state * 1'664'525 + 1'013'904'223;
      line[x] = static_cast<uchar>(noise ? state >> 24 : x / 64 + y / 64);
    }
  }
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  image.save(&buffer, format);
  return bytes;
}

struct Case {
  const char* name;
  const char* what;
  PasteboardOffer (*offer)();
};

const Case kCases[] = {
    {"text", "100 kB of text", [] { return PasteboardOffer::text(QString(100'000, u'x')); }},
    {"much", "10 MB of text", [] { return PasteboardOffer::text(QString(10 * kMegabyte, u'x')); }},
    {"bitmap", "a bitmap of 40 MB",
     []() -> PasteboardOffer {
       return {{{u"image/bmp"_s, picture("BMP", false)}}};
     }},
    {"noise", "a PNG of 40 MB", []() -> PasteboardOffer { return PasteboardOffer::picture(picture("PNG", true)); }},
};

int own(const QByteArray& name) {
  SystemScheduler scheduler;
  X11Pasteboard pasteboard(scheduler);
  for (const Case& each : kCases) {
    if (name == each.name) pasteboard.set(each.offer());
  }
  return QCoreApplication::exec();
}

using Milliseconds = std::chrono::duration<double, std::milli>;

/// What this thread has worked so far.
double worked() {
  timespec time{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

/// Turns of the event loop, which a frame would have to wait for.
class Turns {
 public:
  void waitUntil(const std::function<bool()>& holds) {
    while (!holds()) {
      const auto begin = std::chrono::steady_clock::now();
      const double before = worked();
      const bool isBusy = QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents);
      longest_ = std::max(longest_, Milliseconds(std::chrono::steady_clock::now() - begin).count());
      mostWork_ = std::max(mostWork_, worked() - before);
      if (!isBusy) std::this_thread::sleep_for(std::chrono::microseconds(100));
    }
  }
  void print() {
    std::printf("longest turn %6.2f ms, of which work %5.2f ms", longest_, mostWork_);
    longest_ = mostWork_ = 0;
  }

 private:
  double longest_ = 0;   ///< With what was waited for, the X server and other programs included.
  double mostWork_ = 0;  ///< Of any turn, the processor's time.
};

/// In KiB.
qint64 shareOfMemory() {
  QFile file(u"/proc/self/smaps_rollup"_s);
  if (!file.open(QIODevice::ReadOnly)) return 0;
  for (const QByteArray& line : file.readAll().split('\n'))
    if (line.startsWith("Pss:")) return line.mid(4).chopped(3).trimmed().toLongLong();
  return 0;
}

class Measurement {
 public:
  Measurement(const QString& folder, Scheduler& scheduler, X11Pasteboard& pasteboard)
      : pasteboard_(pasteboard), history_(folder, scheduler), recorder_(pasteboard, history_) {
    DockConfiguration config;
    config.clipboardEnabled = true;
    ActiveSets active;
    active.kinds.insert(QString(kind::clipboard));
    recorder_.start(config, active);
  }

  void copies() {
    for (const Case& each : kCases) {
      history_.clear();
      settle();
      QProcess other;
      other.start(QCoreApplication::applicationFilePath(), {u"own"_s, QString::fromLatin1(each.name)});
      const qint64 memory = shareOfMemory();
      waitForChange();
      turns_ = {};
      const auto begin = std::chrono::steady_clock::now();
      settle();
      const double whole = Milliseconds(std::chrono::steady_clock::now() - begin).count();
      std::printf("%-20s %-8s ", each.what, history_.items().isEmpty() ? "skipped" : "recorded");
      turns_.print();
      std::printf(", done after %5.0f ms, memory %+6lld KiB\n", whole,
                  static_cast<long long>(shareOfMemory() - memory));
      // What was recorded is offered again now, and is taken away from here.
      other.kill();
      waitForChange();
      settle();
      pasteboard_.clear();
      if (!pasteboard_.isEmpty()) waitForChange();
    }
  }

  /// In the longest history that there can be without favourites.
  void search() {
    QList<ClipboardEntry> entries;
    for (int i = 0; i < 200; ++i) {
      ClipboardEntry entry;
      entry.id = QUuid::createUuid();
      entry.value = QString(50'000, u'ä') + QString::number(i);
      entries << entry;
    }
    history_.setFixed(entries);
    for (const qsizetype count : {qsizetype{2}, entries.size()}) {
      history_.setFixed(entries.last(count));
      ClipboardPanelModel model(history_, pasteboard_);
      bool isFound = false;
      QObject::connect(&model, &ClipboardPanelModel::changed, [&] { isFound = model.entries().size() == 1; });
      turns_ = {};
      const double before = worked();
      const auto begin = std::chrono::steady_clock::now();
      model.setSearch(u"a199"_s);
      const double held = worked() - before;
      turns_.waitUntil([&] { return isFound; });
      std::printf("a search in %3lld texts of 100 kB: the key is held up %.2f ms, found after %.0f ms\n",
                  static_cast<long long>(count), held, Milliseconds(std::chrono::steady_clock::now() - begin).count());
    }
  }

 private:
  void waitForChange() {
    turns_.waitUntil([this, before = pasteboard_.changeCount()] { return pasteboard_.changeCount() != before; });
  }
  /// Until all that was asked of the history is done.
  void settle() {
    for (int round = 0; round < 2; ++round) {
      turns_.waitUntil([this] { return !recorder_.isReading(); });
      bool isDone = false;
      history_.load([&] { isDone = true; });
      turns_.waitUntil([&] { return isDone; });
    }
  }

  X11Pasteboard& pasteboard_;
  ClipboardHistory history_;
  ClipboardRecorder recorder_;
  Turns turns_;
};

int measure() {
  QTemporaryDir folder;
  SystemScheduler scheduler;
  X11Pasteboard pasteboard(scheduler);
  if (!pasteboard.capability()) {
    std::fprintf(stderr, "There is no X server.\n");
    return 1;
  }
  Measurement measurement(folder.path(), scheduler, pasteboard);
  measurement.copies();
  measurement.search();
  return 0;
}

}  // namespace
}  // namespace tarnwick

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  if (argc == 3 && QByteArray(argv[1]) == "own") return tarnwick::own(argv[2]);
  return tarnwick::measure();
}
