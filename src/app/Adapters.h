#pragma once

#include <memory>
#include <vector>

#include "app/AppDelegate.h"
#include "app/ClipboardKeeper.h"
#include "app/Readings.h"
#include "app/SocketSession.h"
#include "app/WindowSystem.h"
#include "apps/LaunchEnvironment.h"
#include "media/MediaService.h"
#include "platform/docks/GuardianProcess.h"
#include "platform/net/NetworkModule.h"
#include "services/BaseAddresses.h"
#include "services/LiveConnections.h"
#include "services/PerplexityUsage.h"
#include "store/Services.h"
#include "store/StoreSetup.h"
#include "windows/ReservationService.h"
#include "windows/WindowService.h"
#include "windows/ZoomMeetingService.h"

namespace tarnwick {

class ClaudeActivityFollower;

/// One adapter for each port of this desktop, made once after the application object and before the delegate, which
/// they outlive. Making them is cheap: what is costly begins when it is first used.
class Adapters {
 public:
  /// `dataDirectory` is where the program keeps what is the user's. `certificates` are trusted besides those of the
  /// system, as PEM, and `addresses` are where services are; only tests give any. Throws DomainError where there is no
  /// supported window system.
  Adapters(Scheduler& scheduler, const LaunchEnvironment& environment, const QString& dataDirectory,
           const QByteArray& certificates = {}, const BaseAddresses& addresses = BaseAddresses::shipped());
  ~Adapters();

  const Services& services() const { return services_; }
  SessionApplication& session() { return session_; }
  Connections& connections() { return connections_; }

  /// Fill in what the program is made of.
  StoreSetup storeSetup();
  DelegateSetup delegateSetup();

 private:
  /// Keeps an adapter for the whole run; the one that was made last goes first.
  template <class Port>
  Port& keep(std::unique_ptr<Port> made);

  Services makeServices();
  std::shared_ptr<PerplexityUsage> makePerplexity();
  LiveConnections::Setup connectionsSetup();
  WidgetLoader::Readers localReaders();
  ReadingPorts readingPorts();
  ReservationService::Setup reservationSetup();
  MediaService::Fetch coverFetch() const;

  Scheduler& scheduler_;
  LaunchEnvironment environment_;
  QString dataDirectory_;
  WindowSystem windowSystem_;
  std::vector<std::shared_ptr<void>> kept_;
  const Services services_;
  ClipboardKeeper& clipboard_;
  const Keychain keychain_;
  const OAuthTokens tokens_;
  GuardianProcess& guardian_;
  const NetworkSetup network_;
  const BaseAddresses addresses_;
  const std::shared_ptr<ServiceSession> web_;  ///< By which services on the net are asked.
  ClaudeActivityFollower& claudeActivity_;
  const std::shared_ptr<PerplexityUsage> perplexity_;
  LiveConnections& connections_;
  WindowService& windows_;
  ZoomMeetingService& meeting_;
  MediaService& media_;
  Readings& readings_;
  SessionApplication& session_;
};

}  // namespace tarnwick
