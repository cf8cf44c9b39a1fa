#include "audio/AudioRows.h"

#include <QCoreApplication>
#include <algorithm>

#include "audio/AppAudioFormat.h"
#include "base/DomainError.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

struct RowWords {
  Q_DECLARE_TR_FUNCTIONS(ApplicationAudio)
};

}  // namespace

AudioRows::AudioRows(AudioHardware& hardware, AppOf appOf, LaunchOf launchOf, qint64 self)
    : hardware_(hardware), appOf_(std::move(appOf)), launchOf_(std::move(launchOf)), self_(self) {}

QList<AudioRows::Row> AudioRows::read(const char* operation) {
  const auto ids = AppAudioHardware::read(hardware_.programs(), operation);
  if (ids.size() * static_cast<qsizetype>(sizeof(quint32)) > kMostBytes)
    throw DomainError::invalid(RowWords::tr("Audio process inventory exceeded its limit."));
  QList<Row> rows;
  QHash<quint32, Owner> owners;
  QHash<QString, quint32> known;
  for (const quint32 id : ids) {
    const auto [status, program] = hardware_.program(id);
    if (status != 0 || program.pid == self_) continue;
    const auto before = owners_.constFind(id);
    const Owner owned = before == owners_.cend() ? owner(id, program) : *before;
    owners.insert(id, owned);
    if (!known.contains(owned.key)) {
      const auto sameId = ids_.constFind(owned.key);
      known.insert(owned.key, sameId == ids_.cend() ? ++lastId_ : *sameId);
      rows.append({{known[owned.key], program.pid, owned.name}, {}, {}, false});
    }
    const auto row = std::ranges::find(rows, known[owned.key], [](const Row& each) { return each.entry.id; });
    row->programs.append(id);
    row->pids.append(program.pid);
    row->isPlaying = row->isPlaying || program.isPlaying;
  }
  owners_ = std::move(owners);
  ids_ = std::move(known);
  return rows;
}

std::optional<AudioRows::Row> AudioRows::row(quint32 id, const char* operation) {
  for (const Row& each : read(operation))
    if (each.entry.id == id) return each;
  return std::nullopt;
}

/// A confined application is known for certain, others by their process; what has none is an entry by itself.
AudioRows::Owner AudioRows::owner(quint32 id, const AudioHardware::Program& program) const {
  const auto app = appOf_(program);
  QString name = app ? app->name : program.name;
  if (name.isEmpty()) name = program.portal;
  if (name.isEmpty()) name = RowWords::tr("Audio process");
  if (!program.portal.isEmpty()) return {u"app:"_s + program.portal, name};
  if (app) return {u"app:"_s + app->id, name};
  if (program.pid <= 0) return {u"program:%1"_s.arg(id), name};
  return {u"process:%1:%2"_s.arg(program.pid).arg(launch(program.pid).value_or(0)), name};
}

}  // namespace tarnwick
