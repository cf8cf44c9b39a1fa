#pragma once

#include <QHash>

#include "desktop/ClientWindows.h"

namespace tarnwick::test {

/// Windows of other apps that a test opens itself.
class FakeWindows final : public ClientWindows {
 public:
  QList<ClientWindow> all() const override { return windows; }
  void activate(quint64 id) override {
    activated << id;
    for (ClientWindow& window : windows) window.active = window.id == id;
    Q_EMIT changed();
  }
  void close(quint64 id) override {
    windows.removeIf([&](const ClientWindow& window) { return window.id == id; });
    Q_EMIT changed();
  }
  void minimise(quint64 id) override { minimised << id; }
  Capability pictures() const override { return Capability::yes(); }
  Capability frames() const override { return tellsFrames; }
  void watchFrames(bool watched) override { watchesFrames = watched; }
  void move(quint64 id, const QRectF& frame) {
    for (ClientWindow& window : windows)
      if (window.id == id) window.frame = frame;
    Q_EMIT framesChanged();
  }
  void setIconGeometry(const QList<quint64>& ids, const QRectF& tile) override {
    for (const quint64 id : ids) tiles[id] = tile;
    ++placements;
  }

  void open(quint64 id, const QString& applicationId, qint64 pid = 100, bool inTaskbar = true) {
    ClientWindow window;
    std::tie(window.id, window.applicationId, window.pid, window.inTaskbar) =
        std::tie(id, applicationId, pid, inTaskbar);
    windows << window;
    Q_EMIT changed();
  }

  QList<ClientWindow> windows;
  Capability tellsFrames;
  bool watchesFrames = false;
  QList<quint64> activated;
  QList<quint64> minimised;
  QHash<quint64, QRectF> tiles;  ///< By window: where its tile is said to be.
  int placements = 0;
};

}  // namespace tarnwick::test
