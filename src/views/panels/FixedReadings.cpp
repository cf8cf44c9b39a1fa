#include "views/panels/FixedReadings.h"

namespace tarnwick {
namespace {

class NoProcesses final : public ProcessSource {
 public:
  QList<ProcessReading> read() override { return {}; }
  void end(const ProcessReading&) override {}
};

class NoSensors final : public ProcessorTemperatures {
 public:
  quint32 read(double*, quint32) override { return 0; }
};

class NoControls final : public AccessibleControls {
 public:
  Capability capability() override { return Capability::yes(); }
  QList<Element> windows(qint64) override { return {}; }
  QList<Element> children(const Element&) override { return {}; }
  std::optional<Reading> read(const Element&) override { return std::nullopt; }
  bool press(const Element&) override { return false; }
};

}  // namespace

FixedReadings::FixedReadings(Scheduler& scheduler)
    : recent(QString(), scheduler),
      bookmarks(BookmarkPlaces(), scheduler),
      screenshots(QString(), scheduler),
      stacks(scheduler),
      thumbnails(QString()),
      processes(std::make_unique<NoProcesses>(), scheduler),
      temperature(std::make_unique<NoSensors>()),
      apps(AppEnvironment(), scheduler),
      windowService(
          {.windows = windows, .applications = [this] { return running; }, .session = session, .pictures = {}}),
      meeting({.controls = [] { return std::make_unique<NoControls>(); }, .processes = [] { return QList<qint64>(); }}),
      media({.scheduler = scheduler, .players = players, .fetch = {}}),
      clipboard(QString(), scheduler) {
  recent.setFixed({});
  bookmarks.setFixed({});
  screenshots.setFixed({}, {});
  processes.setFixed({}, {});
  apps.setFixed(std::make_shared<AppIndex>());
  windowService.setFixedPreviews({});
  clipboard.setFixed({});
}

ReadingServices FixedReadings::services() {
  return {.recent = recent,
          .bookmarks = bookmarks,
          .screenshots = screenshots,
          .stacks = stacks,
          .thumbnails = thumbnails,
          .processes = processes,
          .temperature = temperature,
          .machine = machine,
          .apps = apps,
          .windows = windows,
          .windowService = windowService,
          .meeting = meeting,
          .media = media,
          .clipboard = clipboard,
          .pasteboard = pasteboard,
          .connections = connections,
          .icons = icons,
          .fixedFolder = folder};
}

}  // namespace tarnwick
