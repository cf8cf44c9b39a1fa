#include "app/FixtureConfig.h"

#include <cstdio>

#include "base/DomainError.h"
#include "config/Persistence.h"

namespace tarnwick {

int writeFixtureConfig(const QString& path) {
  DockConfiguration config;
  config.onboardingComplete = true;
  config.liveApps = true;
  config.layout = DockLayout::Fixed;
  config.position = QStringLiteral("bottom");
  config.alignment = QStringLiteral("left");
  try {
    Persistence::save(config, path);
    return 0;
  } catch (const DomainError& failure) {
    std::fprintf(stderr, "could not write %s: %s\n", qUtf8Printable(path), qUtf8Printable(failure.message()));
    return 1;
  }
}

}  // namespace tarnwick
