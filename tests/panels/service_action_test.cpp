#include <gtest/gtest.h>

#include <QCoroTask>
#include <QTest>
#include <algorithm>

#include "base/DomainError.h"
#include "services/Connections.h"
#include "views/controls/Buttons.h"
#include "views/controls/Fields.h"
#include "views/families/services/ServiceAction.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

/// A service that does what it is asked, or says why not.
class Doing final : public Connections {
 public:
  QCoro::Task<QString> act(DockWidget widget, QString text, std::stop_token) override {
    asked << widget.kind + u' ' + text;
    if (!fault.isEmpty()) throw DomainError::invalid(fault);
    const QString made = result;  // What is returned is moved from.
    co_return made;
  }
  QStringList asked;
  QString fault;
  QString result;
};

struct Pressed : ::testing::Test {
  void open(const QString& kind, const QMap<QString, QString>& options) {
    widget = {QUuid::createUuid(), kind, {}, options};
    ASSERT_TRUE(ServiceAction::of(kind));
    action = std::make_unique<ServiceAction>(
        *ServiceAction::of(kind), ServiceAction::Panel{.connections = service,
                                                       .widget = [this] { return widget; },
                                                       .done = [this] { ++done; },
                                                       .copy = [this](const QString& text) { copied << text; }});
    action->show();
  }
  PaintedButton* button(const QString& label) const {
    for (PaintedButton* each : action->findChildren<PaintedButton*>())
      if (each->label() == label && each->isVisible()) return each;
    return nullptr;
  }
  bool says(const QString& sentence) const {
    const QList<QWidget*> parts = action->findChildren<QWidget*>();
    return std::ranges::any_of(
        parts, [&](const QWidget* part) { return part->isVisible() && part->accessibleName() == sentence; });
  }

  Doing service;
  DockWidget widget;
  int done = 0;
  QStringList copied;
  std::unique_ptr<ServiceAction> action;
};

TEST_F(Pressed, ALinkIsMadeShownAndCopied) {
  open(u"dubShortener"_s, {{option::connectionMode, value::native}});
  EXPECT_TRUE(action->isOffered());
  EXPECT_FALSE(button(u"Copy"_s));
  auto* text = action->findChild<TextField*>();
  service.fault = u"Dub did not return a short link."_s;
  QTest::keyClicks(text, u"https://one.example"_s);
  button(u"Shorten"_s)->click();
  EXPECT_TRUE(says(service.fault));
  EXPECT_EQ(text->text(), u"https://one.example"_s);
  EXPECT_EQ(done, 0);

  service.fault.clear();
  service.result = u"https://dub.sh/x"_s;
  QTest::keyClick(text, Qt::Key_Return);
  EXPECT_EQ(service.asked, QStringList(2, u"dubShortener https://one.example"_s));
  EXPECT_TRUE(says(service.result));
  EXPECT_EQ(done, 1);
  ASSERT_TRUE(button(u"Copy"_s));
  button(u"Copy"_s)->click();
  EXPECT_EQ(copied, QStringList{service.result});
  QTest::keyClicks(text, u"h"_s);
  EXPECT_FALSE(button(u"Copy"_s));
}

TEST_F(Pressed, ALampIsSwitchedWhereTheFormSaysSo) {
  const QMap<QString, QString> home{{option::connectionMode, value::native}, {option::entity, u"light.hall"_s}};
  open(u"homeAssistant"_s, home);
  EXPECT_FALSE(action->isOffered());
  widget.options[option::control] = value::on;
  EXPECT_TRUE(action->isOffered());
  EXPECT_FALSE(action->findChild<TextField*>()->isVisible());
  button(u"Toggle"_s)->click();
  EXPECT_EQ(service.asked, QStringList{u"homeAssistant "_s});
  EXPECT_EQ(done, 1);
  widget.options[option::connectionMode].clear();
  EXPECT_FALSE(action->isOffered());
  EXPECT_FALSE(ServiceAction::of(u"analyticsPlausible"_s));
}

}  // namespace
}  // namespace tarnwick
