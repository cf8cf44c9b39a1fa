#include <gtest/gtest.h>

#include <QApplication>

#include "app/WindowSystem.h"
#include "desktop/Program.h"
#include "support/HeadlessKWin.h"

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  if (GTEST_FLAG_GET(list_tests)) return RUN_ALL_TESTS();
  const QTemporaryDir home;
  for (const char* name : {"HOME", "XDG_RUNTIME_DIR"}) qputenv(name, home.path().toLocal8Bit());
  const tarnwick::testing::SessionBus bus;
  const tarnwick::testing::HeadlessKWin kwin;
  tarnwick::WindowSystem::prepare();
  const QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  return RUN_ALL_TESTS();
}
