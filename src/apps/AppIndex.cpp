#include "apps/AppIndex.h"

#include <QCollator>
#include <algorithm>

#include "apps/DesktopExec.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

void sortByName(QList<DesktopEntry>& entries) {
  QCollator collator;
  collator.setCaseSensitivity(Qt::CaseInsensitive);
  collator.setNumericMode(true);
  std::sort(entries.begin(), entries.end(), [&](const DesktopEntry& left, const DesktopEntry& right) {
    const int order = collator.compare(left.name, right.name);
    return order != 0 ? order < 0 : left.id < right.id;
  });
}

}  // namespace

AppIndex::AppIndex(const AppEnvironment& environment, QList<DesktopEntry> applications,
                   QHash<QString, DesktopEntry> others, MimeDefaults defaults)
    : environment_(environment),
      applications_(std::move(applications)),
      others_(std::move(others)),
      defaults_(std::move(defaults)) {
  sortByName(applications_);
  for (int place = 0; place < applications_.size(); ++place) {
    const DesktopEntry& entry = applications_.at(place);
    byId_.insert(entry.id, place);
    byPath_.insert(entry.path, place);
    enter(Key::Id, entry.id, place);
    if (entry.id.contains(u'.')) enter(Key::LastComponent, entry.id.section(u'.', -1), place);
    enter(Key::WindowClass, entry.startupWmClass, place);
    enter(Key::Sandbox, entry.flatpakId, place);
    enter(Key::Sandbox, entry.snapInstanceName, place);
    // A program in a terminal never owns the window that it is seen in.
    if (!entry.terminal) enter(Key::Executable, DesktopExec::executableName(entry.exec), place);
  }
}

void AppIndex::enter(Key key, const QString& value, int place) {
  if (!value.isEmpty()) places_[{static_cast<int>(key), value.toLower()}] << place;
}

const DesktopEntry* AppIndex::byId(const QString& id) const {
  const int place = byId_.value(id.endsWith(".desktop"_L1) ? id.chopped(8) : id, -1);
  return place < 0 ? nullptr : &applications_.at(place);
}

const DesktopEntry* AppIndex::byPath(const QString& path) const {
  if (const int place = byPath_.value(path, -1); place >= 0) return &applications_.at(place);
  if (const QString id = environment_.desktopIdOf(path); !id.isEmpty()) return byId(id);
  const auto other = others_.constFind(path);
  return other == others_.constEnd() ? nullptr : &*other;
}

QList<const DesktopEntry*> AppIndex::find(Key key, const QString& value) const {
  QList<const DesktopEntry*> result;
  if (value.isEmpty()) return result;
  for (const int place : places_.value({static_cast<int>(key), value.toLower()})) result << &applications_.at(place);
  return result;
}

bool AppIndex::isVisible(const DesktopEntry& entry) const {
  return entry.type == DesktopEntry::Type::Application && !entry.hidden && !entry.noDisplay &&
         entry.shownIn(environment_.desktops);
}

bool AppIndex::operator==(const AppIndex& other) const {
  return applications_ == other.applications_ && others_ == other.others_ && defaults_ == other.defaults_;
}

}  // namespace tarnwick
