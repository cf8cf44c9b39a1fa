#include "settings/SettingsFixture.h"

#include <QApplication>

#include "desktop/VirtualKeys.h"
#include "views/window/Cards.h"

namespace tarnwick::test {

using namespace Qt::StringLiterals;

QList<Screen> TwoScreens::all() const {
  Screen one{u"one"_s, {}, u"Left Display"_s, QRectF(0, 0, 1920, 1080), QRectF(0, 0, 1920, 1080), 1};
  Screen two = one;
  two.id = u"two"_s;
  two.name = u"Right Display"_s;
  return {one, two};
}

HotKeyBinding FakeRecorder::tryKey(const HotKeyRequest& request) {
  tried << request;
  if (taken.contains(request)) return HotKeyBinding{false, {}, u"Taken."_s};
  return HotKeyBinding{true, VirtualKeys::text(request.keyCode, request.modifiers), {}};
}

namespace {

AppEnvironment environmentIn(const QString& folder) {
  AppEnvironment environment;
  environment.home = environment.dataHome = folder;
  return environment;
}

}  // namespace

SettingsFixture::SettingsFixture()
    : apps_(std::make_unique<InstalledApps>(environmentIn(folder_.path()), scheduler_)),
      edits(std::make_unique<UndoableEdits>(store(), *apps_, undo_)),
      services{{*edits, commands, *apps_, screens_, forms_, connections, {}, [this] { return abilities; }}, keys} {
  store().edit([](DockConfiguration& config) {
    config = DockConfiguration();
    config.profiles = {DockProfile::initial(), DockProfile::initial()};
    config.profiles[1].name = u"Work"_s;
    config.activeProfileID = config.profiles[0].id;
  });
}

SettingsFixture::~SettingsFixture() = default;

SettingsWindow& SettingsFixture::window() {
  if (!window_) {
    window_ = std::make_unique<SettingsWindow>(store(), services);
    window_->setAttribute(Qt::WA_DeleteOnClose, false);
    window_->setUndo([this] { undo_.undo(); }, [this] { undo_.redo(); });
    window_->present();
    QCoreApplication::processEvents();
  }
  return *window_;
}

void SettingsFixture::turnTo(const char* section) {
  window().showSection(QString::fromLatin1(section));
  QCoreApplication::processEvents();
}

bool SettingsFixture::sees(const char* label) {
  const auto rows = window().findChildren<FormRow*>();
  return std::ranges::any_of(
      rows, [&](const FormRow* row) { return row->isVisible() && row->label() == QString::fromUtf8(label); });
}

QStringList SettingsFixture::faults() {
  QStringList said;
  for (const FormRow* row : window().findChildren<FormRow*>())
    if (row->isVisible() && !row->fault().isEmpty()) said << row->fault();
  return said;
}

}  // namespace tarnwick::test
