#pragma once

#include <QDBusConnection>

#include "windows/ports/AccessibleControls.h"

namespace tarnwick {

/// Controls of other programs over the accessibility bus. The session is asked where that is, and nothing is switched
/// on: programs that do not speak it stay silent.
class AtSpiControls final : public AccessibleControls {
 public:
  AtSpiControls();
  ~AtSpiControls() override;

  Capability capability() override;
  QList<Element> windows(qint64 pid) override;
  QList<Element> children(const Element& element) override;
  std::optional<Reading> read(const Element& element) override;
  bool press(const Element& element) override;

 private:
  bool connect();
  bool isOf(const Element& program, qint64 pid);

  const QString name_;  ///< Of the connection.
  QDBusConnection bus_;
};

}  // namespace tarnwick
