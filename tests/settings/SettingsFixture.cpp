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

SettingsFixture::SettingsFixture() {
  store().edit([](DockConfiguration& config) {
    config = DockConfiguration();
    config.profiles = {DockProfile::initial(), DockProfile::initial()};
    config.profiles[1].name = u"Work"_s;
    config.activeProfileID = config.profiles[0].id;
  });
  AppEnvironment environment;
  environment.home = environment.dataHome = folder_.path();
  apps_ = std::make_unique<InstalledApps>(environment, scheduler_);
  edits_ = std::make_unique<UndoableEdits>(store(), *apps_, undo_);
  services.edits = edits_.get();
  services.screens = &screens_;
  services.addWidgets = [this](const QUuid& profile) { added = profile; };
  services.chooseDockPicture = [] {};
  services.openEditor = [this](const QUuid& widget) { edited = widget; };
  services.tryKey = [this](const HotKeyWish& wish) {
    tried << wish;
    if (taken.contains(wish)) return HotKeyBinding{false, {}, u"Taken."_s};
    return HotKeyBinding{true, VirtualKeys::text(wish.keyCode, wish.modifiers), {}};
  };
  services.recordsKeys = [this](bool recording) { recordings << recording; };
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
