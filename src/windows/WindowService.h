#pragma once

#include <QHash>
#include <QImage>
#include <QObject>
#include <QSet>
#include <QUuid>
#include <atomic>
#include <functional>
#include <memory>

#include "apps/RunningApp.h"
#include "base/OrderedWork.h"
#include "config/DockWidget.h"
#include "desktop/ClientWindows.h"
#include "desktop/SessionEvents.h"
#include "facilities/BeatClient.h"
#include "windows/ports/WindowPictures.h"

namespace tarnwick {

/// A window of another program, as lists of windows show it.
struct AccessibleWindow {
  quint64 id = 0;   ///< As in ClientWindow.
  quint64 app = 0;  ///< The identity of its running application.
  QString appName;
  QString appIcon;
  QString bundleID;  ///< The id of its application's desktop entry; empty for a program without one.
  QString title;     ///< Never empty.
  bool minimized = false;
  bool active = false;

  bool operator==(const AccessibleWindow&) const = default;
};

/// The windows of other programs with small pictures of them, and what can be done with them. Pictures are taken on
/// another thread, only of what a panel shows or a shown tile follows, and none while the session is locked.
class WindowService final : public QObject, public BeatClient {
  Q_OBJECT
 public:
  struct Setup {
    ClientWindows& windows;
    std::function<QList<RunningApp>()> applications;
    const SessionEvents& session;
    /// Makes the adapter, on the thread that uses it; empty where ClientWindows::pictures() says no.
    std::function<std::unique_ptr<WindowPictures>()> pictures;
  };

  /// A window that is as wide or as tall at most, in points, is no window to choose.
  static constexpr double kSliver = 30;

  /// What is referred to must outlive it.
  explicit WindowService(Setup setup);
  ~WindowService() override;

  /// As of the last refresh, by the name of their application, then by title.
  const QList<AccessibleWindow>& windows() const { return windows_; }
  /// What went wrong, or why nothing is listed, until the next refresh; empty otherwise.
  const QString& message() const { return message_; }
  /// How a window looked when it was taken last; null where it never was.
  QImage preview(quint64 window) const;
  /// Such pictures once and for all, where nothing is to be asked.
  void setFixedPreviews(const QHash<quint64, QImage>& previews);

  /// Lists the windows, those of one application where `bundleID` is given.
  void refresh(const QString& bundleID = {});
  void raise(quint64 window);
  void minimize(quint64 window);
  void close(quint64 window);

  /// Takes pictures of the listed windows. Those of an earlier call that are not taken yet come to nothing.
  void loadPreviews();
  /// The same of these windows, whether they are listed or not.
  void loadPreviews(const QList<quint64>& windows);
  void stopPreviews();

  /// A widget that shows this window from now on, and finds it again by its title.
  static DockWidget pin(const AccessibleWindow& window);
  /// The window that such a widget shows; absent while it is not open.
  std::optional<AccessibleWindow> pinned(const DockWidget& widget) const;
  /// Tells which such widgets people see: their windows are followed, at most once a second and only as they change.
  void follow(const QList<DockWidget>& widgets);

  BeatStep step() const override { return BeatStep::WindowPreviews; }
  int everyTicks() const override { return 1; }
  bool isNeededBy(const ActiveSets&) const override { return !followed_.isEmpty(); }
  void beat(const ActiveSets& active) override;
  void end() override { stopPreviews(); }

 Q_SIGNALS:
  /// windows() or message().
  void changed();
  void previewChanged(quint64 window);
  /// A window that is followed may have come, gone or got another title.
  void followedChanged();

 private:
  class Worker;

  QList<AccessibleWindow> listed() const;
  const ClientWindow* known(quint64 window, const QList<ClientWindow>& all) const;
  void say(const QString& message);
  void take(quint64 window, bool onlyIfChanged, QUuid generation);
  void show(quint64 window, const QImage& picture);
  void restUnlessNeeded();

  const Setup setup_;
  QList<AccessibleWindow> windows_;
  QString bundleID_;
  QString message_;
  QHash<quint64, QImage> previews_;
  bool isFixed_ = false;
  bool isLocked_ = false;
  bool holds_ = false;      ///< The window system may keep something for us.
  bool isShowing_ = false;  ///< Pictures of `wanted_` are asked for.
  QList<quint64> wanted_;
  QList<DockWidget> followed_;
  QSet<quint64> underWay_;  ///< Followed windows whose picture is being taken.
  QUuid generation_;
  std::shared_ptr<Worker> worker_;
  OrderedWork work_;  ///< Goes first: it uses all others.
};

}  // namespace tarnwick
