#pragma once

#include <QHash>
#include <QWidget>

#include "system/ProcessUsage.h"
#include "views/panels/PanelContext.h"

namespace tarnwick {

class ListRow;

/// What fills the bar of a process, in per cent of a core, while nothing uses more.
inline constexpr double kQuietCpu = 25;

/// The few processes that use most, below a heading, for a panel about something else. While it is shown it has them
/// sampled as often as a list of processes is, and each second until there is something to show. It is as high before
/// as after, so that nothing below or above it moves.
class ProcessSection final : public QWidget {
  Q_OBJECT
 public:
  static constexpr int kRows = 4;

  ProcessSection(const PanelContext& context, ProcessOrder order, QWidget* parent = nullptr);

  /// Hidden until it is filled first.
  void fill(const TileSources& sources);

 private:
  void askForSample();
  void showRow(ListRow& row, const ProcessUsage& usage, double most, const TileSources& sources);
  void showWaiting(const QString& sentence);
  QPixmap pictureOf(const QString& process);

  const PanelContext context_;
  ProcessOrder order_;
  QList<ListRow*> rows_;
  QHash<QString, QPixmap> pictures_;
  bool isKnown_ = false;
};

}  // namespace tarnwick
