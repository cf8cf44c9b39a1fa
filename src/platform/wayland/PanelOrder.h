#pragma once

#include <QObject>
#include <QSet>

namespace tarnwick {

/// Which of our windows lie in the uppermost layer. Of two windows in one layer the compositor chooses which is above,
/// and not every one takes the newer one. So while a window must lie above all panels, they stay out of that layer; and
/// while another one of ours takes the keyboard, no panel claims it, or it might stay with the panel.
class PanelOrder final : public QObject {
  Q_OBJECT
 public:
  void setAbovePanels(const QObject* window, bool isAbove) { put(above_, window, isAbove); }
  bool panelsGiveWay() const { return !above_.isEmpty(); }

  void setTakesKeys(const QObject* window, bool takes) { put(takers_, window, takes); }
  bool keysAreTaken() const { return !takers_.isEmpty(); }

 Q_SIGNALS:
  void changed();

 private:
  void put(QSet<const QObject*>& set, const QObject* window, bool isIn) {
    const bool wasEmpty = set.isEmpty();
    if (isIn) {
      set.insert(window);
    } else {
      set.remove(window);
    }
    if (wasEmpty != set.isEmpty()) Q_EMIT changed();
  }

  QSet<const QObject*> above_;
  QSet<const QObject*> takers_;
};

}  // namespace tarnwick
