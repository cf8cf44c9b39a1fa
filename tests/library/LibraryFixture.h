#pragma once

#include <QTemporaryDir>
#include <QUuid>
#include <memory>

#include "apps/InstalledApps.h"
#include "base/DomainError.h"
#include "services/Connections.h"
#include "store/UndoStack.h"
#include "store/UndoableEdits.h"
#include "support/RecordingCommands.h"
#include "support/TestScheduler.h"
#include "support/TestServices.h"
#include "views/library/EditorWindow.h"
#include "views/library/LibraryWindow.h"
#include "views/snapshot/SnapshotFixture.h"

namespace tarnwick::test {

/// Credentials that are kept once a test wants that.
class KeptCredentials final : public WidgetEditor::Hooks {
 public:
  bool keepsCredentials() const override { return keeps; }
  bool hasCredential(const DockWidget& widget) const override { return kept.contains(widget.id); }
  void saveCredential(const DockWidget& widget, const QString& credential) override {
    if (!failure.isEmpty()) throw DomainError::invalid(failure);
    kept[widget.id] = credential;
  }

  bool keeps = false;
  QHash<QUuid, QString> kept;
  QString failure;  ///< Why none can be kept.
};

/// A store with one profile of a few widgets and a second, empty one, an application that is installed, and the two
/// windows over them. What they ask is counted.
class LibraryFixture {
 public:
  LibraryFixture();

  AppStore& store() { return snapshot_.store(); }
  UndoStack& undo() { return undo_; }
  const DockProfile& profile(int index) { return store().config().profiles.at(index); }
  DockWidget add(const QString& kind, const QMap<QString, QString>& options = {});
  const DockWidget* find(const QUuid& id);

  std::unique_ptr<LibraryWindow> library();
  std::unique_ptr<EditorWindow> editor(const QUuid& widget);
  PreviewSources previews();

  /// What the tiles of the window that was opened last show of these families is another.
  void announce(const QList<Family>& families);

  QSet<QString> asked;  ///< The kinds whose tiles were asked for.
  RecordingCommands commands;
  KeptCredentials forms;
  Connections connections;
  bool hasSensor = true;

 private:
  WindowServices services();

  class Machine final : public TileSource {
   public:
    explicit Machine(LibraryFixture& fixture) : fixture_(fixture) {}
    void fill(TileSources& sources, const QList<DockWidget>& widgets) override;

   private:
    LibraryFixture& fixture_;
  };

  Machine* machine_ = nullptr;  ///< Owned by what keeps it.
  QTemporaryDir folder_;
  NoScreens screens_;
  TestScheduler scheduler_;
  SnapshotStore snapshot_;
  std::unique_ptr<InstalledApps> apps_;
  UndoStack undo_;
  std::unique_ptr<UndoableEdits> edits_;
};

}  // namespace tarnwick::test
