#include "platform/net/module/HostGate.h"

namespace tarnwick {

HostGate::Pass::Pass(HostGate& gate, QString host, std::function<void()> enter)
    : gate_(gate), host_(std::move(host)), enter_(std::move(enter)) {}

HostGate::Pass::~Pass() {
  Host& host = gate_.hosts_[host_];
  if (isInside_) {
    --host.inside;
  } else {
    host.waiting.remove(this);
  }
  gate_.admit(host_);
}

std::unique_ptr<HostGate::Pass> HostGate::ask(const QString& host, std::function<void()> enter) {
  auto pass = std::make_unique<Pass>(*this, host, std::move(enter));
  hosts_[host].waiting.push_back(pass.get());
  admit(host);
  return pass;
}

void HostGate::admit(const QString& name) {
  Host& host = hosts_[name];
  while (host.inside < width_ && !host.waiting.empty()) {
    Pass* next = host.waiting.front();
    host.waiting.pop_front();
    ++host.inside;
    next->isInside_ = true;
    next->enter_();
  }
  if (host.inside == 0) hosts_.remove(name);  // Then nobody waits either.
}

}  // namespace tarnwick
