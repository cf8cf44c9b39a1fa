#include <gtest/gtest.h>

#include <QApplication>

#include "platform/wayland/WaylandEnvironment.h"
#include "support/HeadlessSway.h"

int main(int argc, char** argv) {
  using tarnwick::testing::HeadlessSway;
  return HeadlessSway::run(argc, argv, HeadlessSway::Kind::Plain, [](int& count, char** arguments) {
    tarnwick::WaylandEnvironment::prepare();
    new QApplication(count, arguments);  // Kept to the end: see HeadlessSway::run.
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
  });
}
