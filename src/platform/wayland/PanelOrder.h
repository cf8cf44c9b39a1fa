#pragma once

#include <QObject>
#include <QSet>

namespace tarnwick {

/// Which of our windows lie in the uppermost layer. Of two windows in one layer the compositor chooses which is above,
/// and not every one takes the newer one. So while a window must lie above all panels, they stay out of that layer.
class PanelOrder final : public QObject {
  Q_OBJECT
 public:
  void setAbovePanels(const QObject* window, bool isAbove) {
    const bool before = panelsGiveWay();
    if (isAbove) {
      above_.insert(window);
    } else {
      above_.remove(window);
    }
    if (before != panelsGiveWay()) Q_EMIT changed();
  }
  bool panelsGiveWay() const { return !above_.isEmpty(); }

 Q_SIGNALS:
  void changed();

 private:
  QSet<const QObject*> above_;
};

}  // namespace tarnwick
