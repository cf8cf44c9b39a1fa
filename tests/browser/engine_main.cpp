#include <grp.h>
#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <QApplication>
#include <QTemporaryDir>

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  // The engine has a sandbox for everybody but the administrator.
  constexpr unsigned kNobody = 65534;
  if (::geteuid() == 0 && (::setgroups(0, nullptr) != 0 || ::setgid(kNobody) != 0 || ::setuid(kNobody) != 0)) return 1;
  // Otherwise nothing of /proc/self belongs to who we are now, and there is no sandbox.
  ::prctl(PR_SET_DUMPABLE, 1);
  const QTemporaryDir home;
  qputenv("HOME", home.path().toUtf8());
  qputenv("XDG_RUNTIME_DIR", home.path().toUtf8());
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
