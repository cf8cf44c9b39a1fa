#include "platform/net/module/NetworkTransport.h"

/// The module's entry point; the caller owns what it gives.
extern "C" Q_DECL_EXPORT tarnwick::HTTPTransport* tarnwickHTTPTransport(const tarnwick::NetworkSetup& setup) {
  return new tarnwick::NetworkTransport(setup);
}
