#pragma once

#include <linux/input-event-codes.h>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>

#include "desktop/ShellTest.h"
#include "platform_net/TestServer.h"
#include "services/Connections.h"
#include "views/library/EditorWindow.h"

namespace tarnwick::testing {

/// The form of the only tile, used by the keyboard alone, against servers of the test.
class ConnectionScenario : public ShellTest {
 protected:
  ConnectionScenario() {
    certificates = test::TestCertificates::all().authority;
    for (const char* proxy : {"http_proxy", "https_proxy", "all_proxy", "HTTP_PROXY", "HTTPS_PROXY", "ALL_PROXY"})
      qunsetenv(proxy);
  }

  static QString addressOf(const test::TestServer& server) {
    return QStringLiteral("https://127.0.0.1:%1/").arg(server.port());
  }
  /// Types over what stands in the field that has the keyboard.
  bool write(const QString& text) {
    desk.type({KEY_A}, {KEY_LEFTCTRL});
    desk.write(text);
    const auto* field = qobject_cast<const QLineEdit*>(QApplication::focusWidget());
    return field && comesTrue([&] { return field->text() == text; });
  }
  EditorWindow* form() {
    for (QWidget* window : QApplication::topLevelWidgets())
      if (auto* found = qobject_cast<EditorWindow*>(window); found && found->isVisible()) return found;
    return nullptr;
  }
  /// Goes on by the Tab key until the keyboard is on the control of that kind and name.
  template <class Control>
  bool tabTo(const QString& name) {
    const auto isThere = [&] {
      const auto* at = qobject_cast<const Control*>(QApplication::focusWidget());
      return at && (at->accessibleName().isEmpty() ? at->property("text").toString() : at->accessibleName()) == name;
    };
    for (int steps = 0; steps < 20 && !isThere(); ++steps) {
      const QWidget* before = QApplication::focusWidget();
      desk.tap(KEY_TAB);
      if (!comesTrue([&] { return QApplication::focusWidget() != before; })) return false;
    }
    return isThere();
  }
  /// All that the form says.
  std::string said() {
    if (!form()) return "no form";
    QStringList words;
    for (const QLabel* label : form()->findChildren<QLabel*>())
      if (label->isVisible()) words << label->text();
    return words.join(u'|').toStdString();
  }
  /// What is due at once, which the first step of a fetch is.
  bool comes(const std::function<bool()>& predicate) {
    return comesTrue([&] {
      time.advance(0);
      return predicate();
    });
  }
  /// Opens the form of the only tile from the dock.
  void openForm() {
    desk.settle();
    dock().leaveKeyboard();  // Which a form that was opened from it gives back.
    dock().focus();
    ASSERT_TRUE(inTime([&] { return view().hasFocus() && view().focusedItem() == 0; }));
    desk.tap(KEY_COMPOSE);
    const auto menu = [] { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); };
    ASSERT_TRUE(comesTrue([&] { return menu() && menu()->isVisible(); }));
    const auto isOnEdit = [&] {
      return menu()->activeAction() && menu()->activeAction()->text() == QStringLiteral("Edit Widget…");
    };
    for (int steps = 0; steps < 12 && !isOnEdit(); ++steps) {
      const QAction* before = menu()->activeAction();
      desk.tap(KEY_DOWN);
      ASSERT_TRUE(comesTrue([&] { return menu() && menu()->activeAction() != before; }));
    }
    desk.tap(KEY_ENTER);
    ASSERT_TRUE(inTime([&] { return form() && form()->isActiveWindow() && QApplication::focusWidget(); }))
        << (form() ? "it has no keyboard" : "there is none");
  }

  RemoteReading reading() {
    return adapters->connections().reading(store().widgets().first().id).value_or(RemoteReading());
  }
};

}  // namespace tarnwick::testing
