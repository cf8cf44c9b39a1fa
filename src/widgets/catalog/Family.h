#pragma once

#include <QString>

namespace tarnwick {

/// What many kinds of widgets have in common. WidgetDefinition::family holds the text of one; compare it with these:
/// `Catalog::find(kind).family == Family::Timer`.
enum class Family {
  Clock,
  Calendar,
  Progress,
  Reminders,
  Timer,
  Todos,
  NativeNotes,
  Notes,
  Contacts,
  Water,
  Habit,
  Metric,
  Windows,
  Apps,
  Launcher,
  Files,
  Bookmarks,
  Search,
  Clipboard,
  Calculator,
  Converter,
  Color,
  Emoji,
  Screenshot,
  Voice,
  Toggles,
  Sounds,
  KeyboardCleaner,
  AccessoryBattery,
  Temperature,
  Audio,
  Music,
  Photos,
  Wallpaper,
  Airdrop,
  Workflow,
  Weather,
  Integration,
  Mail,
  Separator,
  Space,
  Processes,
  AppVolume,
  Studio,
};

constexpr QLatin1StringView familyText(Family family) {
  switch (family) {
    case Family::Clock:
      return QLatin1StringView("clock");
    case Family::Calendar:
      return QLatin1StringView("calendar");
    case Family::Progress:
      return QLatin1StringView("progress");
    case Family::Reminders:
      return QLatin1StringView("reminders");
    case Family::Timer:
      return QLatin1StringView("timer");
    case Family::Todos:
      return QLatin1StringView("todos");
    case Family::NativeNotes:
      return QLatin1StringView("nativeNotes");
    case Family::Notes:
      return QLatin1StringView("notes");
    case Family::Contacts:
      return QLatin1StringView("contacts");
    case Family::Water:
      return QLatin1StringView("water");
    case Family::Habit:
      return QLatin1StringView("habit");
    case Family::Metric:
      return QLatin1StringView("metric");
    case Family::Windows:
      return QLatin1StringView("windows");
    case Family::Apps:
      return QLatin1StringView("apps");
    case Family::Launcher:
      return QLatin1StringView("launcher");
    case Family::Files:
      return QLatin1StringView("files");
    case Family::Bookmarks:
      return QLatin1StringView("bookmarks");
    case Family::Search:
      return QLatin1StringView("search");
    case Family::Clipboard:
      return QLatin1StringView("clipboard");
    case Family::Calculator:
      return QLatin1StringView("calculator");
    case Family::Converter:
      return QLatin1StringView("converter");
    case Family::Color:
      return QLatin1StringView("color");
    case Family::Emoji:
      return QLatin1StringView("emoji");
    case Family::Screenshot:
      return QLatin1StringView("screenshot");
    case Family::Voice:
      return QLatin1StringView("voice");
    case Family::Toggles:
      return QLatin1StringView("toggles");
    case Family::Sounds:
      return QLatin1StringView("sounds");
    case Family::KeyboardCleaner:
      return QLatin1StringView("keyboardCleaner");
    case Family::AccessoryBattery:
      return QLatin1StringView("accessoryBattery");
    case Family::Temperature:
      return QLatin1StringView("temperature");
    case Family::Audio:
      return QLatin1StringView("audio");
    case Family::Music:
      return QLatin1StringView("music");
    case Family::Photos:
      return QLatin1StringView("photos");
    case Family::Wallpaper:
      return QLatin1StringView("wallpaper");
    case Family::Airdrop:
      return QLatin1StringView("airdrop");
    case Family::Workflow:
      return QLatin1StringView("workflow");
    case Family::Weather:
      return QLatin1StringView("weather");
    case Family::Integration:
      return QLatin1StringView("integration");
    case Family::Mail:
      return QLatin1StringView("mail");
    case Family::Separator:
      return QLatin1StringView("separator");
    case Family::Space:
      return QLatin1StringView("space");
    case Family::Processes:
      return QLatin1StringView("processes");
    case Family::AppVolume:
      return QLatin1StringView("appVolume");
    case Family::Studio:
      return QLatin1StringView("studio");
  }
  return {};
}

inline bool operator==(const QString& text, Family family) { return text == familyText(family); }

}  // namespace tarnwick
