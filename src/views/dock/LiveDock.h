#pragma once

#include <QUuid>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "apps/ports/LauncherHints.h"
#include "desktop/Toggles.h"
#include "dock/DockContent.h"
#include "store/AppStore.h"
#include "store/Commands.h"
#include "views/dock/DockHost.h"
#include "views/dock/DockView.h"
#include "views/tiles/TileSource.h"

namespace tarnwick {

/// What a dock asks of others for its tiles. A function left empty answers nothing.
struct TileQuestions {
  /// What a desktop entry says, for tiles of applications. Absent until it is known.
  std::function<std::optional<ApplicationFacts>(const QString& path)> applicationAt;
  /// The picture that the user chose for the application of a desktop entry; empty for none.
  std::function<QString(const QString& path)> ownIcon;
  /// What an application wants to be seen on its tile.
  std::function<LauncherHint(const QString& desktopId)> hintOf;
  /// Whether the application of a desktop entry was started a moment ago and has no window yet.
  std::function<bool(const QString& path)> isStarting;
  std::function<std::optional<qint64>()> trashItems;
  std::function<bool()> reducesMotion;
  /// How the desktop writes the hour; absent where it leaves that to the language.
  std::function<std::optional<bool>()> uses24Hour;
  /// Whether files can be sent to devices nearby.
  std::function<bool()> sendsNearby;
  /// The user's calendars and reminders at this minute; null while nothing is known of them.
  std::function<std::shared_ptr<const CalendarDigest>()> calendar;
  /// Adds what these widgets show of the machine and of the user's files (see Rooms::read).
  std::function<void(ReadingFacts& readings, const QList<DockWidget>& widgets)> addReadings;
  /// Where values come from that neither the store nor the desktop has, such as those of services. Borrowed; they
  /// outlive the dock.
  QList<TileSource*> sources;
};

/// The dock of one display, kept true to the store: its row follows the settings and the running applications, its
/// tiles follow what they show, and the beat as often as their cadence says. While it is hidden its tiles are frozen.
/// Borrows all but the icons and the questions.
class LiveDock final : public DockContent {
  Q_OBJECT
 public:
  LiveDock(AppStore& store, Toggles& toggles, Commands& commands, DockHost& host, const QString& display,
           DockView::IconProvider icons, TileQuestions questions);

  void configure(const DockGeometry& geometry) override;
  double tabsWidth(double scale) const override;
  QMargins margins() const override { return view_->margins(); }
  QRegion outline() const override { return view_->outlineRegion(); }
  QRegion inputRegion() const override { return view_->inputRegion(); }

  DockView& view() { return *view_; }
  /// What everything in it moves by.
  void setFrameClock(std::unique_ptr<FrameClock> clock) { view_->setFrameClock(std::move(clock)); }

  /// Takes everything anew: the settings, the applications, and the answers to its questions. To be called when one of
  /// those answers changed; what the store holds is followed by itself.
  void rebuildRow();
  /// Makes the tiles of one family anew, for readings that nothing else shows.
  void refreshFamily(const QString& family);
  /// What the tiles show at this moment.
  TileSources sources() const;

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  void refreshTiles();
  void follow(TileSource& source);
  /// Takes the source's part anew, for the tiles that show it.
  void take(TileSource& source, const std::function<bool(const DockWidget&)>& which);
  void beat();
  /// Whether tiles may be made anew now; while nobody sees them it is noted that they are late.
  bool isSeen();
  void connectStore();
  void connectTiles();
  void activatePart(const QUuid& id, int part);
  void connectApplications();
  void connectHands();
  QList<DockApp> runningApps() const;

  AppStore& store_;
  Toggles& toggles_;
  Commands& commands_;
  DockHost& host_;
  QString display_;
  TileQuestions questions_;
  DockGeometry geometry_;
  DockView* view_;
  std::vector<std::unique_ptr<TileSource>> storeSources_;
  TileSources shown_;  ///< What the tiles were made from last.
  qint64 minute_ = 0;  ///< The one that tiles showed last, since 1970.
  bool isFilled_ = false;
  bool isLate_ = false;
};

}  // namespace tarnwick
