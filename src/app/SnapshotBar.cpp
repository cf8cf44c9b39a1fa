#include "app/SnapshotBar.h"

#include <QApplication>
#include <QDir>

#include "commandbar/CommandBarModel.h"
#include "commandbar/CommandBarRows.h"
#include "commandbar/CommandExtras.h"
#include "store/NoCommands.h"
#include "store/NoDesktop.h"
#include "views/commandbar/CommandBarPane.h"
#include "views/commandbar/CommandField.h"
#include "views/snapshot/SnapshotFixture.h"
#include "views/theme/SnapshotScenery.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// What is to be done later is done at once while somebody types, and otherwise never.
class TypingScheduler final : public Scheduler {
 public:
  QDateTime now() const override { return SnapshotFixture::moment(); }
  double reference() const override { return 0; }
  JobHandle after(double, std::function<void()> job) override {
    if (isTyping) job();
    return std::make_unique<Done>();
  }
  JobHandle every(double, std::function<void()>) override { return std::make_unique<Done>(); }

  bool isTyping = false;

 private:
  struct Done final : Job {};
};

/// Never beats: what moves in the bar is seen where it arrives.
class BarClocks final : public FrameClocks {
 public:
  std::unique_ptr<FrameClock> make(const QString&) override { return std::make_unique<Standing>(); }

 private:
  class Standing final : public FrameClock {
   public:
    void start() override {}
    void stop() override {}
    bool isRunning() const override { return false; }
  };
};

class GivenFiles final : public FileSearch {
 public:
  explicit GivenFiles(bool isFast) : isFast_(isFast) {}

  void start(const QString& query, Done done) override {
    if (!isFast_) return;
    static const QStringList paths{
        u"~/Documents/Lab/Calibration notes.md"_s, u"~/Documents/Local backups.ods"_s, u"~/Pictures/2026 Calendars"_s,
        u"~/Documents/Clients/Northern Harbour Trust/2026/Quarterly planning/Longitudinal study of tides, "
        u"second revision with the remarks of all four readers.pdf"_s,
        u"~/مستندات/مرحبا بالعالم.txt"_s};
    QList<FoundFile> found;
    for (QString path : paths) {
      path.replace(0, 1, QDir::homePath());
      const QString name = path.section(u'/', -1);
      if (name.contains(query, Qt::CaseInsensitive)) found << FoundFile{path, name, !name.contains(u'.')};
    }
    done(found);
  }
  void stop() override {}

 private:
  const bool isFast_;
};

DesktopEntry application(const QString& name, const QString& genericName = {}) {
  DesktopEntry entry;
  entry.id = entry.iconName = name.toLower();
  entry.path = "/usr/share/applications/"_L1 + entry.id + ".desktop"_L1;
  entry.name = name;
  entry.exec = entry.id;
  entry.genericName = genericName;
  return entry;
}

std::shared_ptr<const AppIndex> picturedApplications() {
  QList<DesktopEntry> entries{
      application(u"Calendar"_s), application(u"Calculator"_s),     application(u"Camera"_s), application(u"Editor"_s),
      application(u"Mail"_s),     application(u"System Monitor"_s), application(u"مرحبا"_s)};
  entries << application(u"Longwave Radio Receiver and Spectrum Analyser for Very Long Names of Applications"_s);
  return std::make_shared<AppIndex>(AppEnvironment(), entries, QHash<QString, DesktopEntry>(), MimeDefaults());
}

QList<ClipboardEntry> picturedCopies() {
  static const QStringList texts{
      u"https://tarnwick.dev/docs/tiles"_s, u"مرحبا، نلتقي غدا في العاشرة"_s, u"Local time zone\nis kept"_s,
      u"Call Ines about the translation deadline, then send the invoice to Marlow and book the long table by the "
      u"window"_s};
  QList<ClipboardEntry> entries;
  for (const QString& text : texts) {
    ClipboardEntry entry;
    entry.id = QUuid::createUuidV5(QUuid(), text);
    entry.value = text;
    entries << entry;
  }
  return entries;
}

/// All that one bar needs. It goes with the pane that it belongs to.
class BarDesk final : public QObject {
 public:
  BarDesk(SettingsPlaces& settings, bool findsFilesAtOnce)
      : files_(findsFilesAtOnce), extras_({.commands = commands_, .settings = &settings}) {
    desktop_.installedApps.setFixed(picturedApplications());
    ClientWindow window;
    window.id = 1;
    window.title = u"Local plan, third draft — Editor"_s;
    window.applicationId = u"editor"_s;
    desktop_.windows.list << window;
    store_ = std::make_unique<AppStore>(desktop_.diagnosticSetup());
    store_->edit([](DockConfiguration& config) { config.clipboardEnabled = true; });
    desktop_.applications.start();
    model_ = std::make_unique<CommandBarModel>(CommandBarParts{.store = *store_,
                                                               .apps = desktop_.installedApps,
                                                               .runningApps = desktop_.applications,
                                                               .windows = desktop_.windows,
                                                               .commands = commands_,
                                                               .files = files_,
                                                               .clipboard = picturedCopies});
    model_->opened();
    rows_ = std::make_unique<CommandBarRows>(*model_, extras_);
  }

  CommandBarRows& rows() { return *rows_; }
  void type(const QString& query) {
    scheduler_.isTyping = true;
    model_->setQuery(query);
    scheduler_.isTyping = false;
  }

 private:
  TypingScheduler scheduler_;
  NoDesktop desktop_{scheduler_};
  NoCommands commands_;
  GivenFiles files_;
  CommandExtras extras_;
  std::unique_ptr<AppStore> store_;
  std::unique_ptr<CommandBarModel> model_;
  std::unique_ptr<CommandBarRows> rows_;
};

struct BarState {
  const char* name;
  const char16_t* query;
  int selection = 0;
  bool findsFilesAtOnce = true;
  bool mirrored = false;
};

constexpr BarState kStates[] = {
    {.name = "empty", .query = u""},
    {.name = "found", .query = u"cal"},
    {.name = "all-rows", .query = u"ca", .selection = 12},
    {.name = "sum", .query = u"12*4+2"},
    {.name = "files-arriving", .query = u"cal", .findsFilesAtOnce = false},
    {.name = "address", .query = u"tarnwick.dev"},
    {.name = "signs", .query = u"arrow", .selection = 4},
    {.name = "emoji", .query = u"keycap", .selection = 1},
    {.name = "settings", .query = u"launch", .selection = 1},
    {.name = "long-names", .query = u"long", .selection = 1},
    {.name = "right-to-left", .query = u"مرحبا", .mirrored = true},
};

std::unique_ptr<GlassPane> makeBar(SettingsPlaces& settings, const BarState& state, const SnapshotPane::Look& look) {
  static BarClocks clocks;
  auto desk = std::make_unique<BarDesk>(settings, state.findsFilesAtOnce);
  desk->type(QString::fromUtf16(state.query));
  desk->rows().moveSelection(state.selection);
  auto pane = std::make_unique<CommandBarPane>(desk->rows(), CommandBarPane::Picture(), clocks, QString());
  pane->setPicture([pane = pane.get()](QPainter& painter, const QRectF& box, const CommandItem& item) {
    const QString name = item.path.section(u'/', -1).chopped(item.kind == CommandItem::Kind::App ? 8 : 0);
    const QPixmap icon =
        SnapshotScenery::icon(name, static_cast<int>(box.width()), painter.device()->devicePixelRatioF());
    if (item.kind == CommandItem::Kind::App && !icon.isNull()) return painter.drawPixmap(box.topLeft(), icon);
    const QString ofFile = item.isFolder ? u"folder"_s : u"doc"_s;
    pane->drawSymbolPicture(painter, box, item.kind == CommandItem::Kind::File ? ofFile : u"app"_s);
  });
  desk.release()->setParent(pane.get());
  if (state.mirrored) pane->setLayoutDirection(Qt::RightToLeft);
  look(*pane);
  // A window only has what it shows once it is shown; no display is asked for that.
  pane->setAttribute(Qt::WA_DontShowOnScreen);
  pane->resize(pane->sizeHint());
  pane->show();
  QApplication::setActiveWindow(pane.get());
  pane->field().setFocus();
  QCoreApplication::processEvents();
  return pane;
}

}  // namespace

QList<SnapshotPane> SnapshotBar::list(SettingsPlaces& settings) {
  QList<SnapshotPane> panes;
  for (const BarState& state : kStates)
    panes.append({QString::fromLatin1(state.name),
                  [&settings, &state](const SnapshotPane::Look& look) { return makeBar(settings, state, look); }});
  return panes;
}

}  // namespace tarnwick
