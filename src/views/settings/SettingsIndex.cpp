#include "views/settings/SettingsIndex.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "base/Text.h"
#include "views/settings/SettingsPage.h"
#include "views/settings/SettingsSections.h"
#include "views/settings/SettingsWords.h"

namespace tarnwick {

namespace {

/// The words of a text, each behind a blank.
QString wordsIn(const QString& text) {
  QString words = Text::folded(text);
  for (QChar& character : words)
    if (!character.isLetterOrNumber() && !character.isSurrogate() && !character.isMark()) character = u' ';
  return u' ' + words.simplified();
}

/// Whether a row has something that can be set or pressed.
bool hasControl(const FormRow& row) {
  const QList<QWidget*> parts = row.findChildren<QWidget*>();
  return std::ranges::any_of(parts, [](const QWidget* part) { return (part->focusPolicy() & Qt::TabFocus) != 0; });
}

bool beginsEach(const QString& text, const QStringList& wanted) {
  return std::ranges::all_of(wanted, [&](const QString& word) { return text.contains(u' ' + word); });
}

}  // namespace

SettingsIndex::SettingsIndex(AppStore& store, SettingsServices services, ShowSection show, QObject* parent)
    : SettingsPlaces(parent), store_(store), services_(std::move(services)), show_(std::move(show)) {
  // A timer, not one event that posts the next: those would all be done before a key or a frame.
  connect(&idle_, &QTimer::timeout, this, &SettingsIndex::readNext);
}

SettingsIndex::~SettingsIndex() = default;

void SettingsIndex::prepare() {
  if (sectionsRead_ == 0 && !idle_.isActive()) idle_.start(0);
}

void SettingsIndex::readNext() {
  const auto sections = settingsSections();
  read(sections[sectionsRead_++]);
  if (sectionsRead_ < sections.size()) return;
  idle_.stop();
  Q_EMIT changed();
}

void SettingsIndex::add(const SettingsPlace& place, const QString& said) {
  const bool isKnown = std::ranges::any_of(entries_, [&](const Entry& entry) { return entry.place.id == place.id; });
  if (!isKnown) entries_.push_back({place, wordsIn(place.title), wordsIn(place.title + u' ' + said)});
}

void SettingsIndex::read(const SettingsSection& section) {
  const std::unique_ptr<SettingsPage> page(section.make(store_, services_));
  const QString name = QString::fromLatin1(section.id);
  SettingsPlace place{name, settingsText(section.title), SettingsWords::tr("Settings"),
                      QString::fromLatin1(section.symbol)};
  add(place, {});
  place.page = place.title;
  for (const FormRow* row : page->formRows()) {
    if (!hasControl(*row)) continue;
    place.id = name + u'/' + row->label();
    place.title = row->label();
    add(place, row->said());
  }
}

QList<SettingsPlace> SettingsIndex::find(const QString& words, qsizetype most) {
  prepare();
  const QStringList wanted = wordsIn(words).split(u' ', Qt::SkipEmptyParts);
  QList<SettingsPlace> found;
  if (wanted.isEmpty() || sectionsRead_ < settingsSections().size()) return found;
  for (const bool byTitle : {true, false})
    for (const Entry& entry : entries_)
      if (found.size() < most && beginsEach(entry.title, wanted) == byTitle && beginsEach(entry.said, wanted))
        found << entry.place;
  return found;
}

void SettingsIndex::open(const QString& id) {
  const qsizetype slash = id.indexOf(u'/');
  const QString name = slash < 0 ? id : id.first(slash);
  const SettingsSection* section = settingsSection(name);
  if (!section) return;
  if (slash >= 0) {
    const std::unique_ptr<SettingsPage> page(section->make(store_, services_));
    if (page->turnSwitch(id.sliced(slash + 1))) return;
  }
  show_(name);
}

}  // namespace tarnwick
