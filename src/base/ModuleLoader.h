#pragma once

#include <QObject>
#include <QString>

namespace tarnwick {

/// Finds and loads parts of the program that are in files of their own and are loaded or started when first needed:
/// modules with heavy libraries, helper programs. They lie beside the executable where it was built, and in
/// ../lib/tarnwick where it was installed.
struct ModuleLoader {
  /// Absolute; empty where the part is missing.
  static QString find(const QString& fileName);

  /// A function of a module ("tarnwick-docks.so"), which is loaded once and stays. Null with a line on standard error
  /// where the module is missing or cannot be loaded.
  static QFunctionPointer function(const QString& module, const char* name);
};

}  // namespace tarnwick
