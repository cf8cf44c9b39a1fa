#pragma once

#include <QPointer>
#include <QScreen>
#include <QTimer>
#include <QWindow>
#include <chrono>

#include "platform/wayland/LayerWindow.h"

namespace tarnwick {

/// An invisible window that may still receive the pointer, or keep space free. It costs no memory: one clear
/// pixel is stretched over it. Hidden when made. Where the compositor has no place for it, or takes the place away, it
/// asks again, with growing pauses. The session must outlive it.
class ClearWindow final : public QWindow {
  Q_OBJECT
 public:
  explicit ClearWindow(const WaylandSession& session);
  ~ClearWindow() override;

  /// Shows it, or moves it, on a screen at a place within it. `look` says how it is held there.
  void stand(QScreen& screen, const QRect& withinScreen, const LayerLook& look);
  void setInput(const QRegion& region) { layer_->setInput(region); }
  /// Whether the pointer is over it, with something that is dragged or without, or a finger was until a moment ago:
  /// what it called comes only when the finger has gone.
  bool isMet() const { return isMet_; }
  bool isDraggedOver() const { return isDraggedOver_; }
  /// No event will say that the pointer left.
  void forgetPointer();

 Q_SIGNALS:
  void pointerChanged();
  void pressed();
  /// Something that is dragged came over it. `source` is what the drag began at; null where that is another program's.
  void dragMet(QObject* source);

 protected:
  bool event(QEvent* event) override;

 private:
  void stand();
  void lose();
  void clear();
  void meet(bool isMet, bool isDraggedOver);

  const WaylandSession& session_;
  LayerWindow* layer_;
  WaylandOwned<wl_buffer> buffer_;
  WaylandOwned<wp_viewport> viewport_;
  QTimer lingering_;
  QTimer again_;
  std::chrono::milliseconds pause_{};  ///< Before it asks again the next time.
  QPointer<QScreen> target_;
  QRect place_;  ///< Within that screen.
  LayerLook look_;
  bool isMet_ = false;
  bool isDraggedOver_ = false;
};

}  // namespace tarnwick
