// Whatever can be used in a window or a panel does the same by a screen reader's action, by keys and by the mouse.
#include <gtest/gtest.h>

#include "config/Persistence.h"
#include "library/LibraryFixture.h"
#include "settings/SettingsFixture.h"
#include "store/DocumentEdits.h"
#include "support/ControlWalk.h"
#include "views/families/Rooms.h"
#include "views/onboarding/MenuBarPanel.h"
#include "views/onboarding/OnboardingWindow.h"
#include "views/panels/TilePanel.h"
#include "widgets/catalog/Catalog.h"

namespace tarnwick::test {
namespace {

using namespace Qt::StringLiterals;

QString told(const AppStore& store, const RecordingCommands& commands) {
  QStringList lines{QString::fromUtf8(Persistence::encode(store.config()))};
  lines << commands.asked << commands.announced;
  for (const DockLayout layout : commands.layouts) lines << label(layout);
  for (const DockWidget& widget : commands.changed)
    for (const auto& [key, value] : widget.options.asKeyValueRange()) lines << key + u'=' + value;
  return lines.join(u'\n');
}

class SettingsSection final : public ControlWalk::Place {
 public:
  explicit SettingsSection(const QString& section) : section_(section) {}
  QWidget& open() override {
    fixture_.reset();
    fixture_ = std::make_unique<SettingsFixture>();
    fixture_->window().showSection(section_);
    return fixture_->window();
  }
  QString outcome() override { return told(fixture_->store(), fixture_->commands); }

 private:
  QString section_;
  std::unique_ptr<SettingsFixture> fixture_;
};

class LibraryPlace final : public ControlWalk::Place {
 public:
  /// The library where `kind` is empty, otherwise the form of such a widget.
  explicit LibraryPlace(const QString& kind = {}) : kind_(kind) {}
  QWidget& open() override {
    window_.reset();
    fixture_ = std::make_unique<LibraryFixture>();
    if (kind_.isEmpty())
      window_ = fixture_->library();
    else
      window_ = fixture_->editor(fixture_->add(kind_).id);
    return *window_;
  }
  QString outcome() override { return told(fixture_->store(), fixture_->commands); }

 private:
  QString kind_;
  std::unique_ptr<LibraryFixture> fixture_;
  std::unique_ptr<AppWindow> window_;
};

class FirstRunPage final : public ControlWalk::Place {
 public:
  explicit FirstRunPage(int page) : page_(page) {}
  QWidget& open() override {
    window_.reset();
    fixture_ = std::make_unique<SettingsFixture>();
    fixture_->store().edit([](DockConfiguration& config) { config.onboardingComplete = false; });
    auto window = std::make_unique<OnboardingWindow>(fixture_->store(), fixture_->services, page_);
    window->setAttribute(Qt::WA_DeleteOnClose, false);
    window->present();
    window_ = std::move(window);
    return *window_;
  }
  QString outcome() override { return told(fixture_->store(), fixture_->commands); }

 private:
  int page_;
  std::unique_ptr<SettingsFixture> fixture_;
  std::unique_ptr<OnboardingWindow> window_;
};

class StatusPanel final : public ControlWalk::Place {
 public:
  QWidget& open() override {
    window_.reset();
    fixture_ = std::make_unique<SettingsFixture>();
    window_ = std::make_unique<MenuBarPanel>(fixture_->store(), fixture_->commands, true);
    window_->resize(window_->sizeHint());
    window_->show();
    return *window_;
  }
  QString outcome() override { return told(fixture_->store(), fixture_->commands); }

 private:
  std::unique_ptr<SettingsFixture> fixture_;
  std::unique_ptr<MenuBarPanel> window_;
};

class PanelPlace final : public ControlWalk::Place {
 public:
  explicit PanelPlace(const QString& kind) : kind_(kind) {}
  QWidget& open() override {
    panel_.reset();
    commands_.reset();
    fixture_ = std::make_unique<SnapshotStore>();
    commands_ = std::make_unique<ChangingCommands>(fixture_->store());
    panel_ = makePanel(fixture_->contextOf(kind_, *commands_));
    panel_->start();
    panel_->resize(panel_->sizeHint());
    panel_->show();
    return *panel_;
  }
  QString outcome() override { return told(fixture_->store(), *commands_); }

 private:
  QString kind_;
  std::unique_ptr<SnapshotStore> fixture_;
  std::unique_ptr<ChangingCommands> commands_;
  std::unique_ptr<TilePanel> panel_;
};

TEST(EveryControl, OfSettingsDoesTheSameByReaderKeysAndMouse) {
  ControlWalk walk;
  for (const QString& section : SettingsWindow::sections()) {
    SettingsSection place(section);
    walk.run(place, section);
  }
  EXPECT_GT(walk.compared, 80);
  EXPECT_GT(walk.changing, 40);
}

TEST(EveryControl, OfTheLibraryAndOfFormsDoesTheSameByReaderKeysAndMouse) {
  ControlWalk walk;
  LibraryPlace library;
  walk.run(library, u"library"_s);
  for (const WidgetDefinition& definition : Catalog::items()) {
    LibraryPlace form(definition.id);
    walk.run(form, definition.id);
  }
  EXPECT_GT(walk.compared, 40);
  EXPECT_GT(walk.changing, 20);
}

TEST(EveryControl, OfTheFirstRunDoesTheSameByReaderKeysAndMouse) {
  for (int page = 0; page < OnboardingWindow::kPages; ++page) {
    ControlWalk walk;
    FirstRunPage place(page);
    walk.run(place, u"page %1"_s.arg(page));
    EXPECT_GT(walk.changing, 0);
  }
  ControlWalk walk;
  StatusPanel place;
  walk.run(place, u"status"_s);
  EXPECT_GT(walk.changing, 5);
}

TEST(EveryControl, OfPanelsDoesTheSameByReaderKeysAndMouse) {
  ControlWalk walk;
  for (const WidgetDefinition& definition : Catalog::items()) {
    PanelPlace place(definition.id);
    walk.run(place, definition.id);
  }
  EXPECT_GT(walk.compared, 100);
  EXPECT_GT(walk.changing, 50);
}

}  // namespace
}  // namespace tarnwick::test
