#include "platform/x11/X11WindowFrames.h"

#include <xcb/res.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QHash>
#include <algorithm>
#include <cmath>
#include <vector>

#include "platform/x11/X11Properties.h"
#include "platform/x11/X11WindowReader.h"

namespace tarnwick {
namespace {

struct X11WindowFramesWords {
  Q_DECLARE_TR_FUNCTIONS(X11WindowFrames)
};

// Of _NET_MOVERESIZE_WINDOW: the place is that of the window itself, all four values count, a tool asks.
constexpr quint32 kStaticGravity = 10;
constexpr quint32 kAllOfFrame = 0xF << 8;
constexpr quint32 kFromPager = 2 << 12;
/// The server has no larger windows.
constexpr double kMostPixels = 32'767;

/// What a program says of the sizes that its window may have, in the order of WM_NORMAL_HINTS.
struct SizeHints {
  static constexpr quint32 kHasLeast = 1 << 4;
  static constexpr quint32 kHasSteps = 1 << 6;
  static constexpr quint32 kHasBase = 1 << 8;
  static constexpr qsizetype kWords = 17;

  QSize least;
  QSize base;
  QSize step{1, 1};

  static SizeHints of(PropertyRequest& property) {
    SizeHints hints;
    const QList<quint32> words = property.words();
    if (words.size() < kWords) return hints;
    const auto size = [&words](qsizetype at) {
      const auto side = [](quint32 word) { return static_cast<int>(std::min<quint32>(word, kMostPixels)); };
      return QSize(side(words[at]), side(words[at + 1]));
    };
    const quint32 flags = words[0];
    if (flags & kHasLeast) hints.least = hints.base = size(5);
    if (flags & kHasSteps) hints.step = size(9).expandedTo({1, 1});
    if (flags & kHasBase) hints.base = size(15);
    if (!(flags & kHasLeast)) hints.least = hints.base;
    return hints;
  }
  /// The largest size of that window that is no larger.
  QSize within(const QSize& size) const {
    const auto side = [](int wanted, int from, int by) {
      return wanted < from ? wanted : wanted - (wanted - from) % by;
    };
    return {side(size.width(), base.width(), step.width()), side(size.height(), base.height(), step.height())};
  }
};

bool isNear(const QRect& a, const QRect& b) {
  return std::abs(a.x() - b.x()) < 2 && std::abs(a.y() - b.y()) < 2 && std::abs(a.width() - b.width()) < 2 &&
         std::abs(a.height() - b.height()) < 2;
}

/// Absent for a window that is gone.
std::optional<X11WindowReader::Answer> look(const X11OwnConnection& server, xcb_window_t window) {
  const X11WindowReader::Answer answer = X11WindowReader(server.server(), window).read();
  return answer.frame.isEmpty() ? std::nullopt : std::optional(answer);
}

/// The processes that the server knows for these windows. What a program says itself is wrong where it runs in a
/// sandbox that numbers processes anew.
QHash<quint32, int> processesOf(const X11OwnConnection& server, const QList<quint32>& windows) {
  xcb_connection_t* const connection = server.connection();
  const auto* resource = xcb_get_extension_data(connection, &xcb_res_id);
  if (!resource || !resource->present || windows.isEmpty()) return {};
  const XcbReply version(xcb_res_query_version_reply(connection, xcb_res_query_version(connection, 1, 2), nullptr));
  if (!version || std::pair(version->server_major, version->server_minor) < std::pair<quint16, quint16>(1, 2))
    return {};
  std::vector<xcb_res_client_id_spec_t> wanted;
  for (const quint32 window : windows) wanted.push_back({window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID});
  const auto cookie = xcb_res_query_client_ids(connection, static_cast<quint32>(wanted.size()), wanted.data());
  const XcbReply reply(xcb_res_query_client_ids_reply(connection, cookie, nullptr));
  if (!reply) return {};
  const quint32 own = xcb_get_setup(connection)->resource_id_mask;
  QHash<quint32, int> ofPrograms;
  for (auto each = xcb_res_query_client_ids_ids_iterator(reply.get()); each.rem > 0;
       xcb_res_client_id_value_next(&each))
    if ((each.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID) != 0 &&
        xcb_res_client_id_value_value_length(each.data) > 0)
      ofPrograms.insert(each.data->spec.client & ~own, static_cast<int>(*xcb_res_client_id_value_value(each.data)));
  QHash<quint32, int> found;
  for (const quint32 window : windows)
    if (const auto pid = ofPrograms.constFind(window & ~own); pid != ofPrograms.cend()) found.insert(window, *pid);
  return found;
}

/// Whether moves of a window come as events.
void follow(const X11OwnConnection& server, xcb_window_t window, bool followed) {
  const quint32 events = followed ? XCB_EVENT_MASK_STRUCTURE_NOTIFY : XCB_EVENT_MASK_NO_EVENT;
  server.forget(xcb_change_window_attributes_checked(server.connection(), window, XCB_CW_EVENT_MASK, &events));
}

}  // namespace

Capability X11WindowFrames::capability() {
  const X11OwnConnection* const server = X11OwnConnection::keep(connection_);
  if (!server) return Capability::no(X11WindowFramesWords::tr("No X11 display is available."));
  const QList<quint32> supported = server->ofRoot(X11Atom::NetSupported).words();
  const auto can = [&](X11Atom name) { return supported.contains(server->server().atom(name)); };
  if (can(X11Atom::NetMoveresizeWindow) && can(X11Atom::NetActiveWindow)) return Capability::yes();
  return Capability::no(X11WindowFramesWords::tr("This window manager does not let programs move windows."));
}

std::optional<QList<WindowFrames::Window>> X11WindowFrames::all(std::chrono::milliseconds) {
  const X11OwnConnection* const server = X11OwnConnection::keep(connection_);
  if (!server) return std::nullopt;
  PropertyRequest list = server->ofRoot(X11Atom::NetClientList);
  PropertyRequest front = server->ofRoot(X11Atom::NetActiveWindow);
  std::vector<X11WindowReader> readers;
  const QList<quint32> listed = list.words();
  for (const xcb_window_t window : listed) readers.emplace_back(server->server(), window);
  const QHash<quint32, int> processes = processesOf(*server, listed);
  const xcb_window_t active = front.word();
  QList<Window> windows;
  for (X11WindowReader& reader : readers) {
    const auto [window, frame, outline, desktop] = reader.read();
    if (frame.isEmpty() || window.dock || window.desktop) continue;
    windows.append({reader.window(), processes.value(reader.window(), static_cast<int>(window.pid)), outline,
                    reader.window() == active, window.minimised, window.maximised, window.fullscreen});
  }
  if (server->isBroken()) return std::nullopt;
  return windows;
}

std::optional<QRectF> X11WindowFrames::frame(quint32 number, std::chrono::milliseconds) {
  const X11OwnConnection* const server = X11OwnConnection::keep(connection_);
  const auto answer = server ? look(*server, number) : std::nullopt;
  return answer ? std::optional<QRectF>(answer->outline) : std::nullopt;
}

QRectF X11WindowFrames::accepted(quint32 number, const QRectF& wanted) {
  const X11OwnConnection* const server = X11OwnConnection::keep(connection_);
  if (!server) return {};
  PropertyRequest normal = server->of(number, X11Atom::WmNormalHints);
  const auto now = look(*server, number);
  if (!now) return {};
  const QSize around = now->outline.size() - now->frame.size();
  const QSize size = wanted.toRect().size();
  const SizeHints hints = SizeHints::of(normal);
  const QSize inside = size == now->outline.size() ? now->frame.size() : hints.within(size - around);
  if (inside.width() < hints.least.width() || inside.height() < hints.least.height()) return {};
  return QRect(wanted.toRect().topLeft(), inside + around);
}

/// Asks for the inner rectangle and waits until the outer one is near the wanted, and no longer as before. Where the
/// window is then; empty once it is gone.
QRect X11WindowFrames::moved(const X11OwnConnection& server, quint32 number, const QRect& before, const QRect& inside,
                             const QRect& wanted, const QDeadlineTimer& end) {
  const auto word = [](int value) { return static_cast<quint32>(value); };
  server.server().askManager(number, X11Atom::NetMoveresizeWindow,
                             {kStaticGravity | kAllOfFrame | kFromPager, word(inside.x()), word(inside.y()),
                              word(inside.width()), word(inside.height())});
  for (;;) {
    const auto now = look(server, number);
    if (!now) return {};
    const bool isSettled = now->outline != before && isNear(now->outline, wanted);
    if (now->outline == wanted || isSettled || end.hasExpired() || !server.wait(end)) return now->outline;
  }
}

bool X11WindowFrames::setFrame(quint32 number, const QRectF& frame, std::chrono::milliseconds patience) {
  const X11OwnConnection* const server = X11OwnConnection::keep(connection_);
  const bool isPossible = std::abs(frame.x()) < kMostPixels && std::abs(frame.y()) < kMostPixels &&
                          frame.width() < kMostPixels && frame.height() < kMostPixels;
  const auto before = server && isPossible ? look(*server, number) : std::nullopt;
  if (!before) return false;
  const QRect wanted = frame.toRect();
  // Asked to go where it is, it would end a pixel aside.
  if (before->outline == wanted) return true;
  const QRect inside(wanted.topLeft() + before->frame.topLeft() - before->outline.topLeft(),
                     wanted.size() - (before->outline.size() - before->frame.size()));
  if (inside.isEmpty()) return false;
  follow(*server, number, true);
  const QDeadlineTimer end(patience);
  QRect there = moved(*server, number, before->outline, inside, wanted, end);
  // Some managers count the border that a program wants around its window, and put it a pixel aside. Where it was there
  // before, the first waited in vain.
  if (isNear(there, wanted) && there != wanted)
    there = moved(*server, number, there, inside.translated(wanted.topLeft() - there.topLeft()), wanted,
                  QDeadlineTimer(patience));
  if (!server->isBroken()) follow(*server, number, false);
  return isNear(there, wanted);
}

}  // namespace tarnwick
