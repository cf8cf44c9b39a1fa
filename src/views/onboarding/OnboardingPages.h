#pragma once

#include <QWidget>

#include "config/DockLayout.h"
#include "views/onboarding/OnboardingWindow.h"

class QVBoxLayout;

namespace tarnwick {

class AppStore;
struct DockConfiguration;

/// What a new user's choice of a layout means: a dock that is always there keeps its place free of maximised windows.
void chooseLayout(DockConfiguration& config, DockLayout layout);

/// The pages of the first run, in their order. Each is a column below the program's picture, a heading and a sentence.
QWidget* makeWelcomePage();
QWidget* makeLayoutPage(AppStore& store, const WindowServices& services);
QWidget* makeDesktopPage(AppStore& store, const WindowServices& services);
QWidget* makeDonePage(AppStore& store, const WindowServices& services);

}  // namespace tarnwick
