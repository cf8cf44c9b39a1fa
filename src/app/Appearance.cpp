#include "app/Appearance.h"

#include <QApplication>

#include "desktop/ContrastPreference.h"
#include "desktop/Toggles.h"
#include "store/AppStore.h"
#include "views/theme/DesktopLook.h"
#include "views/theme/WindowPalette.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kSwitchesAnswer = 0.5;  ///< Seconds.

}  // namespace

Appearance::Appearance(AppStore& store, const Toggles& toggles, const ContrastPreference& contrast)
    : store_(store), toggles_(toggles), contrast_(contrast) {
  connect(&toggles, &Toggles::changed, this, &Appearance::switchesChanged);
  connect(&contrast, &ContrastPreference::changed, this, &Appearance::apply);
  connect(&store, &AppStore::layoutChanged, this, &Appearance::apply);
}

void Appearance::stop() {
  switchesAnswer_.reset();
  toggles_.disconnect(this);
  contrast_.disconnect(this);
}

void Appearance::switchesChanged() {
  if (!switchesAnswered_ && !switchesAnswer_)
    switchesAnswer_ = store_.scheduler().after(kSwitchesAnswer, [this] {
      switchesAnswered_ = true;
      apply();
    });
  apply();
}

void Appearance::applyLook() {
  const QString& contrast = store_.config().desk().contrast;
  const bool wanted = contrast != "off"_L1 && contrast_.wantsHighContrast();
  DesktopLook look = DesktopLook::now();
  look.highContrast = contrast == "on"_L1 || wanted;
  // Each switch answers by itself, and until this one has it reads as off.
  const bool dark = toggles_.state(Toggle::DarkMode).on;
  if (dark || switchesAnswered_) look.dark = dark;
  if (look == DesktopLook::now()) return;
  const bool isOtherContrast = look.highContrast != DesktopLook::now().highContrast;
  DesktopLook::set(look);
  if (isOtherContrast) isDark_.reset();
  Q_EMIT lookChanged();
}

void Appearance::apply() {
  applyLook();
  // Panels follow the dock's style; menus and windows follow this.
  const QString& wanted = store_.config().appAppearance;
  const ToggleState desktop = toggles_.state(Toggle::DarkMode);
  const bool dark = wanted == "dark"_L1 || (wanted != "light"_L1 && desktop.on);
  if (isDark_ == dark) return;
  isDark_ = dark;
  QApplication::setPalette(windowPalette(dark));
}

}  // namespace tarnwick
