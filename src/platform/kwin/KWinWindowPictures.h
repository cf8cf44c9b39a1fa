#pragma once

#include <QHash>
#include <memory>

#include "platform/kwin/KWinWindowTable.h"
#include "windows/ports/WindowPictures.h"

namespace tarnwick {

/// Pictures of windows that KWin makes. It does not tell what was painted since; a window that looks as it did is asked
/// for more and more rarely.
class KWinWindowPictures final : public WindowPictures {
 public:
  explicit KWinWindowPictures(std::shared_ptr<const KWinWindowTable> table) : table_(std::move(table)) {}

  Capability capability() override { return Capability::yes(); }
  void hold(const QList<quint64>&) override {}
  QImage take(quint64 window) override;
  bool hasChanged(quint64 window) override;
  void rest() override { shown_.clear(); }

 private:
  /// So often in a row it is taken for unchanged at most.
  static constexpr int kMostPause = 7;

  struct Shown {
    QImage picture;
    int pause = 0;
    int left = 0;  ///< Of the pause.
  };

  QImage capture(const QString& id) const;

  const std::shared_ptr<const KWinWindowTable> table_;
  QHash<quint64, Shown> shown_;
};

}  // namespace tarnwick
