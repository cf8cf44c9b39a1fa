#pragma once

#include <QString>

namespace tarnwick {

/// The identity of a folder of settings: the file `store-id` in it, made once. Several folders may share one keyring,
/// and by this each knows the items that are its own. Both may wait for the disk.
struct StoreIdentity {
  /// Empty where there is none yet. Throws DomainError where there is one that cannot be read.
  static QString read(const QString& folder);
  /// The same, made where there is none; what is none is set aside. Throws DomainError where it cannot be kept either.
  static QString readOrMake(const QString& folder);
};

}  // namespace tarnwick
