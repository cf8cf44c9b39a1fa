#pragma once

#include <QByteArray>

#include "base/Scheduler.h"
#include "services/ports/HTTPTransport.h"
#include "services/ports/LoopbackServer.h"

namespace tarnwick {

/// What the module is made with.
struct NetworkSetup {
  Scheduler* scheduler = nullptr;  ///< Must outlive what is made.
  /// Certificates to trust besides those of the system, as PEM. Only tests have any.
  QByteArray certificates;
};

/// The module that holds the toolkit's network library, and its entry points, which give what their caller owns.
constexpr const char* kNetworkModule = "tarnwick-net.so";
constexpr const char* kNetworkDoor = "tarnwickHTTPTransport";
using MakeHTTPTransport = HTTPTransport* (*)(const NetworkSetup& setup);
constexpr const char* kLoopbackDoor = "tarnwickLoopbackServer";
using MakeLoopbackListener = LoopbackServer* (*)(const NetworkSetup& setup);

}  // namespace tarnwick
