#pragma once

#include <QWidget>

#include "views/onboarding/OnboardingWindow.h"

class QVBoxLayout;

namespace tarnwick {

class AppStore;

/// The pages of the first run, in their order. Each is a column below the program's picture, a heading and a sentence.
QWidget* makeWelcomePage();
QWidget* makeLayoutPage(AppStore& store, const OnboardingServices& services);
QWidget* makeDesktopPage(AppStore& store, const OnboardingServices& services);
QWidget* makeDonePage(AppStore& store, const OnboardingServices& services);

}  // namespace tarnwick
