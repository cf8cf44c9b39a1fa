#pragma once

#include <QNetworkReply>
#include <QObject>

#include "platform/net/module/NetworkTransport.h"
#include "platform/net/module/Unpacker.h"

namespace tarnwick {

/// One exchange, from the queue of its host to its end.
class NetworkTransfer final : public QObject, public HTTPTransfer {
 public:
  NetworkTransfer(NetworkTransport& transport, HTTPRequest request, HTTPTransport::Done done);
  ~NetworkTransfer() override;

 private:
  void begin();
  void start();
  int port() const { return request_.url.port(443); }
  void readHead();
  /// Takes over what has come, for one turn of the event loop. False once this has ended, and may be gone.
  bool readBody();
  /// The next bytes of the body, unpacked; none where no more have come.
  QByteArray nextBytes(qsizetype most);
  void readEnd();
  int status() const;
  HTTPResponse response();
  /// Tells how it came out, by which this may be destroyed.
  void end(HTTPAnswer answer);
  /// Closes the connection of what is not over, then gives the place behind the gate up.
  void leave();

  NetworkTransport& transport_;
  HTTPRequest request_;
  HTTPTransport::Done done_;
  QByteArray body_;
  QNetworkReply* reply_ = nullptr;
  bool isSent_ = false;
  HostGate::Connection connection_ = HostGate::Connection::Kept;
  std::optional<Unpacker> unpacker_;  ///< Where the body is packed.
  JobHandle goingOn_;                 ///< While there is more to take over than one turn should.
  JobHandle beginning_;
  JobHandle deadline_;
  std::unique_ptr<HostGate::Pass> pass_;
};

}  // namespace tarnwick
