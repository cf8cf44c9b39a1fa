#pragma once

#include <QPointer>
#include <QVBoxLayout>
#include <QWidget>
#include <functional>
#include <vector>

#include "config/DockWidget.h"
#include "views/controls/ControlTheme.h"
#include "views/controls/GlassPane.h"
#include "views/controls/Labels.h"
#include "views/panels/PanelContext.h"
#include "widgets/catalog/WidgetDefinition.h"

class QLineEdit;

namespace tarnwick {

class Button;
class PanelHeader;
class ScrollArea;

/// What a panel shows while it has nothing of its own to show.
struct EmptyState {
  QString symbol;
  ServiceBadge badge;  ///< In place of a symbol, for a service.
  QString title;
  QString sentence;
  QString button;  ///< Empty for none.
  /// Left empty, the button is there but disabled.
  std::function<void()> act;
  bool isQuiet = false;  ///< Nothing waits for the button.
};

/// The panel behind a tile: a pane with a header, sections below it, and the shadow in the margins around it. Derive
/// from it, put controls into body() in the constructor, and fill them in refresh().
///
/// While it is shown, refresh() is called when what its widget shows is announced to be another, as often as the tile
/// ticks, and after every change of the settings, which panels read themselves. What else it reads it follows by
/// itself. A panel takes the size of its content, and scrolls where the screen has no space for that.
class TilePanel : public GlassPane {
  Q_OBJECT
 public:
  explicit TilePanel(const PanelContext& context, int width = theme::kPanelWidth);
  ~TilePanel() override;

  /// To be called once, by the code that made it: fills it for the first time and keeps it true from then on.
  void start();

  /// The pane alone, as large as its content wants it.
  QSize panelSize() const;
  QSize sizeHint() const override { return panelSize().grownBy(margins()); }

  const PanelContext& context() const { return context_; }
  AppStore& store() const { return context_.store; }
  /// The widget as the settings have it now, or as they had it last.
  const DockWidget& widget() const { return widget_; }
  const WidgetDefinition& definition() const;
  /// The user's name for the widget, or the catalog's.
  QString title() const;
  /// The widget's option, changed through the store.
  void setOption(const QString& key, const std::optional<QString>& value);
  /// The same for what the user sets and may take back, not what the widget counts or holds of what was written. A
  /// sentence tells it beside the dock; without one it is seen where it was done.
  void changeSetting(const QString& key, const std::optional<QString>& value, const QString& sentence = {});
  void changeSettings(const DockWidget& widget, const QString& sentence = {});

 Q_SIGNALS:
  /// The widget is gone or the panel has done its work. Its owner closes it, not within this signal.
  void closeRequested();

 protected:
  /// Shows what is true now. `sources` is what tiles show at the same moment.
  virtual void refresh(const TileSources& sources) = 0;

  /// What the header says; the title unless set otherwise.
  virtual QString heading() const { return title(); }

  PanelHeader& header() { return *header_; }
  /// Where the panel's own controls go, below each other.
  QVBoxLayout& body() { return *body_; }
  /// Adds a heading to the body and returns it.
  SectionLabel* addSection(const QString& text, const QString& trailing = {});
  /// A sentence that went wrong, below the header; an empty one takes the row away.
  void setMessage(const QString& sentence);
  /// Shows an empty state in place of header and body, or them again.
  void showEmpty(const EmptyState& state);
  void hideEmpty();
  /// What is written in the field outlives the panel until something came of it. For a field whose text the settings do
  /// not hold as it is written. To be called in the constructor; `isUnfinished` as in PanelDrafts::keep().
  void keepDraft(QLineEdit& field, std::function<bool()> isUnfinished = {});
  /// Something came of it.
  void forgetDrafts();
  /// Says in the constructor how often refresh() shows something new by the clock alone, where that is not as often as
  /// the tile does.
  void ticks(TickCadence cadence);
  /// Says there that it shows values of other families than its widget's.
  void alsoShow(const QList<Family>& families) { kept_->alsoShow(families); }
  /// What has the keyboard when the panel opens, in place of the first control.
  void beginWith(QWidget& control) { first_ = &control; }
  /// Shows what was done, and offers to take it back and to make it again after that. What both hold must outlive the
  /// panel; they may throw DomainError.
  void offerUndo(const QString& sentence, const std::function<void()>& undo, const std::function<void()>& redo) const;
  /// Calls refresh() soon, as after an operation of the panel's own.
  void refreshNow();

  void showEvent(QShowEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  class EmptyView;

  void takeWidget();
  int contentWidth() const { return width_ - theme::kPanelPadding * 2; }

  PanelContext context_;
  std::unique_ptr<KeptSources> kept_;
  DockWidget widget_;
  int width_;
  PanelHeader* header_;
  QWidget* message_;
  TextLabel* messageText_;
  ScrollArea* scroll_;
  QWidget* content_;
  QWidget* own_;
  QVBoxLayout* body_;
  EmptyView* empty_;
  QWidget* first_ = nullptr;
  std::vector<std::function<void(PanelDrafts&)>> drafted_;
};

/// Symbol, title, perhaps a note, and one action.
class PanelHeader final : public QWidget {
  Q_OBJECT
 public:
  explicit PanelHeader(QWidget* parent);

  void setSymbol(const QString& symbol);
  /// A service's badge in place of a symbol.
  void setBadge(const ServiceBadge& badge);
  void setTitle(const QString& title);
  /// A short note before the action, such as "2 of 5 done".
  void setNote(const QString& note);
  /// Adds a control at the end; the header takes it.
  void addAction(QWidget* control);
  using QWidget::addAction;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  int actionsWidth() const;

  QString symbol_;
  ServiceBadge badge_;
  QString title_;
  QString note_;
  QHBoxLayout* actions_;
};

}  // namespace tarnwick
