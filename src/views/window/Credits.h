#pragma once

#include <QList>
#include <QString>

namespace tarnwick {

/// Something that the program is built on.
struct Credit {
  QString name;
  QString version;  ///< Of the one that this run uses; empty where it does not say.
  QString licence;  ///< As licences are named everywhere.

  /// The name, with the version behind it.
  QString words() const { return version.isEmpty() ? name : name + u' ' + version; }
};

/// In the order in which they are shown. Neither names nor licences are translated.
QList<Credit> allCredits();

}  // namespace tarnwick
