#include "store/DocumentEdits.h"

#include <QCoreApplication>
#include <algorithm>

#include "base/UuidText.h"

namespace tarnwick {
namespace {

struct DocumentEditsWords {
  Q_DECLARE_TR_FUNCTIONS(Profiles)
};

struct Place {
  qsizetype profile;
  qsizetype widget;
};

std::optional<Place> placeOf(const DockConfiguration& config, const QUuid& id) {
  for (qsizetype p = 0; p < config.profiles.size(); ++p) {
    const auto& widgets = config.profiles[p].widgets;
    for (qsizetype w = 0; w < widgets.size(); ++w) {
      if (widgets[w].id == id) return Place{p, w};
    }
  }
  return std::nullopt;
}

std::optional<qsizetype> pinnedIndex(const DockConfiguration& config, const QString& display) {
  const auto pin = config.desktop.displayProfiles.constFind(display);
  if (pin == config.desktop.displayProfiles.constEnd()) return std::nullopt;
  const auto wanted = UuidText::read(*pin);
  for (qsizetype i = 0; wanted && i < config.profiles.size(); ++i) {
    if (config.profiles[i].id == *wanted) return i;
  }
  return std::nullopt;
}

}  // namespace

const DockWidget* DocumentEdits::find(const DockConfiguration& config, const QUuid& id) {
  const auto place = placeOf(config, id);
  return place ? &config.profiles[place->profile].widgets[place->widget] : nullptr;
}

DockWidget* DocumentEdits::find(DockConfiguration& config, const QUuid& id) {
  const auto place = placeOf(config, id);
  return place ? &config.profiles[place->profile].widgets[place->widget] : nullptr;
}

bool DocumentEdits::setOption(DockConfiguration& config, const QUuid& id, const QString& key,
                              const std::optional<QString>& value) {
  const DockWidget* stored = find(std::as_const(config), id);
  if (!stored) return false;
  const auto old = stored->options.constFind(key);
  const bool present = old != stored->options.constEnd();
  if (value ? present && *old == *value : !present) return false;
  DockWidget* widget = find(config, id);
  if (value) {
    widget->options.insert(key, *value);
  } else {
    widget->options.remove(key);
  }
  return true;
}

bool DocumentEdits::update(DockConfiguration& config, const DockWidget& widget) {
  DockWidget* stored = find(config, widget.id);
  if (!stored || *stored == widget) return false;
  *stored = widget;
  return true;
}

bool DocumentEdits::remove(DockConfiguration& config, const QUuid& id) {
  const auto place = placeOf(config, id);
  if (!place) return false;
  config.profiles[place->profile].widgets.removeAt(place->widget);
  return true;
}

bool DocumentEdits::move(DockConfiguration& config, const QUuid& id, int places) {
  const auto place = placeOf(config, id);
  if (!place) return false;
  auto& widgets = config.profiles[place->profile].widgets;
  const qsizetype to = std::clamp<qsizetype>(place->widget + places, 0, widgets.size() - 1);
  if (to == place->widget) return false;
  widgets.move(place->widget, to);
  return true;
}

bool DocumentEdits::arrange(DockConfiguration& config, qsizetype profile, const QList<QUuid>& order) {
  if (profile < 0 || profile >= config.profiles.size()) return false;
  const QList<DockWidget> before = config.profiles[profile].widgets;

  // A widget that is not displayed travels behind the displayed one that it followed; those in front of all stay there.
  QList<DockWidget> after;
  QHash<QUuid, QList<DockWidget>> followers;
  QUuid leader;
  for (const DockWidget& widget : before) {
    if (order.contains(widget.id)) {
      leader = widget.id;
      followers[leader].prepend(widget);
    } else if (leader.isNull()) {
      after.append(widget);
    } else {
      followers[leader].append(widget);
    }
  }
  for (const QUuid& id : order) after.append(followers.value(id));
  if (after.size() != before.size() || after == before) return false;
  config.profiles[profile].widgets = after;
  return true;
}

bool DocumentEdits::newProfile(DockConfiguration& config, const QString& name, bool duplicate) {
  if (config.profiles.size() >= DockConfiguration::kMostProfiles) return false;
  DockProfile profile;
  profile.id = QUuid::createUuid();
  profile.name = name.trimmed().isEmpty() ? DocumentEditsWords::tr("New Profile") : name;
  if (duplicate) {
    profile.widgets = config.profiles[config.activeIndex()].widgets;
    for (DockWidget& widget : profile.widgets) widget.id = QUuid::createUuid();
  }
  config.activeProfileID = profile.id;
  config.profiles.append(profile);
  return true;
}

bool DocumentEdits::deleteProfile(DockConfiguration& config, const QUuid& id) {
  if (config.profiles.size() < 2) return false;
  const auto doomed = std::ranges::find(config.profiles, id, &DockProfile::id);
  if (doomed == config.profiles.end()) return false;

  const qsizetype index = doomed - config.profiles.begin();
  const bool wasActive = config.activeIndex() == index;
  config.profiles.removeAt(index);
  if (wasActive) config.activeProfileID = config.profiles[std::min(index, config.profiles.size() - 1)].id;
  config.desktop.profileRules.removeIf([&](const ProfileRule& rule) { return rule.profileID == id; });
  config.desktop.displayProfiles.removeIf([&](auto pin) { return UuidText::read(pin.value()) == id; });
  return true;
}

qsizetype DocumentEdits::profileIndex(const DockConfiguration& config, const QString& display) {
  return pinnedIndex(config, display).value_or(config.activeIndex());
}

bool DocumentEdits::isPinned(const DockConfiguration& config, const QString& display) {
  return pinnedIndex(config, display).has_value();
}

bool DocumentEdits::pin(DockConfiguration& config, const QString& display, const std::optional<QUuid>& profile) {
  QMap<QString, QString> pins = config.desktop.displayProfiles;
  if (profile) {
    pins.insert(display, UuidText::write(*profile));
  } else {
    pins.remove(display);
  }
  if (pins == config.desktop.displayProfiles) return false;
  config.desktop.displayProfiles = pins;
  return true;
}

bool DocumentEdits::addTodo(DockConfiguration& config, const QString& text) {
  const QString trimmed = text.trimmed();
  if (trimmed.isEmpty()) return false;
  TodoItem item;
  item.id = QUuid::createUuid();
  item.text = trimmed;
  config.todos.append(item);
  return true;
}

bool DocumentEdits::toggleTodo(DockConfiguration& config, const QUuid& id) {
  const auto item = std::ranges::find(config.todos, id, &TodoItem::id);
  if (item == config.todos.end()) return false;
  item->completed = !item->completed;
  return true;
}

}  // namespace tarnwick
