#pragma once

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <memory>

#include "base/DomainError.h"
#include "services/Connections.h"
#include "store/UndoStack.h"
#include "support/RecordingCommands.h"
#include "support/TestScheduler.h"
#include "views/settings/SettingsWindow.h"
#include "views/snapshot/SnapshotFixture.h"

namespace tarnwick::test {

/// Two displays.
class TwoScreens final : public Screens {
 public:
  QList<Screen> all() const override;
  QString mainId() const override { return QStringLiteral("one"); }
};

/// Keys of which others have some.
class FakeRecorder final : public KeyRecorder {
 public:
  void setRecording(bool recording) override { recordings << recording; }
  HotKeyBinding tryKey(const HotKeyRequest& request) override;
  bool holds(const HotKeyRequest& request) const override { return !lost.contains(request); }

  QList<HotKeyRequest> tried;
  QList<HotKeyRequest> taken;
  QList<HotKeyRequest> lost;
  QList<bool> recordings;
};

/// Connections as a test wants them.
class ToldConnections final : public Connections {
 public:
  std::optional<RemoteReading> reading(QUuid widget) const override {
    ++asked;
    const auto found = readings.constFind(widget);
    return found == readings.constEnd() ? std::nullopt : std::optional(*found);
  }
  QCoro::Task<> removeCredential(DockWidget widget, std::stop_token) override {
    removed << widget.id;
    if (!failure.isEmpty()) throw DomainError::invalid(failure);
    co_return;
  }

  QHash<QUuid, RemoteReading> readings;
  QList<QUuid> removed;
  QString failure;        ///< Why the keyring keeps what it should remove.
  mutable int asked = 0;  ///< How often for a reading.
};

/// A store with two profiles and the window over it. What it asks of the program is kept here.
class SettingsFixture {
 public:
  SettingsFixture();
  ~SettingsFixture();

  AppStore& store() { return snapshot_.store(); }
  const DockConfiguration& config() { return store().config(); }
  DesktopOptions options() { return config().desktopOptions(); }
  UndoStack& undo() { return undo_; }
  SettingsWindow& window();
  /// Shows a section.
  void turnTo(const char* section);

  /// The control of that name in the section that is shown; a failure of the test where there is none.
  template <class Control>
  Control* control(const char* name) {
    for (Control* each : window().findChildren<Control*>())
      if (each->isVisible() && each->accessibleName() == QString::fromUtf8(name)) return each;
    ADD_FAILURE() << "no " << name;
    return nullptr;
  }
  /// Whether a row of that label is seen.
  bool sees(const char* label);
  QStringList faults();

  RecordingCommands commands;
  DesktopAbilities abilities;
  FakeRecorder keys;
  ToldConnections connections;

 private:
  QTemporaryDir folder_;
  TestScheduler scheduler_;
  SnapshotStore snapshot_;
  std::unique_ptr<InstalledApps> apps_;
  UndoStack undo_;
  TwoScreens screens_;
  WidgetEditor::Hooks forms_;

 public:
  std::unique_ptr<UndoableEdits> edits;
  SettingsServices services;

 private:
  std::unique_ptr<SettingsWindow> window_;
};

}  // namespace tarnwick::test
