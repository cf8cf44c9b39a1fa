#pragma once

#include <gtest/gtest.h>

#include <QMouseEvent>
#include <QPainter>
#include <QWidget>
#include <functional>
#include <memory>

#include "platform/wayland/WaylandPanels.h"
#include "platform/wayland/WaylandQueue.h"
#include "platform/wayland/WaylandScreens.h"
#include "platform/wayland/WaylandSession.h"
#include "support/HeadlessSway.h"
#include "support/VirtualDisplay.h"

namespace tarnwick::testing {

inline const QString kFirst = QStringLiteral("HEADLESS-1");
inline const QString kSecond = QStringLiteral("HEADLESS-2");

/// The adapters as the program puts them together.
struct Desk {
  explicit Desk(quint32 layers = WaylandSession::kLayerShellVersion) : session(layers) {}

  HeadlessSway& sway = HeadlessSway::current();
  WaylandSession session;
  WaylandScreens screens{session};
  WaylandPanels panels{session, screens};

  /// Waits until the compositor has seen all that the program did, and the program what came of it.
  void settle() {
    EXPECT_TRUE(WaylandQueue(session.display()).waitForAnswers());
    QCoreApplication::processEvents();
  }
  bool shows(QPoint place, const QColor& colour, const QString& output = kFirst) {
    return VirtualDisplay::waitUntil([&] { return sway.pixel(place, output) == colour; });
  }
};

/// Content of one colour that counts the presses and keeps the text that it gets.
class Paint final : public QWidget {
 public:
  explicit Paint(const QColor& colour, const QSize& size = {}) : colour_(colour), size_(size) {}

  QSize sizeHint() const override { return size_; }

  int presses = 0;
  std::function<void()> pressed = [] {};
  QString typed;

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.fillRect(rect(), colour_);
  }
  void mousePressEvent(QMouseEvent*) override {
    ++presses;
    pressed();
  }
  void keyPressEvent(QKeyEvent* event) override { typed += event->text(); }

 private:
  QColor colour_;
  QSize size_;
};

/// A panel with such a content.
struct PaintedPanel {
  PaintedPanel(Desk& desk, const QColor& colour) {
    auto made = std::make_unique<Paint>(colour);
    content = made.get();
    panel = desk.panels.make(std::move(made));
  }

  Paint* content = nullptr;
  std::unique_ptr<Panel> panel;
};

}  // namespace tarnwick::testing
