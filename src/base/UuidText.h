#pragma once

#include <QString>
#include <QUuid>
#include <optional>

namespace tarnwick {

/// Identities as files hold them: 8-4-4-4-12 hexadecimal digits without braces, upper-case, any case when read.
struct UuidText {
  static QString write(const QUuid& id);
  /// Absent for every other form.
  static std::optional<QUuid> read(QStringView text);
};

}  // namespace tarnwick
