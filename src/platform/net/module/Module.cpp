#include "platform/net/module/LoopbackListener.h"
#include "platform/net/module/NetworkTransport.h"

// The module's entry points; the caller owns what they give.

extern "C" Q_DECL_EXPORT tarnwick::HTTPTransport* tarnwickHTTPTransport(const tarnwick::NetworkSetup& setup) {
  return new tarnwick::NetworkTransport(setup);
}

extern "C" Q_DECL_EXPORT tarnwick::LoopbackServer* tarnwickLoopbackServer(const tarnwick::NetworkSetup& setup) {
  return new tarnwick::LoopbackListener(*setup.scheduler);
}
