#include <gtest/gtest.h>

#include <QApplication>

#include "app/WindowSystem.h"
#include "desktop/Program.h"
#include "support/HeadlessSway.h"

int main(int argc, char** argv) {
  using tarnwick::testing::HeadlessSway;
  return HeadlessSway::run(argc, argv, HeadlessSway::Kind::Plain, [](int& count, char** arguments) {
    // What the toolkit needs here is not for programs that are started from here.
    tarnwick::testing::Program::startFrom(QProcessEnvironment::systemEnvironment());
    tarnwick::WindowSystem::prepare();
    new QApplication(count, arguments);  // Kept to the end: see HeadlessSway::run.
    QApplication::setQuitOnLastWindowClosed(false);
    const tarnwick::testing::SessionBus bus;
    return RUN_ALL_TESTS();
  });
}
