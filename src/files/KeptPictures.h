#pragma once

#include <QString>

namespace tarnwick {

/// Pictures that the user gave the program. They are copied into its data folder, so that one outlives the file that it
/// was made from; each is stored there once, under the digest of its bytes. Reads and writes files: not for the main
/// thread.
struct KeptPictures {
  /// Takes a copy whose longer side has at most `side` pixels, and gives its name. Throws DomainError.
  static QString keep(const QString& picture, const QString& dataFolder, int side);

  /// The file of a name, there or not; empty for what is no name. Touches no file.
  static QString file(const QString& dataFolder, const QString& name);
};

}  // namespace tarnwick
