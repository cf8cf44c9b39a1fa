#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include "config/DockConfiguration.h"

namespace tarnwick {

/// A settings file that was kept aside because some of its widgets cannot be used, while all else in it can: widgets
/// that are damaged, or of a kind that this version does not know.
struct KeptSettings {
  QString file;         ///< By its absolute path.
  QStringList leftOut;  ///< What each widget is called that cannot be used.

  explicit operator bool() const { return !leftOut.isEmpty(); }

  struct Decoded {
    DockConfiguration configuration;
    QStringList leftOut;
  };
  /// Decodes and validates a document without the widgets that cannot be used. Throws DomainError where what remains
  /// cannot be used either.
  static Decoded decode(const QByteArray& json);
  /// The same of a file that was kept, with what was entered before that and not saved: the part of it that was kept
  /// under the same number.
  static DockConfiguration read(const QString& file);
};

}  // namespace tarnwick
