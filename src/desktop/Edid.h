#pragma once

#include <QByteArray>
#include <QString>
#include <QtGlobal>
#include <optional>

namespace tarnwick {

/// What of a monitor's identification block distinguishes it from other monitors.
struct Edid {
  QString maker;        ///< Three capital letters.
  quint16 product = 0;  ///< The maker's number for the model.
  QString serial;       ///< The serial text if there is one, else the serial number in decimal; empty if neither.
  QString model;        ///< The model's name for a person; may be empty.

  /// Reads the first block of an EDID. Nothing if it is too short, damaged or names no maker.
  static std::optional<Edid> parse(const QByteArray& bytes);

  bool operator==(const Edid&) const = default;
};

}  // namespace tarnwick
