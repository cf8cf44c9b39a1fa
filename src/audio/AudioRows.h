#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <functional>
#include <optional>

#include "audio/ports/AudioHardware.h"

namespace tarnwick {

/// What has one volume: an application with all that it plays, or a program that belongs to none.
struct AudioProcessEntry {
  quint32 id = 0;  ///< Never another one's.
  qint64 pid = 0;  ///< Of the first of its programs; 0 where nobody tells.
  QString name;

  bool operator==(const AudioProcessEntry&) const = default;
};

/// Puts the programs that play together into entries. Belongs to the thread of the hardware.
class AudioRows {
 public:
  static constexpr qsizetype kMostBytes = 999'999;  ///< Of a list of programs.

  struct App {
    QString id;    ///< Of its desktop entry.
    QString name;  ///< As people know it.
  };
  /// The installed application that a program belongs to. Any thread.
  using AppOf = std::function<std::optional<App>(const AudioHardware::Program& program)>;
  /// When a process began, in hundredths of a second since 1970; absent where there is none. Any thread.
  using LaunchOf = std::function<std::optional<qint64>(qint64 pid)>;

  struct Row {
    AudioProcessEntry entry;
    QList<quint32> programs;
    QList<qint64> pids;
    bool isPlaying = false;
  };

  /// `self` is the process that is never listed. The hardware must outlive it.
  AudioRows(AudioHardware& hardware, AppOf appOf, LaunchOf launchOf, qint64 self);

  /// What is there now, in the order of the programs. Throws DomainError, in which `operation` is named.
  QList<Row> read(const char* operation);
  /// One of these; absent where no program of it is there any more.
  std::optional<Row> row(quint32 id, const char* operation);

  std::optional<qint64> launch(qint64 pid) const { return pid > 0 ? launchOf_(pid) : std::nullopt; }

 private:
  /// What a program counts to.
  struct Owner {
    QString key;
    QString name;
  };

  Owner owner(quint32 id, const AudioHardware::Program& program) const;

  AudioHardware& hardware_;
  AppOf appOf_;
  LaunchOf launchOf_;
  qint64 self_;
  QHash<quint32, Owner> owners_;  ///< By program, as long as it is there.
  QHash<QString, quint32> ids_;   ///< By key, as long as one of its programs is there.
  quint32 lastId_ = 0;
};

}  // namespace tarnwick
