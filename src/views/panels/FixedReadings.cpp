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
      clipboard(QString(), scheduler) {
  recent.setFixed({});
  bookmarks.setFixed({});
  screenshots.setFixed({}, {});
  processes.setFixed({}, {});
  apps.setFixed(std::make_shared<AppIndex>());
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
          .clipboard = clipboard,
          .pasteboard = pasteboard,
          .connections = connections,
          .icons = icons,
          .fixedFolder = folder};
}

}  // namespace tarnwick
