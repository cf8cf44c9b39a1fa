// How long the main thread is held up while another program copies something large, and what memory is left behind.
//
//   xvfb-run measure_clipboard         all cases; needs an X server, whose clipboard it takes
//   measure_clipboard own CASE         the other program
//
// A turn of the event loop that takes long is a frame that comes late.
#include <QBuffer>
#include <QCoreApplication>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <chrono>
#include <cstdio>

#include "MeasuredTurns.h"
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
      const qint64 memory = MeasuredMemory::share();
      waitForChange();
      turns_.reset();
      const auto begin = std::chrono::steady_clock::now();
      settle();
      const double whole = Milliseconds(std::chrono::steady_clock::now() - begin).count();
      std::printf("%-20s %-8s ", each.what, history_.items().isEmpty() ? "skipped" : "recorded");
      std::printf("longest turn %6.2f ms, of which work %5.2f ms, done after %5.0f ms, memory %+6lld KiB\n",
                  turns_.longest(), turns_.mostWork(), whole, static_cast<long long>(MeasuredMemory::share() - memory));
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
      turns_.reset();
      const double before = MeasuredTurns::worked();
      const auto begin = std::chrono::steady_clock::now();
      model.setSearch(u"a199"_s);
      const double held = MeasuredTurns::worked() - before;
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
  MeasuredTurns turns_;
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
