#pragma once

#include <QHash>
#include <QSizeF>
#include <QString>
#include <memory>

#include "platform/kwin/KWinScript.h"
#include "platform/kwin/KWinWindowTable.h"
#include "windows/ports/WindowFrames.h"

namespace tarnwick {

/// Windows under KWin on Wayland. Frames are in the coordinates of its displays. A window's number is made of KWin's
/// own name for it and of when that KWin was started, so that one of another session is nobody's.
class KWinWindowFrames final : public WindowFrames {
 public:
  /// Without a table nothing is known of what KWin itself moved.
  explicit KWinWindowFrames(std::shared_ptr<const KWinWindowTable> table = {}) : table_(std::move(table)) {}

  Capability capability() override;
  std::optional<QList<Window>> all(std::chrono::milliseconds patience) override;
  std::optional<QRectF> frame(quint32 number, std::chrono::milliseconds patience) override;
  QRectF accepted(quint32 number, const QRectF& wanted) override;
  bool setFrame(quint32 number, const QRectF& frame, std::chrono::milliseconds patience) override;
  void rest() override { script_.end(); }

 private:
  struct Known {
    QString id;  ///< KWin's own.
    QRectF frame;
    QSizeF least;
    bool moves = true;
    bool resizes = true;
  };

  quint32 numberOf(const QString& id);
  const Known* known(quint32 number, std::chrono::milliseconds patience);

  const std::shared_ptr<const KWinWindowTable> table_;
  KWinScript script_;
  QHash<quint32, Known> known_;  ///< As of the last list.
};

}  // namespace tarnwick
