#pragma once

#include <QProcess>
#include <QRect>
#include <QString>

#include "desktop/TestDesk.h"

namespace tarnwick::testing {

/// Another program with a window, anywhere in which a press begins the drag of a file.
class ForeignProgram final : public OtherWindow {
 public:
  enum class Size { AsPlaced, FullScreen };

  /// `place` is empty where the desktop places windows.
  ForeignProgram(const QString& file, const QRect& place, Size size = Size::AsPlaced);
  ~ForeignProgram() override;

 private:
  QProcess process_;
};

}  // namespace tarnwick::testing
