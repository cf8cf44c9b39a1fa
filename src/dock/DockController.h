#pragma once

#include <QObject>
#include <functional>
#include <map>
#include <memory>

#include "base/Scheduler.h"
#include "config/DockConfiguration.h"
#include "desktop/Panels.h"
#include "desktop/Screens.h"
#include "dock/DockContent.h"
#include "dock/NativeDockState.h"
#include "dock/ShownRemarks.h"
#include "dock/rules/DockDodge.h"
#include "dock/rules/DockPlacement.h"
#include "dock/rules/DockToggle.h"
#include "dock/rules/DockVisibility.h"

class QWindow;

namespace tarnwick {

class AppStore;
class DockContentContainer;
struct Services;

/// Turns the configuration into one panel on each chosen display, keeps it in place, and decides from moment to moment
/// whether it is shown. Pure rules decide what should be; this sets the panels accordingly. The pointer drives it,
/// not a clock: a timer runs only while a delay counts. Main thread only.
class DockController : public QObject {
  Q_OBJECT
 public:
  /// Makes what a display's panel shows. Never null.
  using ContentFactory = std::function<std::unique_ptr<DockContent>(const QString& display)>;

  static constexpr double kRefreshDelay = 0.04;
  /// By then the docks are where a change of the layout or of the displays puts them.
  static constexpr double kOnceTheyStand = 0.06;
  /// Until the system's dock is tried again after another process was giving it back.
  static constexpr double kOthersAreAtIt = 1;
  static constexpr double kTransitionPeriod = 0.05;
  /// For how long a start shows what this desktop lacks, in seconds.
  static constexpr double kRemark = 10;
  /// How long the keyboard may take to come back from a window of the dock's own.
  static constexpr double kKeyboardGrace = 0.2;
  /// For so long a hidden dock is seen when something needs the user.
  static constexpr double kPeep = 3;

  /// All must outlive it. `preferences` are those of the system's own dock, and `guard` stands by for them.
  DockController(AppStore& store, const Services& services, DockPreferenceAccess& preferences, DockGuard& guard,
                 ContentFactory factory);
  ~DockController() override;

  /// Whether a window of the program that belongs to a display's dock is open: a panel, an editor, a menu, a drag.
  std::function<bool(const QString& display)> hasActivePanel;
  /// Whether a window of the program is open that is about all docks, which then stay out.
  std::function<bool()> hasOpenWindow;

  /// Lays out soon; a burst of calls costs one pass.
  void refresh();
  /// Looks again at what decides whether docks are shown. Any event may call it.
  void checkEdge();
  /// Hides the docks, or shows them, for the user: as DockToggle has it.
  void toggle();
  /// Shows them, also where their layout hides them; there they stay until they were used.
  void show();
  bool isManuallyHidden() const { return manuallyHidden_; }
  /// Panels come up only once the program has finished starting.
  void setMayShow(bool mayShow);
  /// Shows the main display's dock, whatever would hide it, and gives it the keyboard; `leaveKeyboard` takes it away
  /// again, and so does the user who turns to another window.
  void focus();
  void leaveKeyboard();
  /// Shows a display's dock without the delay of its layout; it stays while it is in use.
  void revealAtOnce(const QString& display);
  /// Lets a dock that its layout hides be seen for a moment, without taking clicks or the focus, where the user wants
  /// that; never one that was hidden by hand, nor over a full-screen window. At the edge it comes at once meanwhile.
  void peep(const QString& display);
  /// Gives the system's own dock back until the next layout pass, and says so.
  void restoreSystemDock();
  /// The same for a process that asks for it; the layout takes the dock away again only once it is changed, or at the
  /// next start. False when there is nothing to give back. Throws DomainError.
  bool giveSystemDockBack();
  /// Gives the system's own dock back without a message, for an end in which nothing can be shown. Throws nothing.
  void giveBack() noexcept;
  /// Moves a floating dock by a drag, within the screen; `finishMove` stores where it ended.
  void moveBy(const QString& display, const QPointF& delta);
  void finishMove(const QString& display);
  /// Closes every panel and gives back what was changed of the desktop.
  void shutdown();

  /// The displays that have a panel now.
  QStringList displays() const;
  /// The panel's slot on a display, in desktop coordinates; empty where there is none.
  QRectF frame(const QString& display) const;
  /// The panel of a display, or null. It lives until the next layout pass at least.
  Panel* panel(const QString& display) const;
  DockContent* content(const QString& display) const;
  bool isVisible(const QString& display) const;
  /// Whether a hidden dock is seen for a moment.
  bool isPeeping(const QString& display) const;
  /// Whether a full-screen window covers the display, so that nothing of the dock belongs above it now.
  bool isCovered(const QString& display) const;
  /// Where the content's upper left corner lies on the desktop while it rests.
  QPointF contentOrigin(const QString& display) const;
  /// A rectangle of the content in the coordinates of its panel.
  QRect mapFromContent(const QString& display, const QRect& rectangle) const;

 Q_SIGNALS:
  /// A display's dock is hiding or about to be destroyed; what is open beside it closes.
  void goesAway(const QString& display);
  /// A display's dock is elsewhere now.
  void placed(const QString& display);
  /// isCovered() changed for a display.
  void coveredChanged(const QString& display);

 private:
  struct Dock {
    std::unique_ptr<Panel> panel;
    DockContentContainer* container = nullptr;  // Owned by the panel.
    DockContent* content = nullptr;             // Owned by the container.
    Screen screen;
    DockGeometry geometry;
    PanelPlacement placement;
    QRectF frame;
    QMarginsF beside;                // How much wider than the glass the slot is, on the left and on the right.
    std::optional<QPointF> dragged;  // While it is dragged: where it would be, without the limits of the screen.
    DockVisibility visibility;
    bool covered = false;
    JobHandle peep;       // While it is seen for a moment: the end of that.
    QRectF systemDock;    // Where it was out when the zones were asked for last.
    bool inUse = false;   // The pointer, or a window of the dock's own, held it when it was looked at last.
    bool isFresh = true;  // The first placement is not animated.
  };

  /// The user's, as far as this desktop can do it.
  const DockConfiguration& settings() const;
  DockLayout possibleLayout() const;

  // Layout.
  void layoutPanels();
  void rememberDisplays(const QList<Screen>& screens);
  void applyToSystemDock();
  void sayWhatIsNotAvailable();
  void remark(const QString& sentence);
  void removeDocks(const std::function<bool(const QString&)>& isDoomed);
  void layout(const Screen& screen);
  Dock& dockFor(const Screen& screen);
  void connectDock(const Dock& dock, const QString& id);
  void place(Dock& dock);
  void applyShape(Dock& dock);
  void reserveSpace(Dock& dock);
  bool reserves(const Dock& dock) const;
  static QRectF restingGlass(const Dock& dock);
  /// Puts the slot where the glass in it belongs, once its content has reported how wide that is. False if it is there.
  bool standClear(Dock& dock);
  void setShown(bool shown);

  // Visibility.
  DockToggle::Step nextToggle() const;
  void hideByHand();
  void updateZones();
  QRectF systemDockAt(const Dock& dock) const;
  bool systemDockMoved() const;
  void platformStateChanged();
  void keepWindowsClear();
  bool isCovered(const Screen& screen) const;
  QList<QRectF> fullscreenFrames() const;
  bool isUnderFullscreen(const Dock& dock) const;
  void endPeep(const QString& display);
  void endPeeps();
  DockDodge::Mode dodge() const;
  bool isFree(const Dock& dock) const;
  QStringList updateCovered();
  DockVisibility::Surroundings surroundings(const Dock& dock) const;
  void setTransitionTimer(bool runs);
  void followKeyboard(const QWindow* window);
  void waitForKeyboard();

  AppStore& store_;
  const Services& services_;
  NativeDockState suppressor_;
  ShownRemarks shownRemarks_;
  ContentFactory factory_;
  std::map<QString, Dock> docks_;
  mutable DockConfiguration limited_;  // What settings() gives where the desktop cannot do all of it.
  bool saidWhatIsNot_ = false;
  bool hasStarted_ = false;  // Whether the first layout pass is over.
  JobHandle remarkEnd_;
  QList<QRectF> fullscreen_;
  std::optional<DockLayout> reservedLayout_;
  std::pair<DockLayout, QString> failure_;  // Of the system's dock, as it was said last; empty once it is over.
  QString focused_;                         // The display whose dock was given the keyboard.
  bool hasKeyboard_ = false;                // Whether it has got it.
  JobHandle keyboardWork_;
  bool keyboardIsLent_ = false;  // To a panel of the dock's own.
  JobHandle refreshWork_;
  JobHandle othersAreAtIt_;  ///< The next attempt, where another process gives the system's dock back.
  JobHandle transitionTimer_;
  bool manuallyHidden_ = false;
  bool mayShow_ = false;
  bool down_ = false;
};

}  // namespace tarnwick
