#pragma once

#include "commandbar/CommandBarModel.h"
#include "store/NoDesktop.h"
#include "support/FileTest.h"
#include "support/RecordingCommands.h"
#include "support/TestScheduler.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

/// Answers when the test says so.
class ScriptedSearch final : public FileSearch {
 public:
  void start(const QString& query, Done done) override {
    asked << query;
    done_ = std::move(done);
  }
  void stop() override { done_ = {}; }
  bool isRunning() const { return static_cast<bool>(done_); }
  void answer(const QList<FoundFile>& files) { std::exchange(done_, {})(files); }

  QStringList asked;

 private:
  Done done_;
};

inline std::shared_ptr<const AppIndex> appsNamed(const QStringList& names) {
  QList<DesktopEntry> entries;
  for (const QString& name : names) {
    DesktopEntry entry;
    entry.id = name.toLower();
    entry.path = "/apps/"_L1 + entry.id + ".desktop"_L1;
    entry.name = name;
    entry.exec = entry.id;
    entries << entry;
  }
  return std::make_shared<AppIndex>(AppEnvironment(), entries, QHash<QString, DesktopEntry>(), MimeDefaults());
}

class CommandBarTest : public FolderTest {
 protected:
  CommandBarTest() {
    desktop.installedApps.setFixed(appsNamed({u"Mail"_s, u"Maps"_s, u"Editor"_s}));
    StoreSetup setup = desktop.storeSetup();
    setup.storage = at(u"config.json"_s);
    setup.platformReads = false;
    store = std::make_unique<AppStore>(std::move(setup));
    idle_ = time.waiting();
    start();
  }
  /// Work of the model that waits for its time.
  qsizetype waiting() const { return time.waiting() - idle_; }
  void start() {
    model = std::make_unique<CommandBarModel>(CommandBarParts{.store = *store,
                                                              .apps = desktop.installedApps,
                                                              .runningApps = desktop.applications,
                                                              .windows = desktop.windows,
                                                              .commands = commands,
                                                              .files = search,
                                                              .loadClipboard = [this] { ++clipboardLoads; },
                                                              .clipboard = [this] { return copied; }});
    model->opened();
  }
  void copy(const QString& text) {
    ClipboardEntry entry;
    entry.id = QUuid::createUuid();
    entry.value = text;
    copied.prepend(entry);
  }
  /// The rows by the first of their words of identity, with what is behind the last "/" of a path.
  std::string rows() const {
    QStringList ids;
    for (const CommandItem& row : model->results())
      ids << (row.path.isEmpty() ? row.id : row.id.section(u':', 0, 0) + u':' + row.path.section(u'/', -1));
    return ids.join(u' ').toStdString();
  }
  /// The places of rows of a kind.
  QList<CommandItem> rowsOf(CommandItem::Kind kind) const {
    QList<CommandItem> found = model->results();
    found.removeIf([&](const CommandItem& row) { return row.kind != kind; });
    return found;
  }
  void findFiles(const QStringList& names) {
    QList<FoundFile> files;
    for (const QString& name : names) files << FoundFile{"/home/u/"_L1 + name, name};
    search.answer(files);
  }

  test::TestScheduler time;
  NoDesktop desktop{time};
  std::unique_ptr<AppStore> store;
  test::RecordingCommands commands;
  ScriptedSearch search;
  QList<ClipboardEntry> copied;
  int clipboardLoads = 0;
  std::unique_ptr<CommandBarModel> model;

 private:
  qsizetype idle_ = 0;
};

}  // namespace tarnwick
