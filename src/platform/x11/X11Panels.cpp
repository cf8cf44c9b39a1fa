#include "platform/x11/X11Panels.h"

#include <QWidget>
#include <algorithm>
#include <utility>

#include "platform/x11/X11Panel.h"
#include "platform/x11/X11Properties.h"

namespace tarnwick {

X11Panels::X11Panels(X11Events& events, X11Screens& screens) : events_(events), screens_(screens) {
  const auto cookie = xcb_get_selection_owner(events.connection(), events.atom(X11Atom::CompositorSelection));
  const XcbReply reply(xcb_get_selection_owner_reply(events.connection(), cookie, nullptr));
  isComposited_ = reply && reply->owner != XCB_WINDOW_NONE;
  announcesBlur_ = readAnnouncement();
  readFullscreen();

  connect(&events, &X11Events::compositorChanged, this, [this](bool isPresent) {
    if (std::exchange(isComposited_, isPresent) != isPresent) Q_EMIT compositingChanged();
  });
  connect(&events, &X11Events::windowPropertyChanged, this, [this](quint32 window, quint32 name) {
    if (window == active_ && name == events_.atom(X11Atom::NetWmState)) readFullscreen();
  });
  connect(&events, &X11Events::rootPropertyChanged, this, [this](quint32 name) {
    if (name == events_.atom(X11Atom::NetActiveWindow)) readFullscreen();
    if (name != events_.atom(X11Atom::KdeBlurBehind) && name != events_.atom(X11Atom::NetSupported)) return;
    const bool could = canBlur();
    announcesBlur_ = readAnnouncement();
    if (canBlur() != could) Q_EMIT compositingChanged();
  });
}

void X11Panels::readFullscreen() {
  events_.watchClients();  // Before it is read, so that no change of a new window falls between.
  active_ = PropertyRequest(events_.connection(), events_.root(), events_.atom(X11Atom::NetActiveWindow)).word();
  const auto isFullscreen = [&] {
    PropertyRequest states(events_.connection(), active_, events_.atom(X11Atom::NetWmState));
    return states.words().contains(events_.atom(X11Atom::NetWmStateFullscreen));
  };
  const bool counts = active_ != XCB_WINDOW_NONE && !events_.isOurs(active_) && isFullscreen();
  const xcb_window_t window = counts ? active_ : xcb_window_t{XCB_WINDOW_NONE};
  if (std::exchange(fullscreen_, window) != window) Q_EMIT fullscreenChanged(window);
}

std::unique_ptr<Panel> X11Panels::make(std::unique_ptr<QWidget> content) {
  auto panel = std::make_unique<X11Panel>(events_, screens_, std::move(content), isComposited_);
  connect(this, &Panels::compositingChanged, panel.get(),
          [this, made = panel.get()] { made->setComposited(isComposited_); });
  panel->setFullscreen(fullscreen_);
  connect(this, &X11Panels::fullscreenChanged, panel.get(), &X11Panel::setFullscreen);
  return panel;
}

Capability X11Panels::captureProtection() const {
  return Capability::no(tr("On X11 no app can hide its windows from screenshots and recordings."));
}

// A compositor that blurs says so by a property of the root window, or in the list of what it supports.
bool X11Panels::readAnnouncement() const {
  const xcb_atom_t blur = events_.atom(X11Atom::KdeBlurBehind);
  PropertyRequest supported(events_.connection(), events_.root(), events_.atom(X11Atom::NetSupported));
  const auto cookie = xcb_list_properties(events_.connection(), events_.root());
  const XcbReply list(xcb_list_properties_reply(events_.connection(), cookie, nullptr));
  if (list) {
    const xcb_atom_t* first = xcb_list_properties_atoms(list.get());
    const xcb_atom_t* end = first + xcb_list_properties_atoms_length(list.get());
    if (std::find(first, end, blur) != end) return true;
  }
  return supported.words().contains(blur);
}

}  // namespace tarnwick
