#pragma once

#include <gtest/gtest.h>

#include <QCoreApplication>

#include "store/DocumentEdits.h"
#include "support/RecordingCommands.h"
#include "views/controls/Buttons.h"
#include "views/families/Rooms.h"
#include "views/panels/TilePanel.h"
#include "views/snapshot/SnapshotFixture.h"

namespace tarnwick::test {

/// The panel of a context, at its own size on the screen.
inline std::unique_ptr<TilePanel> shown(const PanelContext& context) {
  std::unique_ptr<TilePanel> panel = makePanel(context);
  panel->start();
  panel->resize(panel->sizeHint());
  panel->show();
  QCoreApplication::processEvents();
  return panel;
}

/// A panel of a kind over a store of its own, and ways to use it; it is shown by whoever derives from it.
template <class Commands>
struct OpenPanel {
  explicit OpenPanel(const QString& kind) : context(fixture.contextOf(kind, commands)) {}

  AppStore& store() { return fixture.store(); }
  /// What the widget's option is, or "absent".
  QString option(const QString& key) {
    return DocumentEdits::find(store().config(), context.widget)->options.value(key, QStringLiteral("absent"));
  }
  void click(const QString& label) {
    for (PaintedButton* button : panel->findChildren<PaintedButton*>())
      if (button->label() == label && !button->isHidden()) return button->click();
    ADD_FAILURE() << "no button " << label.toStdString();
  }

  SnapshotStore fixture;
  Commands commands{fixture.store()};
  PanelContext context;
  std::unique_ptr<TilePanel> panel;
};

}  // namespace tarnwick::test
