#pragma once

#include <QObject>
#include <map>
#include <memory>
#include <optional>
#include <set>

#include "base/FileDescriptor.h"

class QSocketNotifier;

namespace tarnwick {

/// The network interfaces of the kernel, followed by what it announces of them. Nothing is asked twice unless an
/// announcement was lost.
class KernelLinks final : public QObject {
  Q_OBJECT
 public:
  explicit KernelLinks(QObject* parent = nullptr);
  ~KernelLinks() override;

  /// Whether an interface other than the loopback is switched on and has its cable, or what stands for one. Absent
  /// until the kernel has answered, and where it does not.
  std::optional<bool> isAnyUp() const { return isAnyUp_; }

 Q_SIGNALS:
  void changed();

 private:
  void ask();
  void take(const std::optional<std::map<int, bool>>& listed);
  void drain();
  void decide();

  FileDescriptor socket_;
  std::unique_ptr<QSocketNotifier> notifier_;
  std::map<int, bool> links_;  ///< Whether each is up.
  bool isAsking_ = false;      ///< For all of them.
  std::set<int> announced_;    ///< Those of which something was heard meanwhile.
  int questions_ = 0;
  bool isListed_ = false;
  std::optional<bool> isAnyUp_;
};

}  // namespace tarnwick
