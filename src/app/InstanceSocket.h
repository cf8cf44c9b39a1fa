#pragma once

#include <QJsonObject>
#include <QObject>
#include <QString>
#include <functional>
#include <map>
#include <memory>
#include <optional>

#include "base/FileDescriptor.h"

class QSocketNotifier;

namespace tarnwick {

/// The way to reach the copy that runs on a data folder: a socket beside its lock, through which other processes of the
/// same user ask for something and get one answer. It needs no session bus. A request and an answer are JSON objects of
/// at most 64 KB.
class InstanceSocket : public QObject {
  Q_OBJECT
 public:
  using Answer = std::function<QJsonObject(const QJsonObject& request)>;

  explicit InstanceSocket(const QString& directory, QObject* parent = nullptr);
  ~InstanceSocket() override;

  /// Opens the socket; only the copy that holds the data folder's lock does. `answer` is called from the event loop and
  /// must not throw or wait. False where no socket can be had; then no request arrives.
  bool listen(Answer answer);
  void close();

  struct Reply {
    std::optional<QJsonObject> answer;  ///< None where no copy runs, or it did not answer.
    bool isAwaited = false;             ///< It was too late: the copy is busy, and has the request before it.
  };
  /// Asks the copy that runs, and waits for so long.
  static Reply ask(const QString& directory, const QJsonObject& request, int milliseconds);

 private:
  struct Guest;

  void admit();
  void serve(int guest);

  QString directory_;
  QByteArray path_;
  FileDescriptor door_;
  std::unique_ptr<QSocketNotifier> knocks_;
  std::map<int, std::unique_ptr<Guest>> guests_;
  Answer answer_;
};

}  // namespace tarnwick
