#include "widgets/QuickNotes.h"

#include <algorithm>
#include <functional>

#include "config/DockConfiguration.h"
#include "widgets/catalog/KindTraits.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

namespace {

constexpr qsizetype kMostShown = 300;

}  // namespace

QString QuickNotes::shortened(const QString& text) { return text.left(kMostShown); }

NoteReading QuickNotes::reading(const QString& text) {
  const QString trimmed = text.trimmed();
  const qsizetype end = trimmed.indexOf(u'\n');
  return {shortened(trimmed.left(end).simplified()), end < 0 ? QString() : shortened(trimmed.sliced(end)).simplified()};
}

QList<DockWidget> QuickNotes::byAge(const DockConfiguration& config) {
  QList<DockWidget> notes;
  for (const DockProfile& profile : config.profiles)
    for (const DockWidget& widget : profile.widgets)
      if (KindTraits::of(widget.kind).isQuickNote && !widget.options.value(option::text).trimmed().isEmpty())
        notes.append(widget);
  const auto edited = [](const DockWidget& note) { return note.number(option::edited, 0); };
  std::ranges::stable_sort(notes, std::greater(), edited);
  return notes;
}

}  // namespace tarnwick
