#pragma once

#include <QHash>
#include <QWidget>

#include "system/ProcessUsage.h"
#include "views/panels/PanelContext.h"

namespace tarnwick {

class ListRow;

/// The few processes that use most, below a heading, for a panel about something else. While it is shown it has them
/// sampled as often as a list of processes is.
class ProcessSection final : public QWidget {
  Q_OBJECT
 public:
  static constexpr int kRows = 4;

  ProcessSection(const PanelContext& context, ProcessOrder order, QWidget* parent = nullptr);

  /// Hidden while nothing is known of any process.
  void fill(const TileSources& sources);

 private:
  void askForSample();
  QPixmap pictureOf(const QString& process);

  const PanelContext context_;
  ProcessOrder order_;
  QList<ListRow*> rows_;
  QHash<QString, QPixmap> pictures_;
};

}  // namespace tarnwick
