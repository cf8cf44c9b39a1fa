#include "platform/net/module/HostGate.h"

#include <algorithm>

namespace tarnwick {

HostGate::Pass::Pass(HostGate& gate, QString host, int port, Enter enter)
    : gate_(gate), host_(std::move(host)), port_(port), enter_(std::move(enter)) {}

HostGate::Pass::~Pass() {
  if (isInside_)
    gate_.leave(*this);
  else
    gate_.hosts_[host_].waiting.remove(this);
  gate_.admit(host_);
  gate_.admitElsewhere();
}

std::unique_ptr<HostGate::Pass> HostGate::ask(const QString& host, int port, Enter enter) {
  auto pass = std::make_unique<Pass>(*this, host, port, std::move(enter));
  hosts_[host].ports[port];
  hosts_[host].waiting.push_back(pass.get());
  admit(host);
  return pass;
}

void HostGate::leave(const Pass& pass) {
  Port& port = hosts_[pass.host_].ports[pass.port_];
  --port.inside;
  if (pass.connection_ == Connection::Closed) --port.open;
  port.idleSince = scheduler_.reference();
}

/// Takes those for closed that are idle for long enough.
void HostGate::closeIdle(Host& host) const {
  for (auto& [number, port] : host.ports)
    if (port.inside == 0 && scheduler_.reference() - port.idleSince >= keptSeconds_) port.open = 0;
}

/// One that waits for the next request of its port is used by that.
bool HostGate::hasRoom(const Host& host, const Port& port) const {
  int open = port.inside < port.open ? 0 : 1;
  for (const auto& [number, each] : host.ports) open += each.open;
  return open <= width_;
}

bool HostGate::isAnyInside() const {
  return std::ranges::any_of(hosts_, [](const auto& host) {
    return std::ranges::any_of(host.second.ports, [](const auto& port) { return port.second.inside > 0; });
  });
}

/// What is kept for one port can be closed only together with all else; then nobody must be using any of it.
bool HostGate::makeRoom() {
  if (!closeKept_ || isAnyInside()) return false;
  closeKept_();
  for (auto& [name, host] : hosts_)
    for (auto& [number, port] : host.ports) port.open = 0;
  return true;
}

/// Lets those in who only wait for connections that are kept, once these can be closed.
void HostGate::admitElsewhere() {
  if (!closeKept_ || isAnyInside()) return;
  for (const auto& [name, host] : hosts_)
    if (!host.waiting.empty()) admit(name);
}

/// Looks again when the first of those that are idle are closed.
void HostGate::waitForClosing(const QString& name) {
  double left = keptSeconds_;
  bool isAny = false;
  for (const auto& [number, port] : hosts_[name].ports) {
    if (port.inside > 0 || port.open == 0) continue;
    left = std::min(left, keptSeconds_ - (scheduler_.reference() - port.idleSince));
    isAny = true;
  }
  // Otherwise whoever leaves lets the next one in.
  if (isAny) hosts_[name].closing = scheduler_.after(left, [this, name] { admit(name); });
}

void HostGate::admit(const QString& name) {
  Host& host = hosts_[name];
  host.closing.reset();
  closeIdle(host);
  while (!host.waiting.empty()) {
    Pass* next = host.waiting.front();
    Port& port = host.ports[next->port_];
    if (!hasRoom(host, port) && !makeRoom()) return waitForClosing(name);
    host.waiting.pop_front();
    ++port.inside;
    port.open = std::max(port.open, port.inside);
    next->isInside_ = true;
    next->connection_ = host.ports.size() > 1 ? Connection::Closed : Connection::Kept;
    next->enter_(next->connection_);
  }
}

}  // namespace tarnwick
