#pragma once

#include <QStringList>

namespace tarnwick {

/// With this argument the test program is no test but the mode, for the process that a test looks at.
inline constexpr auto kDiagnoseChild = QLatin1StringView("--network-diagnose");

/// `arguments`: the port of the server, the file with its authority, and the seconds that it may take.
int diagnoseAsChild(const QStringList& arguments);

}  // namespace tarnwick
