#pragma once

#include <QObject>

namespace tarnwick {

class AppStore;
class Connections;
class LiveDock;
class LiveDocks;
class WindowService;

/// Tells the connections, and what takes pictures of pinned windows, which widgets are on docks that somebody can see.
/// Borrows everything.
class SeenWidgets final : public QObject {
  Q_OBJECT
 public:
  SeenWidgets(const AppStore& store, const LiveDocks& docks, Connections& connections, WindowService& windows);

  void watch(LiveDock& dock);

 protected:
  bool eventFilter(QObject* dock, QEvent* event) override;

 private:
  void tell();

  const AppStore& store_;
  const LiveDocks& docks_;
  Connections& connections_;
  WindowService& windows_;
};

}  // namespace tarnwick
