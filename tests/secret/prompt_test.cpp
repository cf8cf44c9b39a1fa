#include <gtest/gtest.h>

#include <QDBusMetaType>

#include "platform/secret/SecretServiceCalls.h"
#include "platform/secret/SecretServiceStore.h"
#include "platform_dbus/FakeService.h"
#include "platform_dbus/PrivateBus.h"
#include "secret/Told.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;
using namespace secretservice;
using test::endOf;

/// A keyring that asks as a test wants it to.
class PromptTest : public testing::Test {
 protected:
  PromptTest() {
    service->setProperty(home, kCollection, u"Locked"_s, true);
    service->answer(u"ReadAlias"_s, [this](const QDBusMessage&) { return path(home); });
    service->answer(u"Unlock"_s,
                    [this](const QDBusMessage&) { return QVariantList{QVariant::fromValue(Paths())} + path(prompt); });
    service->answer(u"Prompt"_s, [this](const QDBusMessage&) {
      isShown = true;
      return QVariantList();
    });
    service->answer(u"Dismiss"_s, [this](const QDBusMessage&) {
      isDismissed = true;
      return QVariantList();
    });
  }
  static QVariantList path(const QString& to) { return {QVariant::fromValue(QDBusObjectPath(to))}; }
  void complete(const QString& which, bool dismissed) {
    service->emitSignal(which, kPrompt, u"Completed"_s, {dismissed, QVariant::fromValue(QDBusVariant(QString()))});
  }

  const QString home = u"/org/freedesktop/secrets/collection/home"_s;
  const QString prompt = u"/org/freedesktop/secrets/prompt/p1"_s;
  PrivateBus bus;
  std::unique_ptr<FakeService> service = std::make_unique<FakeService>(bus.connection(), QString(kName));
  bool isShown = false;
  bool isDismissed = false;
};

TEST_F(PromptTest, TheUsersAnswerIsWaitedForHoweverLongItTakes) {
  const struct {
    const char* name;
    std::function<void(std::stop_source&)> happens;
    const char* end;
  } cases[] = {
      {"unlocked", [this](std::stop_source&) { complete(prompt, false); }, "done"},
      {"dismissed", [this](std::stop_source&) { complete(prompt, true); }, "-4"},
      {"not wanted any more", [](std::stop_source& stop) { stop.request_stop(); }, "cancelled"},
      {"the keyring ends", [this](std::stop_source&) { service.reset(); }, "-1"},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.name);
    isShown = false;
    std::stop_source stop;
    // Whoever asked may be gone before the answer comes.
    const test::Told told = test::begin(SecretServiceStore(bus.connection()).unlock(stop.get_token()));
    ASSERT_TRUE(waitFor([&] { return isShown || told->has_value(); }));
    if (service) complete(u"/another"_s, true);
    each.happens(stop);
    EXPECT_EQ(endOf(told), each.end);
    EXPECT_TRUE(!stop.stop_requested() || waitFor([&] { return isDismissed; }));
  }
}

TEST_F(PromptTest, AKeyringThatDoesSomethingElseHasRefused) {
  const SecretAttributes which{u"s"_s, u"a"_s, {}};
  SecretServiceStore store(bus.connection());
  const auto read = [&] { return endOf(store.list(which)); };
  EXPECT_EQ(read(), "-5") << "it knows no search";
  service->answer(u"SearchItems"_s, [this](const QDBusMessage&) {
    return QVariantList{QVariant::fromValue(Paths{QDBusObjectPath(u"/item"_s)}), QVariant::fromValue(Paths())};
  });
  EXPECT_EQ(read(), "-2");
  service->answer(u"Delete"_s, [this](const QDBusMessage&) { return path(prompt); });
  EXPECT_EQ(endOf(store.remove(which)), "-5") << "it would have asked";
  EXPECT_FALSE(isShown);
}

}  // namespace
}  // namespace tarnwick
