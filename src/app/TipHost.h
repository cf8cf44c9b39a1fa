#pragma once

#include <QList>
#include <QObject>
#include <QRect>
#include <QString>
#include <functional>
#include <memory>
#include <optional>

#include "desktop/Panels.h"
#include "store/Services.h"
#include "views/dock/TipController.h"

namespace tarnwick {

class AppStore;
class DockController;
class TipBubble;
class WindowFade;
class WindowService;

/// The tip beside a dock: one for all displays. It is a window without the keyboard that lets clicks through, is shown
/// on the inner side of the glass, fades in and out, and moves from tile to tile without. Over an application it may
/// show pictures of its windows.
class TipHost final : public QObject {
  Q_OBJECT
 public:
  /// Borrowed. There is no tip before there is a controller.
  TipHost(const AppStore& store, const Services& services, WindowService& windows);
  ~TipHost() override;

  void setController(DockController* controller) { controller_ = controller; }
  /// Says what else is beside a dock, in desktop coordinates: a tip keeps clear of it.
  void setBesideDocks(std::function<QList<QRect>()> frames) { besideDocks_ = std::move(frames); }
  /// What a display's dock says of what is pointed at now; nothing takes its tip away, and leaves that of another dock.
  void show(const QString& display, const std::optional<DockTip>& tip);
  /// Takes it away at once where it belongs to this display.
  void hide(const QString& display);
  /// The same, whichever dock it belongs to.
  void close();

 private:
  void open(const QString& display, const DockTip& tip);
  void fadeOut();
  QRect besideOf(const DockTip& tip) const;
  void follow(const DockTip& tip);
  /// Of the windows of the application that a tip is about, if the user wants that.
  void setPictures(const DockTip& tip);
  void showPictures();

  const AppStore& store_;
  const Services& services_;
  WindowService& windows_;
  DockController* controller_ = nullptr;
  std::function<QList<QRect>()> besideDocks_;
  QString display_;
  quint64 application_ = 0;  ///< That pictures are shown of; 0 for none.
  QList<quint64> pictured_;
  QRect beside_;
  std::unique_ptr<Popup> popup_;
  TipBubble* bubble_ = nullptr;  // Owned by the popup.
  WindowFade* fade_ = nullptr;   // Owned by the bubble; null where nothing composites.
};

}  // namespace tarnwick
