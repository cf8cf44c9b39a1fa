#pragma once

#include <QString>

namespace tarnwick {

/// What runs in KWin, whose scripts have had other names for the same things since version 6. `SERVICE`, `PATH` and
/// `NAME` stand for who is asked for orders and for the script's own name.
inline const QString kKWinScriptText = QStringLiteral(R"js(
var rest = new QTimer();
rest.singleShot = true;
rest.interval = 5000;
rest.timeout.connect(function () {
  callDBus("org.kde.KWin", "/Scripting", "org.kde.kwin.Scripting", "unloadScript", "NAME");
});

function windows() {
  return workspace.windowList ? workspace.windowList() : workspace.clientList();
}

function find(id) {
  var all = windows();
  for (var i = 0; i < all.length; ++i) {
    if (String(all[i].internalId) === id) return all[i];
  }
  return null;
}

function numbers(frame) {
  return [frame.x, frame.y, frame.width, frame.height];
}

function isNear(frame, wanted) {
  return numbers(frame).every(function (value, at) { return Math.abs(value - wanted[at]) < 2; });
}

// Placed by KWin itself beside what docks reserve.
function isKept(window) {
  if (window.tile) return true;
  return isNear(window.frameGeometry, numbers(workspace.clientArea(KWin.MaximizeArea, window)));
}

function described(window) {
  return {
    id: String(window.internalId),
    pid: window.pid,
    frame: numbers(window.frameGeometry),
    least: [window.minSize.width, window.minSize.height],
    active: window.active,
    minimised: window.minimized,
    fullscreen: window.fullScreen,
    kept: isKept(window),
    moves: window.moveable && !window.move && !window.resize,
    resizes: window.resizeable
  };
}

// A program takes its time to paint itself in another size.
function move(window, wanted, patience, done) {
  window.frameGeometry = {x: wanted[0], y: wanted[1], width: wanted[2], height: wanted[3]};
  if (isNear(window.frameGeometry, wanted)) return done();
  var end = new QTimer();
  end.singleShot = true;
  end.interval = patience;
  var finish = function () {
    end.stop();
    window.frameGeometryChanged.disconnect(look);
    done();
  };
  var look = function () {
    if (isNear(window.frameGeometry, wanted)) finish();
  };
  window.frameGeometryChanged.connect(look);
  end.timeout.connect(finish);
  end.start();
}

function obey(text) {
  var order = JSON.parse(text);
  if (order.id === undefined) {
    return ask(windows().filter(function (each) { return each.normalWindow || each.dialog || each.utility; })
                        .map(described));
  }
  var window = find(order.id);
  if (!window) return ask(null);
  if (!order.frame) return ask(numbers(window.frameGeometry));
  move(window, order.frame, order.patience, function () { ask(numbers(window.frameGeometry)); });
}

function ask(answer) {
  rest.start();
  callDBus("SERVICE", "PATH", "com.brindlemoor.Tarnwick.Script", "next", JSON.stringify(answer), obey);
}

ask(null);
)js");

}  // namespace tarnwick
