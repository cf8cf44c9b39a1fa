#include "platform/x11/X11WindowPictures.h"

#include <xcb/composite.h>
#include <xcb/damage.h>
#include <xcb/render.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <cstring>

namespace tarnwick {
namespace {

struct X11WindowPicturesWords {
  Q_DECLARE_TR_FUNCTIONS(X11WindowPictures)
};

constexpr quint8 kDepth = 32;
/// The server's own limit, and what a window that was meant to be seen never has.
constexpr int kMostWindowPixels = 16'384;

bool isThere(xcb_connection_t* connection, xcb_extension_t* extension) {
  const auto* found = xcb_get_extension_data(connection, extension);
  return found && found->present;
}

/// A picture of the server's, with the pixels that it stands for.
struct Layer {
  xcb_pixmap_t pixmap = XCB_NONE;
  xcb_render_picture_t picture = XCB_NONE;
};

class Layers {
 public:
  Layers(const X11OwnConnection& server, quint32 format) : server_(server), format_(format) {}
  Q_DISABLE_COPY_MOVE(Layers)
  ~Layers() {
    for (const xcb_render_picture_t picture : std::as_const(pictures_))
      xcb_render_free_picture(server_.connection(), picture);
    for (const xcb_pixmap_t pixmap : std::as_const(pixmaps_)) xcb_free_pixmap(server_.connection(), pixmap);
  }

  /// Of a drawable that somebody else owns, or whose pixels `owned` gives back.
  Layer of(xcb_drawable_t drawable, quint32 format, bool owned) {
    if (owned) pixmaps_.append(drawable);
    const xcb_render_picture_t picture = xcb_generate_id(server_.connection());
    constexpr quint32 kIncludeInferiors = XCB_SUBWINDOW_MODE_INCLUDE_INFERIORS;
    server_.forget(xcb_render_create_picture_checked(server_.connection(), picture, drawable, format,
                                                     XCB_RENDER_CP_SUBWINDOW_MODE, &kIncludeInferiors));
    pictures_.append(picture);
    return {drawable, picture};
  }
  /// What `source` shows, so large.
  Layer resized(const Layer& source, const QSize& from, const QSize& to) {
    xcb_connection_t* const connection = server_.connection();
    const xcb_pixmap_t pixmap = xcb_generate_id(connection);
    xcb_create_pixmap(connection, kDepth, pixmap, server_.server().root(), static_cast<quint16>(to.width()),
                      static_cast<quint16>(to.height()));
    const Layer made = of(pixmap, format_, true);
    const auto fixed = [](double value) { return static_cast<xcb_render_fixed_t>(value * 65'536); };
    const xcb_render_transform_t transform{
        fixed(1.0 * from.width() / to.width()), 0, 0, 0, fixed(1.0 * from.height() / to.height()), 0, 0, 0, fixed(1)};
    server_.forget(xcb_render_set_picture_transform_checked(connection, source.picture, transform));
    constexpr char kSmooth[] = "bilinear";
    server_.forget(
        xcb_render_set_picture_filter_checked(connection, source.picture, std::strlen(kSmooth), kSmooth, 0, nullptr));
    server_.forget(xcb_render_composite_checked(connection, XCB_RENDER_PICT_OP_SRC, source.picture, XCB_NONE,
                                                made.picture, 0, 0, 0, 0, 0, 0, static_cast<quint16>(to.width()),
                                                static_cast<quint16>(to.height())));
    return made;
  }

 private:
  const X11OwnConnection& server_;
  quint32 format_;
  QList<xcb_render_picture_t> pictures_;
  QList<xcb_pixmap_t> pixmaps_;
};

}  // namespace

X11OwnConnection* X11WindowPictures::connection() {
  const bool isNew = !connection_ || connection_->isBroken();
  X11OwnConnection* const server = X11OwnConnection::keep(connection_);
  if (isNew) {
    kept_.clear();
    isAble_ = server && prepare(*server);
  }
  return server;
}

bool X11WindowPictures::prepare(const X11OwnConnection& server) {
  xcb_connection_t* const connection = server.connection();
  if (!isThere(connection, &xcb_composite_id) || !isThere(connection, &xcb_render_id) ||
      !isThere(connection, &xcb_damage_id))
    return false;
  const XcbReply composite(
      xcb_composite_query_version_reply(connection, xcb_composite_query_version(connection, 0, 4), nullptr));
  const XcbReply damage(
      xcb_damage_query_version_reply(connection, xcb_damage_query_version(connection, 1, 1), nullptr));
  const XcbReply formats(
      xcb_render_query_pict_formats_reply(connection, xcb_render_query_pict_formats(connection), nullptr));
  if (!composite || !damage || !formats || (composite->major_version == 0 && composite->minor_version < 2))
    return false;
  firstDamage_ = xcb_get_extension_data(connection, &xcb_damage_id)->first_event;
  formats_ = {};
  for (auto each = xcb_render_query_pict_formats_formats_iterator(formats.get()); each.rem > 0;
       xcb_render_pictforminfo_next(&each)) {
    const auto& format = *each.data;
    const bool isDirect = format.type == XCB_RENDER_PICT_TYPE_DIRECT && format.direct.red_shift == 16;
    if (isDirect && format.depth == kDepth && format.direct.alpha_mask == 0xFF) formats_.through = format.id;
  }
  for (auto screen = xcb_render_query_pict_formats_screens_iterator(formats.get()); screen.rem > 0;
       xcb_render_pictscreen_next(&screen))
    for (auto depth = xcb_render_pictscreen_depths_iterator(screen.data); depth.rem > 0;
         xcb_render_pictdepth_next(&depth))
      for (auto visual = xcb_render_pictdepth_visuals_iterator(depth.data); visual.rem > 0;
           xcb_render_pictvisual_next(&visual))
        formats_.ofVisuals.insert(visual.data->visual, visual.data->format);
  return formats_.through != 0;
}

Capability X11WindowPictures::capability() {
  if (connection() && isAble_) return Capability::yes();
  return Capability::no(X11WindowPicturesWords::tr("This X server cannot show windows that others cover."));
}

void X11WindowPictures::hold(const QList<quint64>& windows) {
  const X11OwnConnection* const server = connection();
  if (!server || !isAble_) return;
  bool isNew = false;
  for (const quint64 id : windows) {
    const auto window = static_cast<xcb_window_t>(id);
    if (kept_.contains(window)) continue;
    isNew = true;
    xcb_connection_t* const connection = server->connection();
    server->forget(xcb_composite_redirect_window_checked(connection, window, XCB_COMPOSITE_REDIRECT_AUTOMATIC));
    const quint32 damage = xcb_generate_id(connection);
    server->forget(xcb_damage_create_checked(connection, damage, window, XCB_DAMAGE_REPORT_LEVEL_NON_EMPTY));
    kept_.insert(window, {damage, true});
  }
  // What others covered is painted now, which takes programs a moment.
  const QDeadlineTimer end(kRepaint);
  while (isNew && !end.hasExpired() && server->wait(end, [this](const auto& event) { note(event); })) {
  }
}

void X11WindowPictures::letGo(const X11OwnConnection& server, xcb_window_t window) {
  const auto kept = kept_.constFind(window);
  if (kept == kept_.cend()) return;
  server.forget(xcb_damage_destroy_checked(server.connection(), kept->damage));
  server.forget(xcb_composite_unredirect_window_checked(server.connection(), window, XCB_COMPOSITE_REDIRECT_AUTOMATIC));
  kept_.erase(kept);
}

QImage X11WindowPictures::take(quint64 id) {
  const X11OwnConnection* const server = connection();
  if (!server || !isAble_) return {};
  const auto window = static_cast<xcb_window_t>(id);
  xcb_connection_t* const connection = server->connection();
  const auto asked = std::pair(xcb_get_geometry(connection, window), xcb_get_window_attributes(connection, window));
  const XcbReply geometry(xcb_get_geometry_reply(connection, asked.first, nullptr));
  const XcbReply attributes(xcb_get_window_attributes_reply(connection, asked.second, nullptr));
  const bool isSeen = geometry && attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE &&
                      geometry->width <= kMostWindowPixels && geometry->height <= kMostWindowPixels;
  if (!isSeen) {
    letGo(*server, window);
    return {};
  }
  hold({id});
  Kept& kept = kept_[window];
  server->forget(xcb_damage_subtract_checked(connection, kept.damage, XCB_NONE, XCB_NONE));
  kept.hasChanged = false;
  return scaled(*server, window, *geometry, attributes->visual);
}

QImage X11WindowPictures::scaled(const X11OwnConnection& server, xcb_window_t window,
                                 const xcb_get_geometry_reply_t& geometry, xcb_visualid_t visual) const {
  const quint32 format = formats_.ofVisuals.value(visual);
  if (format == 0) return {};
  xcb_connection_t* const connection = server.connection();
  const xcb_pixmap_t pixels = xcb_generate_id(connection);
  const XcbReply<xcb_generic_error_t> failed(
      xcb_request_check(connection, xcb_composite_name_window_pixmap_checked(connection, window, pixels)));
  if (failed) return {};
  Layers layers(server, formats_.through);
  QSize size(geometry.width, geometry.height);
  const QSize wanted = sizeFor(size);
  Layer layer = layers.of(pixels, format, true);
  // By halves, so that no pixel is left out.
  while (size.width() >= 2 * wanted.width() && size.height() >= 2 * wanted.height()) {
    layer = layers.resized(layer, size, size / 2);
    size /= 2;
  }
  layer = layers.resized(layer, size, wanted);
  const XcbReply image(xcb_get_image_reply(
      connection,
      xcb_get_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, layer.pixmap, 0, 0, static_cast<quint16>(wanted.width()),
                    static_cast<quint16>(wanted.height()), ~0U),
      nullptr));
  const qsizetype bytes = qsizetype{4} * wanted.width() * wanted.height();
  if (!image || xcb_get_image_data_length(image.get()) < bytes) return {};
  QImage picture(wanted, QImage::Format_ARGB32_Premultiplied);
  std::memcpy(picture.bits(), xcb_get_image_data(image.get()), static_cast<std::size_t>(bytes));
  return picture;
}

bool X11WindowPictures::hasChanged(quint64 window) {
  const X11OwnConnection* const server = connection();
  if (!server) return false;
  while (const XcbReply event{xcb_poll_for_event(server->connection())}) note(*event);
  const auto kept = kept_.constFind(static_cast<xcb_window_t>(window));
  return kept == kept_.cend() || kept->hasChanged;
}

void X11WindowPictures::note(const xcb_generic_event_t& event) {
  if ((event.response_type & 0x7F) != firstDamage_ + XCB_DAMAGE_NOTIFY) return;
  const auto& painted = reinterpret_cast<const xcb_damage_notify_event_t&>(event);
  if (const auto kept = kept_.find(painted.drawable); kept != kept_.end()) kept->hasChanged = true;
}

void X11WindowPictures::rest() {
  kept_.clear();
  connection_.reset();
}

}  // namespace tarnwick
