#pragma once

#include <QCoreApplication>

namespace tarnwick {

/// What is said of services on the net.
struct ServiceWords {
  Q_DECLARE_TR_FUNCTIONS(Services)

 public:
  static QString noKeyring() {
    return tr("No keyring runs on this desktop. Install GNOME Keyring, KWallet or KeePassXC to keep credentials.");
  }
};

}  // namespace tarnwick
