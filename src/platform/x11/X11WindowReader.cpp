#include "platform/x11/X11WindowReader.h"

#include "base/ForeignText.h"

#include <QSysInfo>
#include <algorithm>
#include <utility>

namespace tarnwick {
namespace {

constexpr quint32 kUrgencyHint = 1 << 8;
/// Wider is no frame and no shadow.
constexpr quint32 kMostAround = 1000;

PropertyRequest ask(const X11Server& server, xcb_window_t window, X11Atom name) {
  return {server.connection(), window, server.atom(name)};
}

/// What a property with the widths of four sides says.
QMargins sides(PropertyRequest& request) {
  const QList<quint32> words = request.words();
  if (words.size() != 4 || std::ranges::any_of(words, [](quint32 word) { return word > kMostAround; })) return {};
  const auto side = [&words](qsizetype index) { return static_cast<int>(words[index]); };
  return {side(0), side(2), side(1), side(3)};  // The property holds left, right, top, bottom.
}

// Some programs give a path, some the file's name, some its id.
QString desktopFileId(const QString& text) {
  QString id = text.section(QLatin1Char('/'), -1);
  if (id.endsWith(QLatin1String(".desktop"))) id.chop(8);
  return id;
}

}  // namespace

X11WindowReader::X11WindowReader(const X11Server& server, xcb_window_t window)
    : server_(server),
      window_(window),
      visibleName_(ask(server, window, X11Atom::NetWmName)),
      name_(ask(server, window, X11Atom::WmName)),
      class_(ask(server, window, X11Atom::WmClass)),
      pid_(ask(server, window, X11Atom::NetWmPid)),
      machine_(ask(server, window, X11Atom::WmClientMachine)),
      states_(ask(server, window, X11Atom::NetWmState)),
      types_(ask(server, window, X11Atom::NetWmWindowType)),
      gtkId_(ask(server, window, X11Atom::GtkApplicationId)),
      kdeFile_(ask(server, window, X11Atom::KdeDesktopFile)),
      bamfFile_(ask(server, window, X11Atom::BamfDesktopFile)),
      desktop_(ask(server, window, X11Atom::NetWmDesktop)),
      hints_(server.connection(), window, XCB_ATOM_WM_HINTS),
      decoration_(ask(server, window, X11Atom::NetFrameExtents)),
      shadow_(ask(server, window, X11Atom::GtkFrameExtents)),
      allowed_(ask(server, window, X11Atom::NetWmAllowedActions)),
      geometry_(xcb_get_geometry(server.connection(), window)),
      place_(xcb_translate_coordinates(server.connection(), window, server.root(), 0, 0)) {}

X11WindowReader::X11WindowReader(X11WindowReader&& other) noexcept
    : server_(other.server_),
      window_(other.window_),
      visibleName_(std::move(other.visibleName_)),
      name_(std::move(other.name_)),
      class_(std::move(other.class_)),
      pid_(std::move(other.pid_)),
      machine_(std::move(other.machine_)),
      states_(std::move(other.states_)),
      types_(std::move(other.types_)),
      gtkId_(std::move(other.gtkId_)),
      kdeFile_(std::move(other.kdeFile_)),
      bamfFile_(std::move(other.bamfFile_)),
      desktop_(std::move(other.desktop_)),
      hints_(std::move(other.hints_)),
      decoration_(std::move(other.decoration_)),
      shadow_(std::move(other.shadow_)),
      allowed_(std::move(other.allowed_)),
      geometry_(other.geometry_),
      place_(other.place_),
      isPending_(std::exchange(other.isPending_, false)) {}

X11WindowReader::~X11WindowReader() {
  if (!isPending_) return;
  xcb_discard_reply(server_.connection(), geometry_.sequence);
  xcb_discard_reply(server_.connection(), place_.sequence);
}

bool X11WindowReader::reads(const X11Server& server, xcb_atom_t property) {
  constexpr X11Atom kRead[] = {X11Atom::NetWmName,       X11Atom::WmName,
                               X11Atom::WmClass,         X11Atom::NetWmPid,
                               X11Atom::WmClientMachine, X11Atom::NetWmState,
                               X11Atom::NetWmWindowType, X11Atom::GtkApplicationId,
                               X11Atom::KdeDesktopFile,  X11Atom::BamfDesktopFile,
                               X11Atom::NetWmDesktop,    X11Atom::NetFrameExtents,
                               X11Atom::GtkFrameExtents, X11Atom::NetWmAllowedActions};
  return property == XCB_ATOM_WM_HINTS ||
         std::ranges::any_of(kRead, [&](X11Atom name) { return server.atom(name) == property; });
}

X11WindowReader::Answer X11WindowReader::read() {
  Answer answer;
  ClientWindow& window = answer.window;
  window.id = window_;
  window.title = visibleName_.text();
  if (window.title.isEmpty()) window.title = name_.text();
  window.title = ForeignText::line(window.title);
  readClass(window);
  window.pid = localPid();
  const QList<quint32> states = states_.words();
  const auto has = [&](X11Atom state) { return states.contains(server_.atom(state)); };
  window.inTaskbar = isListed(states);
  window.minimised = has(X11Atom::NetWmStateHidden) && !has(X11Atom::NetWmStateShaded);
  window.maximised = has(X11Atom::NetWmStateMaximizedVert) && has(X11Atom::NetWmStateMaximizedHorz);
  window.fullscreen = has(X11Atom::NetWmStateFullscreen);
  window.dock = types_.word(XCB_ATOM_NONE) == server_.atom(X11Atom::NetWmWindowTypeDock);
  window.desktop = types_.word(XCB_ATOM_NONE) == server_.atom(X11Atom::NetWmWindowTypeDesktop);
  window.urgent = (hints_.word() & kUrgencyHint) != 0 || has(X11Atom::NetWmStateDemandsAttention);
  const QList<quint32> allowed = allowed_.words();
  if (!allowed.isEmpty()) {
    window.closable = allowed.contains(server_.atom(X11Atom::NetWmActionClose));
    window.minimisable = allowed.contains(server_.atom(X11Atom::NetWmActionMinimize));
  }
  answer.frame = frame();
  answer.outline = answer.frame.marginsAdded(sides(decoration_)).marginsRemoved(sides(shadow_));
  answer.desktop = desktop_.word(kAllDesktops);
  return answer;
}

void X11WindowReader::readClass(ClientWindow& window) {
  const QList<QByteArray> names = class_.bytes().split('\0');
  window.instance = QString::fromUtf8(names.value(0));
  window.applicationId = applicationId(QString::fromUtf8(names.value(1)));
}

QString X11WindowReader::applicationId(const QString& className) {
  for (PropertyRequest* announced : {&gtkId_, &kdeFile_, &bamfFile_}) {
    if (const QString id = desktopFileId(announced->text()); !id.isEmpty()) return id;
  }
  return className;
}

// A number from another machine would name a stranger here.
qint64 X11WindowReader::localPid() {
  const auto isHere = [](const QString& machine) {
    const QString here = QSysInfo::machineHostName();
    const QString shortHere = here.section(QLatin1Char('.'), 0, 0);
    return machine.isEmpty() || machine == QLatin1String("localhost") || machine == here ||
           machine.section(QLatin1Char('.'), 0, 0) == shortHere;
  };
  const qint64 pid = pid_.word();
  return isHere(machine_.text()) ? pid : 0;
}

bool X11WindowReader::isListed(const QList<quint32>& states) {
  if (states.contains(server_.atom(X11Atom::NetWmStateSkipTaskbar))) return false;
  const quint32 type = types_.word(XCB_ATOM_NONE);
  if (type == XCB_ATOM_NONE) return true;
  constexpr X11Atom kUnlisted[] = {X11Atom::NetWmWindowTypeDock,        X11Atom::NetWmWindowTypeDesktop,
                                   X11Atom::NetWmWindowTypeToolbar,     X11Atom::NetWmWindowTypeMenu,
                                   X11Atom::NetWmWindowTypeUtility,     X11Atom::NetWmWindowTypeSplash,
                                   X11Atom::NetWmWindowTypeNotification};
  return std::ranges::none_of(kUnlisted, [&](X11Atom name) { return server_.atom(name) == type; });
}

QRect X11WindowReader::frame() {
  isPending_ = false;
  const XcbReply size(xcb_get_geometry_reply(server_.connection(), geometry_, nullptr));
  const XcbReply place(xcb_translate_coordinates_reply(server_.connection(), place_, nullptr));
  return size && place ? QRect(place->dst_x, place->dst_y, size->width, size->height) : QRect();
}

}  // namespace tarnwick
