#include "widgets/ToggleChoice.h"

#include <QStringList>
#include <algorithm>
#include <array>

#include "widgets/TileWords.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

namespace {

struct Row {
  Toggle toggle;
  const char* id;
  const char* name;
  const char* symbol;
};

constexpr std::array kChoices = {
    Row{Toggle::WiFi, "wifi", QT_TRANSLATE_NOOP("Tiles", "Wi-Fi"), "wifi"},
    Row{Toggle::Bluetooth, "bluetooth", QT_TRANSLATE_NOOP("Tiles", "Bluetooth"), "bluetooth"},
    Row{Toggle::DarkMode, "darkMode", QT_TRANSLATE_NOOP("Tiles", "Dark Mode"), "moon"},
    Row{Toggle::DoNotDisturb, "doNotDisturb", QT_TRANSLATE_NOOP("Tiles", "Do Not Disturb"), "bell.slash"},
    Row{Toggle::Mute, "mute", QT_TRANSLATE_NOOP("Tiles", "Mute"), "speaker.slash"},
    Row{Toggle::KeepAwake, "keepAwake", QT_TRANSLATE_NOOP("Tiles", "Keep Awake"), "cup.and.saucer"},
};

const Row& rowOf(Toggle toggle) { return *std::ranges::find(kChoices, toggle, &Row::toggle); }

}  // namespace

const QList<Toggle>& ToggleChoice::all() {
  static const QList<Toggle> toggles = [] {
    QList<Toggle> list;
    for (const Row& row : kChoices) list.append(row.toggle);
    return list;
  }();
  return toggles;
}

QString ToggleChoice::name(Toggle toggle) { return TileWords::tr(rowOf(toggle).name); }

QString ToggleChoice::symbol(Toggle toggle) { return QString::fromLatin1(rowOf(toggle).symbol); }

QLatin1StringView ToggleChoice::key() { return option::toggles; }

QString ToggleChoice::text(const QList<Toggle>& toggles) {
  QStringList ids;
  for (const Toggle toggle : toggles) ids.append(QString::fromLatin1(rowOf(toggle).id));
  return ids.join(u',');
}

QList<Toggle> ToggleChoice::of(const QString& text) {
  QList<Toggle> chosen;
  for (const QString& id : text.split(u',', Qt::SkipEmptyParts)) {
    const auto row =
        std::ranges::find_if(kChoices, [&id](const Row& each) { return id == QLatin1StringView(each.id); });
    if (row != kChoices.end() && !chosen.contains(row->toggle) && chosen.size() < kShown) chosen.append(row->toggle);
  }
  if (chosen.isEmpty()) return {Toggle::WiFi, Toggle::DarkMode, Toggle::DoNotDisturb, Toggle::KeepAwake};
  return chosen;
}

}  // namespace tarnwick
