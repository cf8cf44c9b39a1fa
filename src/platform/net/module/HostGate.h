#pragma once

#include <QHash>
#include <QString>
#include <functional>
#include <list>
#include <memory>

namespace tarnwick {

/// Lets so many through to each host at a time; others wait, the first to come the first to go. Must outlive its
/// passes.
class HostGate {
 public:
  /// A place in the queue of a host or, once `enter` was called, behind the gate. Destroying it gives the place up.
  class Pass {
   public:
    Pass(HostGate& gate, QString host, std::function<void()> enter);
    Q_DISABLE_COPY_MOVE(Pass)
    ~Pass();

   private:
    friend class HostGate;
    HostGate& gate_;
    QString host_;
    std::function<void()> enter_;
    bool isInside_ = false;
  };

  explicit HostGate(int width) : width_(width) {}
  Q_DISABLE_COPY_MOVE(HostGate)

  /// `enter` is called once, perhaps within this call or within the end of another pass, and must neither make nor
  /// destroy a pass itself.
  [[nodiscard]] std::unique_ptr<Pass> ask(const QString& host, std::function<void()> enter);

 private:
  struct Host {
    int inside = 0;
    std::list<Pass*> waiting;
  };

  void admit(const QString& host);

  int width_;
  QHash<QString, Host> hosts_;
};

}  // namespace tarnwick
