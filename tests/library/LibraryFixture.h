#pragma once

#include <QTemporaryDir>
#include <QUuid>
#include <memory>

#include "apps/InstalledApps.h"
#include "services/Connections.h"
#include "store/UndoStack.h"
#include "store/UndoableEdits.h"
#include "support/RecordingCommands.h"
#include "support/ScriptedSession.h"
#include "support/TestScheduler.h"
#include "support/TestServices.h"
#include "views/library/EditorWindow.h"
#include "views/library/LibraryWindow.h"
#include "views/snapshot/SnapshotFixture.h"

namespace tarnwick::test {

/// A service and a keyring of the test's own.
class FakeConnections final : public Connections {
 public:
  QCoro::Task<Capability> keepsCredentials() const override;
  QCoro::Task<bool> hasCredential(DockWidget widget, std::stop_token stop) const override;
  QCoro::Task<> saveCredential(DockWidget widget, QString value, std::stop_token stop) override;
  QCoro::Task<> removeCredential(DockWidget widget, std::stop_token stop) override;
  QCoro::Task<> unlock(std::stop_token stop) override;
  QCoro::Task<std::optional<SignedIn>> signedIn(DockWidget widget, std::stop_token stop) const override;
  QCoro::Task<QString> signIn(DockWidget widget, QString clientID, std::optional<QString> secret, OAuthVisit visit,
                              std::stop_token stop) override;
  QCoro::Task<RemoteValue> attempt(DockWidget widget, std::optional<QString> credential, std::stop_token stop) override;
  QCoro::Task<QJsonValue> answer(DockWidget widget, std::optional<QString> credential, std::stop_token stop) override;

  Capability keeps = Capability::yes();
  QMap<QString, QString> kept;  ///< By account.
  QString failure;              ///< Why the keyring does nothing.
  bool asksUser = false;        ///< Whether the keyring asks before it keeps something: `keyring` answers then.
  ScriptedSession keyring;
  ScriptedSession service;
  ScriptedSession browser;         ///< Answers when the user comes back from there, with the fault of the keyring.
  QMap<QString, QString> clients;  ///< Of the sign-ins that are kept, by account.
  QStringList signIns;             ///< "client secret" of each that was begun, with "kept" for none.
  QStringList sent;                ///< The credentials that went to the service, "none" for none.

 private:
  QCoro::Task<QJsonValue> ask(DockWidget widget, std::optional<QString> credential, std::stop_token stop);
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
  WidgetEditor::Hooks forms;
  FakeConnections connections;
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
