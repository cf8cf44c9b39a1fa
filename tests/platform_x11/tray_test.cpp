#include "platform/x11/X11Tray.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include "support/VirtualDisplay.h"

namespace tarnwick::testing {
namespace {

/// The tray of a desktop: a window that owns the selection and says so to all.
class OldTray {
 public:
  OldTray() : window_(xcb_generate_id(display_.connection())) {
    xcb_create_window(display_.connection(), XCB_COPY_FROM_PARENT, window_, display_.root(), 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    const xcb_atom_t selection = display_.atom("_NET_SYSTEM_TRAY_S0");
    xcb_set_selection_owner(display_.connection(), window_, selection, XCB_CURRENT_TIME);
    announce(selection);
  }
  ~OldTray() {
    xcb_destroy_window(display_.connection(), window_);
    xcb_flush(display_.connection());
  }
  void announce(xcb_atom_t selection) {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = display_.root();
    message.type = display_.atom("MANAGER");
    message.data.data32[1] = selection;
    message.data.data32[2] = window_;
    xcb_send_event(display_.connection(), 0, display_.root(), XCB_EVENT_MASK_STRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(display_.connection());
  }

 private:
  VirtualDisplay& display_ = VirtualDisplay::current();
  xcb_window_t window_;
};

TEST(X11Tray, FindsATrayThatIsThereOrComesLaterOrComesAgain) {
  X11Tray tray;
  const QSignalSpy found(&tray, &Tray::found);
  const QSignalSpy missing(&tray, &Tray::missing);
  tray.look();
  EXPECT_EQ(missing.size(), 1);
  for (const int times : {1, 2}) {
    OldTray desktops;
    EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return found.size() == times; }));
    // What manages something else says so in the same words.
    desktops.announce(VirtualDisplay::current().atom("_NET_WM_CM_S0"));
    VirtualDisplay::current().settle();
    EXPECT_EQ(found.size(), times);
  }

  const OldTray desktops;
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return found.size() == 3; }));
  X11Tray second;
  const QSignalSpy atOnce(&second, &Tray::found);
  second.look();
  EXPECT_EQ(atOnce.size(), 1);
  EXPECT_EQ(missing.size(), 1);
}

}  // namespace
}  // namespace tarnwick::testing
