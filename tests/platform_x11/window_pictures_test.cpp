#include <gtest/gtest.h>

#include <QScopedPointer>

#include "platform/x11/X11WindowPictures.h"
#include "support/ForeignWindow.h"
#include "support/VirtualDisplay.h"

namespace tarnwick::testing {
namespace {

using namespace Qt::StringLiterals;

/// The colour in the middle of each quarter.
QList<QRgb> quarters(const QImage& image) {
  QList<QRgb> colours;
  for (const QPoint& at : {QPoint(1, 1), QPoint(3, 1), QPoint(1, 3), QPoint(3, 3)})
    colours.append(image.pixel(image.width() * at.x() / 4, image.height() * at.y() / 4));
  return colours;
}

class X11WindowPicturesTest : public ::testing::Test {
 protected:
  /// A window of another program, plain and in front.
  std::unique_ptr<ForeignWindow> open(const QRect& frame, quint32 colour) {
    auto window = std::make_unique<ForeignWindow>(display_, frame);
    EXPECT_TRUE(window->show());
    fill(*window, colour);
    return window;
  }
  void fill(const ForeignWindow& window, quint32 colour) {
    xcb_connection_t* const connection = display_.connection();
    xcb_change_window_attributes(connection, window.id(), XCB_CW_BACK_PIXEL, &colour);
    xcb_clear_area(connection, 0, window.id(), 0, 0, 0, 0);
    const XcbReply flushed(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
  }

  VirtualDisplay& display_ = VirtualDisplay::current();
  X11WindowPictures pictures_;
};

TEST_F(X11WindowPicturesTest, ShowWhatAWindowShowsAlsoUnderOthers) {
  ASSERT_TRUE(pictures_.capability());
  const auto below = open({100, 100, 720, 400}, 0x2040C0);
  EXPECT_TRUE(pictures_.hasChanged(below->id())) << "never taken";
  QImage picture = pictures_.take(below->id());
  EXPECT_EQ(picture.size(), QSize(360, 200));
  EXPECT_EQ(quarters(picture), QList<QRgb>(4, 0xFF2040C0));

  const auto above = open({90, 90, 800, 500}, 0xC04020);
  fill(*below, 0x20C040);
  EXPECT_EQ(quarters(pictures_.take(below->id())), QList<QRgb>(4, 0xFF20C040));
  EXPECT_EQ(quarters(pictures_.take(above->id())), QList<QRgb>(4, 0xFFC04020));

  // Only one of them is painted anew.
  pictures_.hasChanged(above->id());
  pictures_.take(above->id());
  pictures_.take(below->id());
  fill(*above, 0x808080);
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return pictures_.hasChanged(above->id()); }));
  EXPECT_FALSE(pictures_.hasChanged(below->id()));
  pictures_.rest();
  EXPECT_TRUE(pictures_.hasChanged(below->id())) << "nothing is known any more";
}

TEST_F(X11WindowPicturesTest, HaveNothingOfWhatIsNotSeen) {
  auto window = open({100, 100, 1200, 90}, 0x2040C0);
  EXPECT_EQ(pictures_.take(window->id()).size(), QSize(360, 80)) << "very wide";
  const auto id = window->id();
  window.reset();
  // The server does what another program asks in its own time.
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return pictures_.take(id).isNull(); })) << "gone";
  EXPECT_TRUE(pictures_.take(12345).isNull());
  EXPECT_EQ(WindowPictures::sizeFor({100, 4000}), QSize(360, 300));
  EXPECT_EQ(WindowPictures::sizeFor({}), QSize(360, 80));
}

}  // namespace
}  // namespace tarnwick::testing
