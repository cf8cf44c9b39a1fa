#pragma once

#include <functional>

#include "config/DockConfiguration.h"

namespace tarnwick {

/// One place in the settings document: how it is read and how it is changed.
template <class T>
struct SettingField {
  std::function<T(const DockConfiguration& config)> read;
  std::function<void(DockConfiguration& config, const T& value)> write;
};

template <class T>
SettingField<T> settingField(T DockConfiguration::*field) {
  return {[field](const DockConfiguration& config) { return config.*field; },
          [field](DockConfiguration& config, const T& value) { config.*field = value; }};
}

template <class T>
SettingField<T> settingField(T DesktopOptions::*field) {
  return {[field](const DockConfiguration& config) { return config.desktopOptions().*field; },
          [field](DockConfiguration& config, const T& value) { config.desktop.*field = value; }};
}

template <class T>
SettingField<T> settingField(T DeskOptions::*field) {
  return {[field](const DockConfiguration& config) { return config.desk().*field; },
          [field](DockConfiguration& config, const T& value) {
            DeskOptions desk = config.desk();
            desk.*field = value;
            config.setDesk(desk);
          }};
}

}  // namespace tarnwick
