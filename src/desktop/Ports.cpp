// The ports have no code of their own; this file gives their meta-objects a home.
#include "desktop/ClientWindows.h"
#include "desktop/HotKeys.h"
#include "desktop/Panels.h"
#include "desktop/Screens.h"
#include "desktop/SessionEvents.h"
#include "desktop/Toggles.h"
