#pragma once

#include <QObject>
#include <QString>
#include <map>
#include <memory>
#include <optional>

class QSocketNotifier;

namespace tarnwick {

/// The kernel's switches of the Wi-Fi radios, read from its device; never changed from here.
class RfkillSwitches final : public QObject {
  Q_OBJECT
 public:
  explicit RfkillSwitches(const QString& device = QStringLiteral("/dev/rfkill"), QObject* parent = nullptr);
  ~RfkillSwitches() override;

  /// Whether every Wi-Fi radio is blocked; none where there is no radio or the kernel doesn't say.
  std::optional<bool> wifiBlocked() const;

 Q_SIGNALS:
  void changed();

 private:
  void drain();

  int descriptor_ = -1;
  std::unique_ptr<QSocketNotifier> notifier_;
  std::map<quint32, bool> wifiBlocked_;
};

}  // namespace tarnwick
