#pragma once

#include <QObject>
#include <QPointer>
#include <QRect>
#include <QUuid>
#include <functional>
#include <memory>

#include "desktop/Panels.h"
#include "store/Services.h"
#include "views/panels/PanelContext.h"
#include "views/panels/PanelDrafts.h"
#include "views/panels/QuestionPane.h"

namespace tarnwick {

class PanelPresentation;
class TilePanel;
struct DockFileDrop;

/// What a host needs from the owner of the docks.
struct PanelHostSetup {
  /// Begins to keep what the tiles of a display's dock show.
  std::function<std::unique_ptr<KeptSources>(const QString& display)> sources;
  ReadingServices readings;
  /// Whether what belongs to a display's dock opens below it; above it where this is empty.
  std::function<bool(const QString& display)> opensDownwards = {};
};

/// Opens the panel behind a tile, or a question, one at a time. It grows out of the dock's edge, and closes on a second
/// click, on Escape, on a click outside, and when its widget or its dock goes away.
class PanelHost final : public QObject {
  Q_OBJECT
 public:
  /// All must outlive it.
  PanelHost(AppStore& store, const Services& services, Commands& commands, PanelHostSetup setup);
  ~PanelHost() override;

  /// Opens the panel of a widget beside its tile, whose place is in the coordinates of the dock panel's content. Closes
  /// it when it is open already. With the name of another kind it is that of this kind, in the place of its own.
  void open(const QString& display, const QUuid& widget, Panel& dock, const QRect& tile, const QString& as = {});
  /// Asks something beside that place of a display's dock. `answer` is called once with whether it was accepted: closed
  /// in any other way, as by another panel, it was not. A question that is withdrawn has no answer.
  void ask(const QString& display, const Question& question, Panel& dock, const QRect& beside,
           std::function<void(bool accepted)> answer);
  void withdrawQuestion() { answer_ = {}; }
  void close();
  /// Its tile is there now, in the same coordinates.
  void follow(const QRect& tile);
  /// Closes it without motion, so that its window has gone.
  void closeAtOnce();
  /// Closes it at once when it belongs to this display, as when the display's dock goes.
  void closeOn(const QString& display);

  /// Takes what the open panel looks like from the settings and the desktop anew.
  void applyLook();

  /// Whether a panel is open that belongs to a display's dock, which then stays shown.
  bool hasActivePanel(const QString& display) const { return !display_.isEmpty() && display == display_; }
  /// Where that panel is, in desktop coordinates; empty for none.
  QRect outline(const QString& display) const;
  /// The widget whose panel is open; null for none.
  const QUuid& openWidget() const { return widget_; }

 Q_SIGNALS:
  /// A panel opened (`widget`) or closed (a null identity): the display's dock marks the tile, and whether docks are
  /// shown is to be looked at again.
  void openChanged(const QString& display, const QUuid& widget);
  /// outline() is another one.
  void outlineChanged();
  /// Files were dropped on the panel of a display's dock, into a folder that it shows.
  void filesDropped(const QString& folder, const DockFileDrop& drop);

 private:
  std::unique_ptr<TilePanel> makeTilePanel();
  void showPane(std::unique_ptr<GlassPane> pane, Panel& dock, const QRect& tile);
  void forget();
  void drop();

  AppStore& store_;
  const Services& services_;
  Commands& commands_;
  PanelHostSetup setup_;
  PanelDrafts drafts_;
  QString display_;  ///< Empty while no panel is open.
  QUuid widget_;
  QString as_;  ///< The kind whose panel it is, where that is not the widget's.
  std::unique_ptr<Popup> popup_;
  PanelPresentation* presentation_ = nullptr;  ///< Owned by the popup.
  GlassPane* pane_ = nullptr;                  ///< Owned by the presentation.
  std::function<void(bool accepted)> answer_;  ///< While a question is open.
  quint64 questions_ = 0;                      ///< How many were asked.
};

}  // namespace tarnwick
