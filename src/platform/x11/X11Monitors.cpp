#include "platform/x11/X11Monitors.h"

#include <xcb/randr.h>

#include "platform/x11/X11Events.h"
#include "platform/x11/X11Properties.h"

namespace tarnwick {
namespace {

constexpr quint32 kEdidWords = 128;  // four blocks

QByteArray edidBytes(xcb_connection_t* connection, xcb_randr_get_output_property_cookie_t cookie) {
  const XcbReply reply(xcb_randr_get_output_property_reply(connection, cookie, nullptr));
  if (!reply || reply->format != 8) return {};
  const quint8* data = xcb_randr_get_output_property_data(reply.get());
  return QByteArray(reinterpret_cast<const char*>(data), xcb_randr_get_output_property_data_length(reply.get()));
}

QString atomName(xcb_connection_t* connection, xcb_get_atom_name_cookie_t cookie) {
  const XcbReply reply(xcb_get_atom_name_reply(connection, cookie, nullptr));
  if (!reply) return {};
  return QString::fromUtf8(xcb_get_atom_name_name(reply.get()), xcb_get_atom_name_name_length(reply.get()));
}

}  // namespace

bool X11Monitor::areKnown(const X11Events& events) {
  const xcb_query_extension_reply_t* extension = xcb_get_extension_data(events.connection(), &xcb_randr_id);
  if (!extension || !extension->present) return false;
  const auto cookie = xcb_randr_query_version(events.connection(), 1, 5);
  const XcbReply version(xcb_randr_query_version_reply(events.connection(), cookie, nullptr));
  return version && (version->major_version > 1 || version->minor_version >= 5);
}

QList<X11Monitor> X11Monitor::read(const X11Events& events) {
  xcb_connection_t* connection = events.connection();
  const auto cookie = xcb_randr_get_monitors(connection, events.root(), 1);
  const XcbReply reply(xcb_randr_get_monitors_reply(connection, cookie, nullptr));
  if (!reply) return {};

  struct Questions {
    xcb_get_atom_name_cookie_t name;
    std::optional<xcb_randr_get_output_property_cookie_t> edid;
  };
  QList<X11Monitor> monitors;
  QList<Questions> questions;
  for (auto next = xcb_randr_get_monitors_monitors_iterator(reply.get()); next.rem;
       xcb_randr_monitor_info_next(&next)) {
    X11Monitor monitor;
    monitor.frame = QRect(next.data->x, next.data->y, next.data->width, next.data->height);
    Questions asked{.name = xcb_get_atom_name(connection, next.data->name), .edid = {}};
    if (xcb_randr_monitor_info_outputs_length(next.data) > 0) {
      monitor.output = xcb_randr_monitor_info_outputs(next.data)[0];
      asked.edid = xcb_randr_get_output_property(connection, monitor.output, events.atom(X11Atom::Edid), XCB_ATOM_ANY,
                                                 0, kEdidWords, 0, 0);
    }
    monitors.append(monitor);
    questions.append(asked);
  }
  for (qsizetype index = 0; index < monitors.size(); ++index) {
    monitors[index].name = atomName(connection, questions[index].name);
    if (questions[index].edid) monitors[index].edid = Edid::parse(edidBytes(connection, *questions[index].edid));
  }
  return monitors;
}

}  // namespace tarnwick
