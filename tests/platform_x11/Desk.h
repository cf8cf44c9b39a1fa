#pragma once

#include <gtest/gtest.h>

#include <QMouseEvent>
#include <QPainter>
#include <QWidget>
#include <memory>

#include "platform/x11/X11Events.h"
#include "platform/x11/X11Panels.h"
#include "platform/x11/X11Screens.h"
#include "support/VirtualDisplay.h"

namespace tarnwick::testing {

/// The adapters as the program puts them together.
struct Desk {
  VirtualDisplay& display = VirtualDisplay::current();
  X11Events events;
  X11Screens screens{events};
  X11Panels panels{events, screens};

  /// Runs until the program knows where the pointer is now, and what was pressed until now.
  void settle() {
    display.settle();
    quint64 answer = 0;
    const auto listening = QObject::connect(&events.rawInput(), &X11RawInput::answered,
                                            [&](const X11RawInput::Pointer& pointer) { answer = pointer.question; });
    const quint64 question = events.rawInput().ask();
    EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return answer >= question; }));
    QObject::disconnect(listening);
  }
};

/// A panel's content of one colour that counts the presses it gets.
class Paint final : public QWidget {
 public:
  explicit Paint(const QColor& colour) : colour_(colour) {}

  int presses = 0;

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.fillRect(rect(), colour_);
  }
  void mousePressEvent(QMouseEvent*) override { ++presses; }

 private:
  QColor colour_;
};

/// A panel with such a content.
struct PaintedPanel {
  PaintedPanel(Desk& desk, const QColor& colour) {
    auto made = std::make_unique<Paint>(colour);
    content = made.get();
    panel = desk.panels.make(std::move(made));
  }

  xcb_window_t window() const { return static_cast<xcb_window_t>(content->winId()); }

  Paint* content = nullptr;
  std::unique_ptr<Panel> panel;
};

}  // namespace tarnwick::testing
