#pragma once

#include <QDateTime>
#include <QHash>
#include <QList>
#include <QLocale>
#include <QMap>
#include <QString>
#include <memory>
#include <optional>

#include "calendar/CalendarDigest.h"
#include "config/TodoItem.h"
#include "desktop/Toggles.h"
#include "services/RemoteReading.h"
#include "system/MetricsSnapshot.h"
#include "views/tiles/AppMarks.h"
#include "views/tiles/ReadingFacts.h"
#include "views/tiles/WidgetValues.h"
#include "widgets/QuickNotes.h"

namespace tarnwick {

/// Everything that a tile may show, as plain values taken at one moment.
struct TileSources {
  QDateTime now;  ///< In the user's zone.
  QLocale locale;
  bool use24Hour = true;
  std::optional<MetricsSnapshot> metrics;  ///< Absent until the machine was read once.
  QList<double> cpuHistory;                ///< Percent, oldest first.
  QList<double> memoryHistory;
  QList<double> networkHistory;  ///< Bytes per second, like the next two.
  QList<double> downloadHistory;
  QList<double> uploadHistory;
  QMap<Toggle, ToggleState> toggles;
  QHash<QString, ApplicationFacts> applications;  ///< By the path of the desktop entry, as widgets name them.
  QList<RunningFacts> running;                    ///< For tiles that show several.
  qint64 shelfItems = 0;
  bool keepsClipboard = false;                     ///< Whether the user wants a history of what is copied.
  std::optional<qint64> trashItems;                ///< Absent until they were counted.
  WidgetValues<RemoteReading> weather;             ///< Absent while no place is connected.
  WidgetValues<RemoteReading> remote;              ///< What services answered; absent until they were asked.
  QHash<QString, RemoteReading> remoteExamples;    ///< By kind: what a widget without an answer has in pictures.
  QList<TodoItem> todos;                           ///< In the user's order.
  std::shared_ptr<const CalendarDigest> calendar;  ///< Null is like one that holds nothing.
  ReadingFacts readings;
  std::optional<NoteReading> latestNote;  ///< Absent while nothing was written.
};

}  // namespace tarnwick
