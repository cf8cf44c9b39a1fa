#include "views/settings/SettingsIndex.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "base/Text.h"
#include "views/controls/Switch.h"
#include "views/settings/SettingsPage.h"
#include "views/settings/SettingsSections.h"
#include "views/settings/SettingsWords.h"

namespace tarnwick {

namespace {

using namespace Qt::StringLiterals;

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

/// The section and, where it is not the section itself, the label of a row in it.
std::pair<QString, QString> partsOf(const QString& id) {
  const qsizetype slash = id.indexOf(u'/');
  return {id.first(slash < 0 ? id.size() : slash), slash < 0 ? QString() : id.sliced(slash + 1)};
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
    place.isSwitch = row->findChild<Switch*>() != nullptr;
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
  const auto [name, label] = partsOf(id);
  const SettingsSection* section = settingsSection(name);
  if (!section) return;
  if (!label.isEmpty()) {
    const std::unique_ptr<SettingsPage> page(section->make(store_, services_));
    const auto before = services_.edits.stack().latest();
    if (const auto isOn = page->turnSwitch(label)) {
      if (services_.edits.stack().latest() != before) sayTurned(label, *isOn);
      // What a switch needs beside it, its section says.
      if (name != "clipboard"_L1) return;
    }
  }
  show(id);
}

/// Nobody sees the switch.
void SettingsIndex::sayTurned(const QString& label, bool isOn) {
  const quint64 change = services_.edits.stack().latest()->id;
  const QString sentence = isOn ? SettingsWords::tr("“%1” is on.") : SettingsWords::tr("“%1” is off.");
  services_.commands.offerUndo({}, sentence.arg(label), [&edits = services_.edits, change] { edits.takeBack(change); },
                               {});
}

void SettingsIndex::show(const QString& id) {
  const auto [name, label] = partsOf(id);
  if (settingsSection(name)) show_(name, label);
}

}  // namespace tarnwick
